// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

#include "support/crash_report.h"
#include "support/import_patch.h"

/// Makes allocations fail until the end of its scope: of those that this program, not what it loads, asks of its
/// run-time library (malloc, calloc, realloc, new and all that is built on them) every `every`th, or all when that
/// is 1. An abort prints its stack. One at a time.
class FailingMemory {
 public:
  /// `phase` moves the first failure: 0 fails the `every`th call from now on, 1 the one before, and so on.
  explicit FailingMemory(int every, int phase = 0) {
    s_calls = phase;
    s_failures = 0;
    s_every = every;
  }
  ~FailingMemory() { s_every = 0; }
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  int Failures() const { return s_failures; }

 private:
  static constexpr char kRuntime[] = "msvcrt.dll";
  static inline std::atomic<int> s_every{0}, s_calls{0}, s_failures{0};

  template <class... Arguments>
  struct Failing {
    using Function = void*(Arguments...);
    explicit Failing(const char* name)
        : patch(kRuntime, name, (s_real = RealFunction<Function>(kRuntime, name), &Call)) {}
    static void* Call(Arguments... arguments) {
      const int every = s_every;
      if (every == 0 || ++s_calls % every != 0) return s_real(arguments...);
      ++s_failures;
      return nullptr;
    }
    static inline Function* s_real = nullptr;
    ImportPatch patch;
  };
  Failing<size_t> m_malloc{"malloc"};
  Failing<size_t, size_t> m_calloc{"calloc"};
  Failing<void*, size_t> m_realloc{"realloc"};
  ImportPatch m_abort{kRuntime, "abort", &ReportAbort};
};
