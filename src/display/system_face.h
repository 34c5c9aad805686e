// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// The face of the system's icon titles, for text while the client has asked for no other; "Tahoma" when the
/// system does not tell.
void IconTitleFace(char (&face)[LF_FACESIZE]);
