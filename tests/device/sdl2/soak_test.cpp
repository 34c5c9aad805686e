// SPDX-License-Identifier: MIT
// Panes that are opened and closed over and over.
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "backends/sdl2/sdl_objects.h"
#include "nivral/nivral.h"
#include "support/frames.h"
#include "support/process_counts.h"
#include "support/test_window.h"

namespace {

void OpenDrawClose(HWND window, TestFrame& f) {
  void* pane = nullptr;
  ASSERT_EQ(NIVRAL_DWOpenDraw(&pane), 0u);
  NIVRAL_DWSetHwnd(pane, window);
  NIVRAL_DWSetOSDText(pane, 0, "channel 1", 4, 4, 0, 0xFFFFFF);
  NIVRAL_DWInitDraw(pane, 64, 48, 0);
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(NIVRAL_DWDrawYUV420(pane, f.y.data(), 64, f.u.data(), f.v.data(), 32, 0, 0), 0u);
  Pump();
  NIVRAL_DWFreeDraw(pane);
  NIVRAL_DWCloseDraw(pane);
}

/// The same on SDL alone, to know what SDL and the driver under it keep of each round.
void BareRound(HWND hwnd, TestFrame& f) {
  const SdlWindow window(SDL_CreateWindowFrom(hwnd));
  const SdlRenderer renderer(SDL_CreateRenderer(window.get(), -1, SDL_RENDERER_ACCELERATED));
  {
    const SdlTexture texture(
        SDL_CreateTexture(renderer.get(), SDL_PIXELFORMAT_YV12, SDL_TEXTUREACCESS_STREAMING, 64, 48));
    for (int i = 0; i < 2; ++i) {
      SDL_UpdateYUVTexture(texture.get(), nullptr, f.y.data(), 64, f.u.data(), 32, f.v.data(), 32);
      SDL_RenderClear(renderer.get());
      SDL_RenderCopy(renderer.get(), texture.get(), nullptr, nullptr);
      SDL_RenderPresent(renderer.get());
    }
    Pump();
  }
}

/// What `rounds` rounds added, after some that fill caches.
template <class Round>
ProcessCounts Growth(int rounds, Round&& round) {
  for (int i = 0; i < 3; ++i)
    round();
  const ProcessCounts before = CountSettledProcess();
  for (int i = 0; i < rounds; ++i)
    round();
  const ProcessCounts after = CountSettledProcess();
  return {after.threads - before.threads, after.handles - before.handles,
          after.heapBytes > before.heapBytes ? after.heapBytes - before.heapBytes : 0,
          after.gdiObjects - before.gdiObjects, after.windows - before.windows};
}

bool IsNoMore(const ProcessCounts& ours, const ProcessCounts& bare) {
  return ours.threads <= bare.threads && ours.handles <= bare.handles + 2 &&
         ours.heapBytes <= bare.heapBytes + 1024 && ours.gdiObjects <= bare.gdiObjects + 1 &&
         ours.windows <= bare.windows;
}

/// NIVRAL_SOAK_CYCLES sets another length.
int Cycles() {
  const char* wanted = std::getenv("NIVRAL_SOAK_CYCLES");
  return wanted ? std::atoi(wanted) : 8;
}

TEST(SdlSoak, OpeningAndClosingPanesKeepsNoMoreThanSdlDoes) {
  ASSERT_EQ(NIVRAL_InitializeEx(1), 0u);
  {
    const TestWindow window(160, 120);
    TestFrame frame = FlatFrame(64, 48, 126, 128, 128);
    // On a busy machine threads of the driver end late. What a pane keeps, it keeps at every attempt.
    bool clean = false;
    for (int attempt = 0; attempt < 6 && !clean; ++attempt) {
      const ProcessCounts bare = Growth(Cycles(), [&] { BareRound(window.Handle(), frame); });
      const ProcessCounts ours = Growth(Cycles(), [&] { OpenDrawClose(window.Handle(), frame); });
      std::printf("bare: %s\nours: %s\n", testing::PrintToString(bare).c_str(),
                  testing::PrintToString(ours).c_str());
      clean = IsNoMore(ours, bare);
    }
    EXPECT_TRUE(clean);
  }
  NIVRAL_UnInitialize();
}

}  // namespace
