// SPDX-License-Identifier: MIT
#include "player/pane.h"

#include <stdexcept>

Pane::Pane(Backend backend, HWND window, int width, int height) : m_backend(backend) {
  if (nivral.DWOpenDrawEx(&m_handle, static_cast<uint32_t>(backend)) != 0)
    throw std::runtime_error("the library opened no pane");
  if (backend == Backend::kDirectDraw) nivral.DWSetDisplayCB(m_handle, this, &CountComposed);
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

bool Pane::WantsRecord() {
  constexpr int kMostAhead = 2;
  if (m_backend != Backend::kDirectDraw) return true;
  if (m_recordsAhead >= kMostAhead) return false;
  ++m_recordsAhead;
  return true;
}

void NIVRAL_CALL Pane::CountComposed(int32_t, void*, uint32_t, uint32_t, int64_t, int32_t, int32_t, uint32_t,
                                     void* user) {
  std::atomic<int>& ahead = static_cast<Pane*>(user)->m_recordsAhead;
  if (ahead > 0) --ahead;
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
