// SPDX-License-Identifier: MIT
// Texts and paths are UTF-8 inside the player and UTF-16 in the system's functions.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

inline std::wstring Wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size)));
  return wide;
}

inline std::string Utf8(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  std::string narrow(3 * text.size(), '\0');
  narrow.resize(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(),
                                                        static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

/// For the library, whose texts are in the system's code page.
inline std::string Ansi(std::string_view text) {
  const std::wstring wide = Wide(text);
  const int size = static_cast<int>(wide.size());
  std::string narrow(3 * wide.size(), '\0');
  narrow.resize(static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, wide.data(), size, narrow.data(),
                                                        static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}
