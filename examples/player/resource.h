/* SPDX-License-Identifier: MIT */
#pragma once

#define PLAYER_ICON 1
