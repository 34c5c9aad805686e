// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "util/mutex_lock.h"

namespace {

struct TryResult {
  bool held = false;
  ULONGLONG tookMs = 0;
};

/// Tries on a thread of its own, which lets go again.
class TryThread {
 public:
  TryThread(CMutexLock& lock, DWORD seconds)
      : m_thread([this, &lock, seconds] {
          const ULONGLONG start = GetTickCount64();
          m_result.held = lock.TryLock(seconds);
          m_result.tookMs = GetTickCount64() - start;
          if (m_result.held) lock.Unlock();
        }) {}

  TryResult Join() {
    m_thread.join();
    return m_result;
  }

 private:
  TryResult m_result;
  std::thread m_thread;
};

bool IsFree(CMutexLock& lock) {
  return TryThread(lock, 0).Join().held;
}

TEST(MutexLock, TriesOncePerSecondUntilTheLimit) {
  CMutexLock held;
  CMutexLock releasedSoon;
  held.Lock();
  releasedSoon.Lock();
  TryThread zero(held, 0);
  TryThread one(held, 1);
  TryThread two(held, 2);
  TryThread lucky(releasedSoon, 10);
  Sleep(500);
  releasedSoon.Unlock();
  for (const auto& [result, least] :
       {std::pair{zero.Join(), 980u}, {one.Join(), 980u}, {two.Join(), 1980u}}) {
    EXPECT_FALSE(result.held);
    EXPECT_GE(result.tookMs, least);
  }
  const TryResult got = lucky.Join();
  EXPECT_TRUE(got.held);
  EXPECT_GE(got.tookMs, 980u);
  held.Unlock();
  EXPECT_TRUE(IsFree(held));
}

TEST(MutexLock, ItsOwnerMayTakeItAgain) {
  CMutexLock lock;
  lock.Lock();
  lock.Lock();
  EXPECT_TRUE(lock.TryLock(0));
  lock.Unlock();
  lock.Unlock();
  EXPECT_FALSE(IsFree(lock));
  lock.Unlock();
  EXPECT_TRUE(IsFree(lock));
}

TEST(AutoLock, HoldsForItsScopeAlsoWhenAnExceptionLeavesIt) {
  CMutexLock lock;
  {
    CAutoLock hold(&lock);
    EXPECT_FALSE(IsFree(lock));
  }
  EXPECT_TRUE(IsFree(lock));
  const auto throwing = [&] {
    CAutoLock hold(&lock);
    throw std::runtime_error("leave");
  };
  EXPECT_THROW(throwing(), std::runtime_error);
  EXPECT_TRUE(IsFree(lock));
}

TEST(AutoLock, OnNullDoesNothing) {
  CAutoLock hold(nullptr);
}

TEST(AutoLock, KeepsThreadsApart) {
  CMutexLock lock;
  int64_t sum = 0;  // not atomic: only the lock keeps it whole
  const auto add = [&] {
    for (int i = 0; i < 20000; ++i) {
      CAutoLock hold(&lock);
      ++sum;
    }
  };
  std::thread a(add);
  std::thread b(add);
  a.join();
  b.join();
  EXPECT_EQ(sum, 40000);
}

}  // namespace
