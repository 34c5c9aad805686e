// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

constexpr uint32_t kApiOk = 0;
constexpr uint32_t kApiFailed = 1;

/// Runs an exported function's body; no exception crosses the C boundary.
template <class Body>
uint32_t Guarded(Body&& body) noexcept {
  try {
    return body();
  } catch (...) {
    return kApiFailed;
  }
}

/// Calls `operation` on the object behind a handle and drops its result.
template <class Object, class Operation>
uint32_t Forward(void* handle, Operation&& operation) noexcept {
  if (!handle) return kApiFailed;
  return Guarded([&] {
    operation(*static_cast<Object*>(handle));
    return kApiOk;
  });
}

/// Calls `operation` and passes its result on.
template <class Object, class Operation>
uint32_t ForwardResult(void* handle, Operation&& operation) noexcept {
  if (!handle) return kApiFailed;
  return Guarded([&] { return static_cast<uint32_t>(operation(*static_cast<Object*>(handle))); });
}

}  // namespace libnivral
