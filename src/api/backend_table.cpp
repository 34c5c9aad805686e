// SPDX-License-Identifier: MIT
// The backends that there are: a new one is a row here and a folder beside the others.
#include "api/backend_table.h"

#include <iterator>
#include <new>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/ddraw/ddraw_displayer.h"
#include "backends/sdl2/sdl_displayer.h"

namespace libnivral {
namespace {

template <class Displayer>
CreatedPane Create() {
  return {std::unique_ptr<BaseDisplayer>(new (std::nothrow) Displayer)};
}

CreatedPane CreateDirect3D() {
  std::unique_ptr<D3DDisplayer> displayer(new (std::nothrow) D3DDisplayer);
  if (displayer && !displayer->LoadDirect3D()) return {nullptr, true};
  return {std::move(displayer)};
}

constexpr Backend kBackends[] = {{kSdl, L"SDLDisplayer", &Create<SDLDisplayer>},
                                 {kDirect3D, L"D3DDisplayer", &CreateDirect3D},
                                 {kDirectDraw, L"CDirectDraw", &Create<CDirectDraw>}};

}  // namespace

const Backend& FindBackend(uint32_t type) {
  for (const Backend& backend : kBackends) {
    if (backend.type == type) return backend;
  }
  return *std::rbegin(kBackends);
}

}  // namespace libnivral
