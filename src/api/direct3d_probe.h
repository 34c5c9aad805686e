// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

/// Whether Direct3D 9 is unusable here (1) or not (0), from the registry and a trial device. Nothing when the
/// registry has no DirectX version: the caller keeps what it knew.
std::optional<uint32_t> ProbeDirect3D();
