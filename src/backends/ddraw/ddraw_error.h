// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace libnivral {

/// Logs a failed DirectDraw call, at most once a second, and hands the result back. A lost surface is a state
/// that the next attempt repairs and is not logged.
HRESULT LogFailure(const char* operation, HRESULT result);

/// Whether surfaces have to be restored before the call can succeed.
bool IsLost(HRESULT result);

}  // namespace libnivral
