// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Says in the log when a window is of a kind in which nothing may be seen here.
void NoteWindow(HWND window);
