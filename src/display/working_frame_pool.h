// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <new>
#include <utility>

#include "display/working_frame.h"
#include "util/mutex_lock.h"

namespace libnivral {

/// Working frames of one displayer, reused from frame to frame. Each is with one caller at a time; a second
/// thread that draws on the same handle gets its own.
class WorkingFramePool {
  /// The idle ones form a list, so that giving one back needs no memory.
  struct Node {
    WorkingFrame frame;
    std::unique_ptr<Node> next;
  };

 public:
  /// A frame on loan; goes back to the pool at the end of the scope.
  class Loan {
   public:
    explicit Loan(WorkingFramePool& pool) : m_pool(pool), m_frame(pool.Take()) {}
    ~Loan() { m_pool.Return(std::move(m_frame)); }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

    WorkingFrame* operator->() const { return &m_frame->frame; }
    /// False when there is no memory.
    explicit operator bool() const { return m_frame != nullptr; }

   private:
    WorkingFramePool& m_pool;
    std::unique_ptr<Node> m_frame;
  };

 private:
  std::unique_ptr<Node> Take() {
    {
      CAutoLock guard(&m_lock);
      if (auto frame = std::move(m_idle)) {
        m_idle = std::move(frame->next);
        return frame;
      }
    }
    return std::unique_ptr<Node>(new (std::nothrow) Node);
  }

  void Return(std::unique_ptr<Node> frame) {
    if (!frame) return;
    CAutoLock guard(&m_lock);
    frame->next = std::move(m_idle);
    m_idle = std::move(frame);
  }

  CMutexLock m_lock;
  std::unique_ptr<Node> m_idle;
};

}  // namespace libnivral
