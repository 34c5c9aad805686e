// SPDX-License-Identifier: MIT
#pragma once

/// What the library does when it is loaded and unloaded. Both run under the loader's lock.
void OnProcessAttach() noexcept;
void OnProcessDetach() noexcept;
