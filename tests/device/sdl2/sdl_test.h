// SPDX-License-Identifier: MIT
#pragma once

#include "backends/sdl2/sdl_displayer.h"
#include "backends/sdl2/sdl_library.h"
#include "support/pane.h"

/// While SDL runs.
class SdlTest : public testing::Test {
 protected:
  SdlTest() { NIVRAL_InitializeEx(1); }
  ~SdlTest() override { EXPECT_EQ(NIVRAL_UnInitialize(), 0u); }
};
