// SPDX-License-Identifier: MIT
// Objects that outlive their displayer by design. They are kept in one process-wide list, so that whoever
// counts references can tell them from a leak.
#pragma once

#include <unknwn.h>

#include <cstddef>

#include "util/com_ptr.h"

namespace libnivral {

void KeepUnreleased(ComPtr<IUnknown> object);

template <class T>
void LeaveUnreleased(ComPtr<T>& object) {
  if (object) KeepUnreleased(ComPtr<IUnknown>(object.detach()));
}

size_t UnreleasedCount();

/// For the end of a program that wants everything gone.
void ReleaseUnreleased();

}  // namespace libnivral
