// SPDX-License-Identifier: MIT
// Many panes at once, and panes opened and closed over and over. NIVRAL_SOAK_SECONDS, NIVRAL_SOAK_PANES and
// NIVRAL_SOAK_CYCLES make it longer.
#include <algorithm>
#include <deque>
#include <random>

#include "backends.h"
#include "support/process_counts.h"

namespace {

TEST_P(Soak, PanesSurviveTheirWindowsBeingResizedHiddenAndShown) {
  std::deque<Pane> panes;  // side by side
  for (int i = 0; i < Setting("NIVRAL_SOAK_PANES", 4); ++i) {
    Pane& pane = panes.emplace_back(b.type, 200, 150, 40 + i % 5 * 320, 60 + i / 5 % 4 * 260);
    pane.Start(64, 48);
    NIVRAL_DWSetOSDText(pane.handle, 0, "pane", 8, 8, 0, 0xFFFFFF);
  }
  std::deque<Feeder> feeders;
  for (Pane& pane : panes)
    feeders.emplace_back(pane, FlatFrame(64, 48, 145, 54, 34));
  std::mt19937 random(20);
  const auto upTo = [&](uint32_t limit) { return static_cast<int>(1 + random() % limit); };
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(Setting("NIVRAL_SOAK_SECONDS", 2)) * 1000;
  while (GetTickCount64() < end) {
    Pane& pane = panes[random() % panes.size()];
    const uint32_t what = random() % 6;
    if (what < 2)
      ShowWindow(pane.Window(), what ? SW_HIDE : SW_SHOWNOACTIVATE);
    else
      pane.window.ResizeClient(upTo(300), upTo(240));
    NIVRAL_DWAdjustedWnd(pane.handle);
    Pump(random() % 20);
  }
  for (Pane& pane : panes) {
    ShowWindow(pane.Window(), SW_SHOWNOACTIVATE);
    pane.window.ResizeClient(200, 150);
  }
  for (Feeder& feeder : feeders) {
    const int before = feeder.shown;
    EXPECT_TRUE(WaitUntil([&] { return feeder.shown > before; }));
  }
  feeders.clear();  // each waits for its thread
  for (Pane& pane : panes)
    pane.Start(64, 48);
}

/// A life with two sizes of window and video; the landmark makes Direct3D's second reset fail.
void Cycle(const Backend& b, TestWindow& window) {
  TestFrame large = FlatFrame(160, 120, 90, 128, 128), small = FlatFrame(160, 60, 90, 128, 128);
  void* pane = nullptr;
  ASSERT_EQ(NIVRAL_DWOpenDrawEx(&pane, b.type), 0u);
  if (b.opened) b.opened(pane);
  NIVRAL_DWSetHwnd(pane, window.Handle());
  NIVRAL_DWSetOSDText(pane, 0, "channel 1", 4, 4, 0, 0xFFFFFF);
  for (TestFrame* f : {&large, &small, &large}) {
    NIVRAL_DWInitDraw(pane, 160, static_cast<uint32_t>(f->height), 0);
    const uint32_t place = 0x41A00000;  // 20.0
    NIVRAL_DWSetDsmAlgInfo(pane, 1, &place, &place, 0, nullptr, nullptr, nullptr, nullptr, 2);
    EXPECT_EQ(NIVRAL_DWDrawYUV420(pane, f->y.data(), 160, f->u.data(), f->v.data(), 80, 0, 0), 0u);
    window.ResizeClient(160, 100 + f->height / 6);
    NIVRAL_DWAdjustedWnd(pane);
    Pump(10);
  }
  NIVRAL_DWFreeDraw(pane);
  NIVRAL_DWCloseDraw(pane);
}

TEST_P(Soak, OpeningAndClosingKeepsNoMoreThanTheSystemDoes) {
  TestWindow window(160, 120);
  const int cycles = Setting("NIVRAL_SOAK_CYCLES", 3);
  // What the system keeps of a few cycles is within the slack, and it keeps alike of all.
  const bool few = cycles <= 5 || !b.bare;
  const int share = std::min(cycles, 100);
  const size_t system = few ? 0 : KeptByRounds(share, [&] { b.bare(window); });
  ExpectRoundsKeepNothing(cycles, 4096 + system * static_cast<size_t>(cycles) / static_cast<size_t>(share),
                          [&] { Cycle(b, window); });
}

}  // namespace
