// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <climits>
#include <functional>

#include "support/import_patch.h"

/// A method of all COM objects of a kind that counts its calls and fails on demand, until the end of its scope:
/// objects of one kind share their table of functions.
template <int slot, class Interface, class... Arguments>
class Method {
 public:
  explicit Method(Interface* object)
      : m_patch((original = (*reinterpret_cast<Function***>(object))[slot],
                 *reinterpret_cast<ULONG_PTR**>(object) + slot),
                reinterpret_cast<ULONG_PTR>(&Call)) {
    failing = calls = 0;
    then = nullptr;
  }

  /// The next calls give `result` and do nothing.
  static void Fail(HRESULT result, int times = INT_MAX) {
    failure = result;
    failing = times;
  }

  static inline std::atomic<int> calls, failing;
  /// Sees what a call gave, and says what the caller gets.
  static inline std::function<HRESULT(HRESULT, Interface*, Arguments...)> then;

 private:
  using Function = HRESULT WINAPI(Interface*, Arguments...);
  static HRESULT WINAPI Call(Interface* self, Arguments... arguments) {
    ++calls;
    if (failing > 0) {
      --failing;
      return failure;
    }
    const HRESULT result = original(self, arguments...);
    return then ? then(result, self, arguments...) : result;
  }

  static inline Function* original;
  static inline std::atomic<HRESULT> failure;
  SlotPatch m_patch;
};
