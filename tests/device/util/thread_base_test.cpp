// SPDX-License-Identifier: MIT
#include "util/thread_base.h"

#include <gtest/gtest.h>

#include <atomic>

#include "support/import_patch.h"
#include "support/wait.h"

namespace {

/// What a body does and tells; keeps a handle to its thread to look at the exit code.
struct Body {
  CThreadBase* owner = nullptr;
  std::atomic<int> runs{0};
  std::atomic<int> ticks{0};
  HANDLE thread = nullptr;

  ~Body() { Forget(); }
  void Forget() {
    if (thread) CloseHandle(thread);
    thread = nullptr;
  }
  void Note() {
    DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &thread, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    ++runs;
  }
  DWORD ExitCode() const {
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(thread, 60000);
    GetExitCodeThread(thread, &code);
    return code;
  }
};

void WaitForRuns(const Body& body, int runs) {
  ASSERT_TRUE(WaitUntil([&] { return body.runs == runs; }));
}

DWORD UntilStopped(void* argument) {
  auto& body = *static_cast<Body*>(argument);
  body.Note();
  WaitForSingleObject(body.owner->StopEvent(), INFINITE);
  return 42;
}

DWORD NeverEnding(void* argument) {
  auto& body = *static_cast<Body*>(argument);
  body.Note();
  for (;;) {
    ++body.ticks;
    Sleep(5);
  }
}

TEST(ThreadBase, RunsTheFunctionUntilStopAndStartsAgain) {
  CThreadBase thread;
  Body body;
  body.owner = &thread;
  for (int round = 1; round <= 2; ++round) {
    ASSERT_EQ(thread.Start(&UntilStopped, &body), 1);
    WaitForRuns(body, round);
    // A running thread is left alone.
    EXPECT_EQ(thread.Start(&NeverEnding, nullptr), 0);
    EXPECT_EQ(WaitForSingleObject(body.thread, 50), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(thread.Stop(INFINITE), 1);
    EXPECT_EQ(body.ExitCode(), 42u);
    EXPECT_EQ(thread.Stop(INFINITE), 0);
    body.Forget();
  }
}

TEST(ThreadBase, StopWithoutAThreadReturnsZeroAndTheEventStaysQuiet) {
  CThreadBase thread;
  EXPECT_EQ(thread.Stop(INFINITE), 0);
  EXPECT_EQ(WaitForSingleObject(thread.StopEvent(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST(ThreadBase, TerminatesABodyThatIgnoresTheStopEvent) {
  CThreadBase thread;
  Body body;
  ASSERT_EQ(thread.Start(&NeverEnding, &body), 1);
  WaitForRuns(body, 1);
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(thread.Stop(200), 1);
  EXPECT_GE(GetTickCount64() - start, 190u);
  EXPECT_EQ(body.ExitCode(), 0xFFFFFFFFu);
  const int ticks = body.ticks;
  Sleep(50);
  EXPECT_EQ(body.ticks, ticks);
  EXPECT_EQ(thread.Stop(200), 0);
}

TEST(ThreadBase, WithoutAFunctionRunsTheVirtualBody) {
  class Derived : public CThreadBase {
   public:
    Body body;

   protected:
    DWORD Run() override {
      body.owner = this;
      return UntilStopped(&body);
    }
  };
  Derived thread;
  ASSERT_EQ(thread.Start(nullptr, nullptr), 1);
  WaitForRuns(thread.body, 1);
  EXPECT_EQ(thread.Stop(INFINITE), 1);
  EXPECT_EQ(thread.body.ExitCode(), 42u);
}

TEST(ThreadBase, AThreadThatCannotBeMadeMayBeTriedAgain) {
  CThreadBase thread;
  Body body;
  body.owner = &thread;
  {
    HANDLE(WINAPI * fail)
    (SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD,
     DWORD*) = [](SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) -> HANDLE {
      return nullptr;
    };
    ImportPatch noThread("kernel32.dll", "CreateThread", fail);
    EXPECT_EQ(thread.Start(&UntilStopped, &body), 0);
  }
  EXPECT_EQ(thread.Stop(INFINITE), 0);
  EXPECT_EQ(thread.Start(&UntilStopped, &body), 1);
  WaitForRuns(body, 1);
  EXPECT_EQ(thread.Stop(INFINITE), 1);
}

}  // namespace
