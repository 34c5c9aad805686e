// SPDX-License-Identifier: MIT
#include "display/working_frame_pool.h"

#include <new>
#include <utility>

namespace libnivral {

std::unique_ptr<WorkingFramePool::Node> WorkingFramePool::Take() {
  {
    CAutoLock guard(&m_lock);
    if (auto frame = std::move(m_idle)) {
      m_idle = std::move(frame->next);
      return frame;
    }
  }
  return std::unique_ptr<Node>(new (std::nothrow) Node);
}

void WorkingFramePool::Return(std::unique_ptr<Node> frame) {
  if (!frame) return;
  CAutoLock guard(&m_lock);
  frame->next = std::move(m_idle);
  m_idle = std::move(frame);
}

}  // namespace libnivral
