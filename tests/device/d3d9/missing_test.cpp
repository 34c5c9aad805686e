// SPDX-License-Identifier: MIT
// A machine on which a part of Direct3D is missing. Run once without d3d9.dll and once without D3DX.
#include <gtest/gtest.h>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/sdl2/sdl_displayer.h"
#include "nivral/nivral.h"

namespace {

TEST(D3dMissing, OpensSdlInsteadFromThenOn) {
  D3DDisplayer displayer;
  ASSERT_EQ(displayer.LoadDirect3D(), 0);
  for (int i = 0; i < 2; ++i) {
    void* pane = nullptr;
    ASSERT_EQ(i == 0 ? NIVRAL_DWOpenDrawEx(&pane, 1) : NIVRAL_DWOpenDraw(&pane), 0u);
    EXPECT_NE(dynamic_cast<SDLDisplayer*>(static_cast<BaseDisplayer*>(pane)), nullptr);
    NIVRAL_DWCloseDraw(pane);
  }
  EXPECT_EQ(NIVRAL_UnInitialize(), 0u);
}

}  // namespace
