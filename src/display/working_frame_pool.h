// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "display/working_frame.h"
#include "util/mutex_lock.h"

/// Working frames of one displayer, reused from frame to frame. Each is with one caller at a time; a second
/// thread that draws on the same handle gets its own.
class WorkingFramePool {
 public:
  /// A frame on loan; goes back to the pool at the end of the scope.
  class Loan {
   public:
    explicit Loan(WorkingFramePool& pool) : m_pool(pool), m_frame(pool.Take()) {}
    ~Loan() { m_pool.Return(std::move(m_frame)); }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

    /// Null when there is no memory.
    WorkingFrame* operator->() const { return m_frame.get(); }
    explicit operator bool() const { return m_frame != nullptr; }

   private:
    WorkingFramePool& m_pool;
    std::unique_ptr<WorkingFrame> m_frame;
  };

 private:
  std::unique_ptr<WorkingFrame> Take();
  void Return(std::unique_ptr<WorkingFrame> frame);

  CMutexLock m_lock;
  std::vector<std::unique_ptr<WorkingFrame>> m_idle;
};
