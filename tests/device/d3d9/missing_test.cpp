// SPDX-License-Identifier: MIT
// A machine on which a part of Direct3D is missing. Each test runs in a process without that part.
#include <gmock/gmock.h>

#include <bit>

#include "backends/sdl2/sdl_displayer.h"
#include "nivral/nivral.h"
#include "pane.h"

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
  void* opened = nullptr;
  ASSERT_EQ(NIVRAL_DWOpenDrawEx(&opened, 1), 0u);
  EXPECT_NE(dynamic_cast<D3DDisplayer*>(static_cast<BaseDisplayer*>(opened)), nullptr);
  NIVRAL_DWCloseDraw(opened);

  ASSERT_EQ(LoadD3dx(), nullptr);
  D3DPane pane;
  TestFrame frame = FlatFrame(kPaneWidth, kPaneHeight, 16, 128, 128);
  pane.DrawTwice(frame);
  pane.displayer.SetOSDText(0, "MMMMMMMM", 10, 10, 0, 0xFFFFFF);
  const uint32_t edge[] = {std::bit_cast<uint32_t>(60.0f), std::bit_cast<uint32_t>(100.0f)};
  const uint16_t type = 4, unused = 0;
  pane.displayer.SetAlgInfo(1, &edge[0], &edge[0], &edge[1], &edge[1], &type, &unused, &unused, &unused, 1);
  EXPECT_EQ(pane.Draw(frame), 0);
  EXPECT_PIXEL(pane.window.Handle(), 80, 60, {0, 255, 0});
  const ScreenShot shot = pane.Shot();
  int bright = 0;
  for (int x = 10; x < 60; ++x)
    bright += shot.At(x, 13).g > 0x40;
  EXPECT_GT(bright, 5) << "of the text";
}

}  // namespace
