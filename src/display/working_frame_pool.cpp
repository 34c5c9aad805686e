// SPDX-License-Identifier: MIT
#include "display/working_frame_pool.h"

#include <new>
#include <utility>

std::unique_ptr<WorkingFrame> WorkingFramePool::Take() {
  {
    CAutoLock guard(&m_lock);
    if (!m_idle.empty()) {
      auto frame = std::move(m_idle.back());
      m_idle.pop_back();
      return frame;
    }
  }
  return std::unique_ptr<WorkingFrame>(new (std::nothrow) WorkingFrame);
}

void WorkingFramePool::Return(std::unique_ptr<WorkingFrame> frame) {
  if (!frame) return;
  CAutoLock guard(&m_lock);
  try {
    m_idle.push_back(std::move(frame));
  } catch (const std::bad_alloc&) {
    // Nowhere to keep it: the frame is freed and the next caller makes a new one.
  }
}
