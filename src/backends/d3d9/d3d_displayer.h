// SPDX-License-Identifier: MIT
#pragma once

#include "display/base_displayer.h"
#include "display/display_codes.h"

/// Shows frames through a Direct3D 9 device.
class D3DDisplayer : public BaseDisplayer {
 public:
  int32_t Display(uint8_t*, int32_t, uint8_t*, int32_t, uint8_t*, int32_t, uint32_t, int64_t) override {
    return kNotInitialised;
  }

  virtual int32_t Initialize(uint32_t, uint32_t) { return kNoDevice; }
  virtual int32_t Uninitialize() { return kOk; }

  /// Loads the Direct3D 9 run-time. 1 when its entry point was found, else 0.
  int32_t LoadDirect3D() { return 0; }
};
