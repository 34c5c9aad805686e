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

void* FailingMalloc(size_t size) {
  return Fails() ? nullptr : std::malloc(size);
}

void* FailingCalloc(size_t count, size_t size) {
  return Fails() ? nullptr : std::calloc(count, size);
}

void* FailingRealloc(void* memory, size_t size) {
  return Fails() ? nullptr : std::realloc(memory, size);
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
    : m_malloc(kRuntime, "malloc", &FailingMalloc, Prepared(module, every, phase)),
      m_calloc(kRuntime, "calloc", &FailingCalloc, module),
      m_realloc(kRuntime, "realloc", &FailingRealloc, module),
      m_abort(kRuntime, "abort", &ReportAbort, module) {
}

FailingMemory::~FailingMemory() = default;

int FailingMemory::Calls() const {
  return g_calls;
}

int FailingMemory::Failures() const {
  return g_failures;
}
