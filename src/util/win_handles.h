// SPDX-License-Identifier: MIT
// Owners for handles of the system.
#pragma once

#include <windows.h>

#include <memory>

namespace libnivral {

/// Owns any handle whose null value is null and that `Close` releases.
template <class Handle, auto Close>
struct HandleCloser {
  using pointer = Handle;
  void operator()(Handle handle) const { Close(handle); }
};

template <class Handle, auto Close>
using UniqueHandleOf = std::unique_ptr<void, HandleCloser<Handle, Close>>;

using UniqueRegKey = UniqueHandleOf<HKEY, &RegCloseKey>;
using UniqueEvent = UniqueHandleOf<HANDLE, &CloseHandle>;
using UniqueThread = UniqueHandleOf<HANDLE, &CloseHandle>;
/// Not to be given INVALID_HANDLE_VALUE, with which opening a file or a search fails.
using UniqueFile = UniqueHandleOf<HANDLE, &CloseHandle>;
using UniqueFind = UniqueHandleOf<HANDLE, &FindClose>;

}  // namespace libnivral
