// SPDX-License-Identifier: MIT
#include "util/thread_base.h"

#include <gtest/gtest.h>

#include <atomic>

#include "support/import_patch.h"
#include "support/process_counts.h"
#include "support/wait.h"
#include "util/win_handles.h"

using namespace libnivral;

namespace {

/// What a body does and tells; keeps a handle to its thread to look at the exit code.
struct Body {
  explicit Body(CThreadBase& base) : owner(base) {}

  void Note() {
    HANDLE own = nullptr;
    DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &own, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    thread.reset(own);
    ++runs;
  }
  bool WaitForRuns(int count) const {
    return WaitUntil([&] { return runs == count; });
  }
  DWORD ExitCode() const {
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(thread.get(), INFINITE);
    GetExitCodeThread(thread.get(), &code);
    return code;
  }

  CThreadBase& owner;
  std::atomic<int> runs{0};
  UniqueThread thread;
};

DWORD UntilStopped(void* argument) {
  auto& body = *static_cast<Body*>(argument);
  body.Note();
  WaitForSingleObject(body.owner.StopEvent(), INFINITE);
  return 42;
}

DWORD NeverEnding(void* argument) {
  static_cast<Body*>(argument)->Note();
  for (;;)
    Sleep(1000);
}

TEST(ThreadBase, RunsTheFunctionUntilStopAndStartsAgain) {
  CThreadBase thread;
  EXPECT_EQ(thread.Stop(INFINITE), 0);
  EXPECT_EQ(WaitForSingleObject(thread.StopEvent(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
  Body body(thread);
  for (int round = 1; round <= 2; ++round) {
    ASSERT_EQ(thread.Start(&UntilStopped, &body), 1);
    ASSERT_TRUE(body.WaitForRuns(round));
    EXPECT_EQ(thread.Start(&NeverEnding, nullptr), 0) << "a running thread is left alone";
    EXPECT_EQ(WaitForSingleObject(body.thread.get(), 50), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(thread.Stop(INFINITE), 1);
    EXPECT_EQ(body.ExitCode(), 42u);
    EXPECT_EQ(thread.Stop(INFINITE), 0);
  }
}

TEST(ThreadBase, TerminatesABodyThatIgnoresTheStopEvent) {
  CThreadBase thread;
  Body body(thread);
  ASSERT_EQ(thread.Start(&NeverEnding, &body), 1);
  ASSERT_TRUE(body.WaitForRuns(1));
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(thread.Stop(200), 1);
  EXPECT_GE(GetTickCount64() - start, 190u);
  EXPECT_EQ(body.ExitCode(), 0xFFFFFFFFu);
}

TEST(ThreadBase, WithoutAFunctionRunsTheVirtualBody) {
  struct : CThreadBase {
    Body body{*this};
    DWORD Run() override { return UntilStopped(&body); }
  } thread;
  ASSERT_EQ(thread.Start(nullptr, nullptr), 1);
  ASSERT_TRUE(thread.body.WaitForRuns(1));
  EXPECT_EQ(thread.Stop(INFINITE), 1);
  EXPECT_EQ(thread.body.ExitCode(), 42u);
}

HANDLE WINAPI NoThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) {
  return nullptr;
}

TEST(ThreadBase, OneThatCannotBeMadeMayBeTriedAgainAndRoundsLeaveNothingBehind) {
  ExpectRoundsKeepNothing(50, 1024, [] {
    CThreadBase thread;
    Body body(thread);
    {
      const ImportPatch patch("kernel32.dll", "CreateThread", &NoThread);
      EXPECT_EQ(thread.Start(&UntilStopped, &body), 0);
    }
    EXPECT_EQ(thread.Stop(INFINITE), 0);
    EXPECT_EQ(thread.Start(&UntilStopped, &body), 1);
    EXPECT_EQ(thread.Stop(INFINITE), 1);
  });
}

}  // namespace
