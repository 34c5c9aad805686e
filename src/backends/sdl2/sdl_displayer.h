// SPDX-License-Identifier: MIT
#pragma once

#include "display/base_displayer.h"
#include "display/display_codes.h"

/// Shows frames through an SDL2 renderer on the client's window.
class SDLDisplayer : public BaseDisplayer {
 public:
  int32_t Display(uint8_t*, int32_t, uint8_t*, int32_t, uint8_t*, int32_t, uint32_t, int64_t) override {
    return 1;
  }
};
