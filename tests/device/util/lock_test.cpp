// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <stdexcept>
#include <thread>

#include "support/import_patch.h"
#include "util/locked_value.h"
#include "util/mutex_lock.h"

using namespace libnivral;

namespace {

bool IsFree(CMutexLock& lock) {
  bool free = false;
  std::thread([&] {
    free = lock.TryLockNow();
    if (free) lock.Unlock();
  }).join();
  return free;
}

/// Time that passes in whole seconds of sleep alone.
struct {
  DWORD now = 0xFFFFF000;
  int sleeps = 0;
  std::function<void()> onSleep;
} g_time;

void WINAPI PassTime(DWORD ms) {
  if (ms != 1000) return RealFunction<decltype(Sleep)>("kernel32.dll", "Sleep")(ms);
  g_time.now += ms;
  ++g_time.sleeps;
  g_time.onSleep();
}

TEST(MutexLock, TriesOncePerSecondUntilTheLimit) {
  constexpr int kNever = -1;
  const struct {
    DWORD seconds;
    int freeAfter;
    int sleeps;
  } cases[] = {{0, kNever, 1}, {1, kNever, 1}, {3, kNever, 3}, {10, 2, 2}, {0xFFFFFFFF / 1000 + 1, 3, 3}};
  const ImportPatch sleep("kernel32.dll", "Sleep", &PassTime);
  DWORD(WINAPI * tell)() = [] { return g_time.now; };
  const ImportPatch clock("kernel32.dll", "GetTickCount", tell);
  for (const auto& c : cases) {
    CMutexLock lock;
    std::promise<void> held, letGo;
    std::thread holder([&] {
      lock.Lock();
      held.set_value();
      letGo.get_future().wait();
      lock.Unlock();
    });
    held.get_future().wait();
    const auto end = [&] { letGo.set_value(), holder.join(); };
    g_time.sleeps = 0;
    g_time.onSleep = [&] { g_time.sleeps == c.freeAfter ? end() : void(); };
    EXPECT_EQ(lock.TryLock(c.seconds), c.freeAfter != kNever) << c.seconds;
    EXPECT_EQ(g_time.sleeps, c.sleeps) << c.seconds;
    c.freeAfter == kNever ? end() : lock.Unlock();
  }
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
  const auto throwing = [&] {
    CAutoLock hold(&lock);
    CAutoLock nothing(nullptr);
    EXPECT_FALSE(IsFree(lock));
    throw std::runtime_error("leave");
  };
  EXPECT_THROW(throwing(), std::runtime_error);
  EXPECT_TRUE(IsFree(lock));
}

/// As a callback and its context are, which no frame may meet apart.
TEST(LockedValue, IsChangedAndCopiedAsAWhole) {
  struct Pair {
    int a = 0, b = 0;
  };
  LockedValue<Pair> value;
  std::jthread setter([&] {
    for (int i = 1; i <= 100'000; ++i)
      value.Update([i](Pair& pair) { pair.a = pair.b = i; });
  });
  int torn = 0;
  for (Pair seen; seen.a < 100'000; seen = value.Copy())
    torn += seen.a != seen.b;
  EXPECT_EQ(torn, 0);
}

}  // namespace
