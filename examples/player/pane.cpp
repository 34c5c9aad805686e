// SPDX-License-Identifier: MIT
#include "player/pane.h"

#include <stdexcept>

#include "player/library.h"

Pane::Pane(Backend backend, HWND window, int width, int height) : m_backend(backend) {
  if (nivral.DWOpenDrawEx(&m_handle, static_cast<uint32_t>(backend)) != 0)
    throw std::runtime_error("the library opened no pane");
  nivral.DWSetHwnd(m_handle, window);
  nivral.DWInitDraw(m_handle, static_cast<uint32_t>(width), static_cast<uint32_t>(height), 0);
}

Pane::~Pane() {
  nivral.DWCloseDraw(m_handle);
}

void Pane::Set(std::function<void(void*)> setter) {
  if (m_backend != Backend::kDirect3D) return setter(m_handle);
  const std::scoped_lock hold(m_lock);
  m_kept.push_back(std::move(setter));
}

void Pane::RunKeptSetters() {
  std::vector<std::function<void(void*)>> kept;
  {
    const std::scoped_lock hold(m_lock);
    kept.swap(m_kept);
  }
  for (const auto& setter : kept)
    setter(m_handle);
}

uint32_t Pane::Draw(Picture& picture, int64_t frame) {
  RunKeptSetters();
  return nivral.DWDrawYUV420(m_handle, picture.y.data(), static_cast<uint32_t>(picture.width),
                             picture.u.data(), picture.v.data(), static_cast<uint32_t>(picture.strideUV),
                             static_cast<uint32_t>(frame), frame);
}
