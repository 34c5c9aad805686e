// SPDX-License-Identifier: MIT
#include "support/failing_memory.h"

#include <atomic>
#include <cstdlib>

#include "support/crash_report.h"

namespace {

constexpr char kRuntime[] = "msvcrt.dll";
std::atomic<int> g_every{0};
std::atomic<int> g_calls{0};
std::atomic<int> g_failures{0};

bool Fails() {
  if (++g_calls % g_every != 0) return false;
  ++g_failures;
  return true;
}

template <auto real, class... Arguments>
void* Failing(Arguments... arguments) {
  return Fails() ? nullptr : real(arguments...);
}

/// The counters are set before the first import is replaced.
HMODULE Prepared(HMODULE module, int every, int phase) {
  g_every = every;
  g_calls = phase;
  g_failures = 0;
  return module;
}

}  // namespace

FailingMemory::FailingMemory(HMODULE module, int every, int phase)
    : m_malloc(kRuntime, "malloc", &Failing<&std::malloc, size_t>, Prepared(module, every, phase)),
      m_calloc(kRuntime, "calloc", &Failing<&std::calloc, size_t, size_t>, module),
      m_realloc(kRuntime, "realloc", &Failing<&std::realloc, void*, size_t>, module),
      m_abort(kRuntime, "abort", &ReportAbort, module) {
}

FailingMemory::~FailingMemory() = default;

int FailingMemory::Failures() const {
  return g_failures;
}
