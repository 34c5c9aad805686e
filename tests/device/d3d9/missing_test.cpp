// SPDX-License-Identifier: MIT
// A machine on which a part of Direct3D is missing. Each test runs in a process without that part.
#include <gmock/gmock.h>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/sdl2/sdl_displayer.h"
#include "support/pane.h"

namespace {

TEST(D3dMissing, WithoutDirect3DOpensSdlInsteadFromThenOn) {
  testing::internal::CaptureStdout();
  for (int i = 0; i < 2; ++i) {
    void* pane = nullptr;
    ASSERT_EQ(i == 0 ? NIVRAL_DWOpenDrawEx(&pane, 1) : NIVRAL_DWOpenDraw(&pane), 0u);
    EXPECT_NE(dynamic_cast<SDLDisplayer*>(static_cast<BaseDisplayer*>(pane)), nullptr);
    NIVRAL_DWCloseDraw(pane);
  }
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              testing::HasSubstr("NIVRAL_DWOpenDrawEx: Direct3D 9 cannot be loaded, SDL2 is used"));
  EXPECT_EQ(NIVRAL_UnInitialize(), 0u);
}

TEST(D3dMissing, WithoutD3dxDrawsByItself) {
  ASSERT_EQ(LoadD3dx(), nullptr);
  Pane pane(1, 160, 120);
  EXPECT_NE(dynamic_cast<D3DDisplayer*>(static_cast<BaseDisplayer*>(pane.handle)), nullptr);
  pane.Start(160, 120);
  TestFrame frame = FlatFrame(160, 120, 16, 128, 128);
  NIVRAL_DWSetOSDText(pane.handle, 0, "MMMMMMMM", 20, 20, 0, 0xFFFFFF);
  pane.SetBox(60, 60, 100, 100, 4, 0, 1);
  const ScreenShot shot = pane.Show(frame);
  EXPECT_TRUE(Near(shot.At(80, 60), {0, 255, 0}, 2));
  const auto isBright = [](const Rgb& c) { return c.g > 0x40; };
  EXPECT_GT(Find(shot, isBright, {20, 20, 70, 30}).count, 20) << "of the text";
}

}  // namespace
