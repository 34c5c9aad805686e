// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

/// A media file that cannot be used; the text is one line for the user.
struct MediaError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A file in which there may be sound, but no pictures.
struct NoPictures : MediaError {
  using MediaError::MediaError;
};
