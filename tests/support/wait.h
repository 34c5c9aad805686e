// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include "support/test_window.h"

/// Far beyond what any machine needs. Once a test has failed, it is not kept waiting for the rest.
inline DWORD PatienceMs() {
  return testing::Test::HasFailure() ? 500 : 60000;
}

/// Handles messages until `done`; false when that does not come.
template <class Done>
bool WaitUntil(Done&& done) {
  for (const ULONGLONG end = GetTickCount64() + PatienceMs(); !done(); Pump(3))
    if (GetTickCount64() > end) return false;
  return true;
}
