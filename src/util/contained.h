// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <utility>

#include "util/log_file.h"

namespace libnivral {

/// Runs the body of a thread, where an exception would end the client's process: here it ends the body and
/// leaves a line in the log. `operation` is what the line names. False when the body did not come to its end.
template <class Body>
bool Contained(const char* operation, Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (const std::exception& exception) {
    CLogFile::GetInstance()->WriteA(2, "%s: %s", operation, exception.what());
  } catch (...) {
    CLogFile::GetInstance()->WriteA(2, "%s: unknown exception", operation);
  }
  return false;
}

}  // namespace libnivral
