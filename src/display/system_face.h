// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// The face of the system's icon titles, for text while the client has asked for no other.
std::string IconTitleFace();
