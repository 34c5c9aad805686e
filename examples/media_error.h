// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

/// A media file that cannot be used; the text is one line for the user.
struct MediaError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
