// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>

namespace libnivral {

/// A lock for sections of some nanoseconds that call nobody. Needs no memory, cannot fail and costs one
/// atomic exchange, where the system's locks cost several calls; who meets it taken soon lets others run,
/// those of a lower priority too. Not to be taken twice.
class SpinLock {
 public:
  void lock() {
    for (int tries = 0; m_taken.exchange(true, std::memory_order_acquire); ++tries)
      Wait(tries);
  }
  void unlock() { m_taken.store(false, std::memory_order_release); }

 private:
  static void Wait(int tries) {
    constexpr int kPauses = 64;
    constexpr int kYields = 128;
    if (tries < kPauses) {
      YieldProcessor();
    } else if (tries < kYields) {
      SwitchToThread();
    } else {
      Sleep(1);
    }
  }

  std::atomic<bool> m_taken{false};
};

}  // namespace libnivral
