// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include "support/import_patch.h"

/// Makes a module's allocations fail, until the end of its scope: of those that it asks of its run-time
/// library (malloc, calloc, realloc, new and all that is built on them) every `every`th, or all when that is
/// 1. What other modules ask for is not touched. An abort of the module prints its stack. One at a time.
class FailingMemory {
 public:
  /// `phase` moves the first failure: 0 fails the `every`th call from now on, 1 the one before, and so on.
  FailingMemory(HMODULE module, int every, int phase = 0);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  int Failures() const;

 private:
  ImportPatch m_malloc;
  ImportPatch m_calloc;
  ImportPatch m_realloc;
  ImportPatch m_abort;
};
