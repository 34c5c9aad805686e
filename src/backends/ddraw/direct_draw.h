// SPDX-License-Identifier: MIT
#pragma once

#include "display/base_displayer.h"
#include "display/display_codes.h"

/// Shows frames through DirectDraw surfaces.
class CDirectDraw : public BaseDisplayer {
 public:
  /// Marks the backend's once-per-process preparation as done.
  static void MarkPrepared() {}
  static void BuildTables() {}

  int32_t Display(uint8_t*, int32_t, uint8_t*, int32_t, uint8_t*, int32_t, uint32_t, int64_t) override {
    return kNotInitialised;
  }
};
