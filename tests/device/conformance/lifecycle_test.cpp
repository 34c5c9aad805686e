// SPDX-License-Identifier: MIT
// Results, callbacks, calls in any order and from several threads.
#include "backends.h"
#include "support/failing_memory.h"
#include "support/guarded_buffer.h"

namespace {

TEST_P(Conformance, ResultsSayWhatBecameOfAFrame) {
  TestFrame grey = Grey();
  auto pane = std::make_unique<Pane>(b.type, 160, 120);
  EXPECT_EQ(NIVRAL_DWFreeDraw(pane->handle), 0u) << "nothing to free yet";
  EXPECT_EQ(pane->Draw(grey), b.notReady) << "before InitDraw";
  for (const auto& [width, height] : {std::pair{0u, 48u}, {64u, 0u}, {~0u, ~0u}})
    EXPECT_EQ(pane->As<BaseDisplayer>().InitDraw(width, height, 0), b.badSize);
  EXPECT_EQ(pane->Draw(grey), b.notReady);
  pane->Start(64, 48);
  pane->Show(grey);

  for (int i = 0; i < 2; ++i)
    NIVRAL_DWFreeDraw(pane->handle);
  EXPECT_EQ(pane->Draw(grey), b.returnsAfterFree ? 0u : b.notReady);
  pane->Start(64, 48);

  const TestWindow other(160, 120, 400, 60);
  NIVRAL_DWFreeDraw(pane->handle);
  NIVRAL_DWSetHwnd(pane->handle, other.Handle());
  pane->Init(64, 48);
  const Rgb shown = ToRgb(126, 128, 128, pane->limitedRange);
  for (int i = 0; i < 3; ++i, Pump(30))
    EXPECT_EQ(pane->Draw(grey), 0u);
  EXPECT_PIXEL(other.Handle(), 80, 60, {shown});
  EXPECT_EQ(NIVRAL_DWFreeDraw(pane->handle), 0u);
  Pump(50);
  EXPECT_PIXEL(other.Handle(), 80, 60, {b.keepsPicture ? shown : Rgb{255, 255, 255}});

  // A window that goes, and frames of a size that could not take effect: they are not read beyond it.
  NIVRAL_DWSetHwnd(pane->handle, pane->Window());
  pane->Start(64, 48);
  pane->window.Destroy();
  EXPECT_EQ(pane->Draw(grey) == 0, b.missesGoneWindow);
  pane->Init(64, 8);
  const GuardedBuffer luma(64 * 8), chroma(32 * 4);
  for (const uint32_t mirror : {0u, 1u}) {
    NIVRAL_DWSetMirrorMode(pane->handle, mirror);
    EXPECT_NE(NIVRAL_DWDrawYUV420(pane->handle, luma.data(), 64, chroma.data(), chroma.data(), 32, 0, 0), 0u);
  }
}

struct Calls {
  uint8_t *y = nullptr, *u = nullptr, *v = nullptr, *decodedY = nullptr;
  uint32_t param1 = 0, decoded = 0, width = 0, height = 0, format = 0;
  int64_t param2 = 0, decodedParam2 = 0;
  DWORD thread = 0;

  static void NIVRAL_CALL OnFrame(uint8_t* y, uint32_t, uint8_t* u, uint8_t* v, uint32_t, uint32_t param1,
                                  int64_t param2, void* user) {
    auto& calls = *static_cast<Calls*>(user);
    calls.y = y, calls.u = u, calls.v = v, calls.param1 = param1, calls.param2 = param2;
  }
  static void NIVRAL_CALL OnDecode(uint8_t* y, uint32_t, uint32_t width, uint32_t height, int64_t param2,
                                   uint32_t format, void* user) {
    auto& calls = *static_cast<Calls*>(user);
    calls.decodedY = y, calls.width = width, calls.height = height, calls.format = format;
    calls.decodedParam2 = param2, calls.thread = GetCurrentThreadId(), ++calls.decoded;
  }
};

TEST_P(Conformance, CallbacksGetTheFrame) {
  Pane pane(b.type, 160, 120);
  Calls calls;
  NIVRAL_DWSetDrawYUV420CB(pane.handle, &calls, &Calls::OnFrame);
  NIVRAL_DWSetDecCB(pane.handle, &calls, &Calls::OnDecode);
  TestFrame grey = Grey();
  pane.Draw(grey);
  EXPECT_EQ(calls.param1, 7u) << "frames that are not shown are reported to the frame callback";
  EXPECT_EQ(calls.decoded, 0u) << "and to no other";
  pane.Init(64, 48);
  EXPECT_EQ(pane.Draw(grey, 0x123456789A), 0u);
  EXPECT_TRUE(calls.y == grey.y.data() && calls.u == grey.u.data() && calls.v == grey.v.data());
  EXPECT_EQ(calls.param2, 0x123456789A);
  ASSERT_EQ(calls.decoded, b.decodeCallback ? 1u : 0u);
  if (!b.decodeCallback) return;
  EXPECT_TRUE(calls.decodedY == grey.y.data() && calls.width == 64 && calls.height == 48 &&
              calls.format == 3);
  EXPECT_EQ(calls.decodedParam2, 0x123456789A);
  EXPECT_EQ(calls.thread, GetCurrentThreadId());
}

/// Every setter, with values that change from call to call.
void SetEverything(void* pane, uint32_t i) {
  const uint32_t place[] = {0x41200000, 0x41200000, 0x42000000, 0x42000000};  // 10, 10, 32, 32
  const uint16_t values[] = {2, 30};
  NIVRAL_DWSetOSDText(pane, static_cast<int>(i % 6), i % 5 ? "channel 1" : "", i % 90, i % 60, i % 2,
                      i * 997);
  NIVRAL_DWSetMirrorMode(pane, i % 3);
  NIVRAL_SetColorParams(pane, static_cast<int>(i % 20), 10, 10, static_cast<int>(i % 90), 0);
  NIVRAL_DWSetMosaicFlag(pane, i / 4 % 2);
  NIVRAL_DWSetMosaicLevel(pane, i % 6);
  NIVRAL_DWSetMosaicAreaScale(pane, 0.1f, 0.2f, 0.6f, static_cast<float>(i % 12) / 10);
  NIVRAL_DWSetPause(pane, i / 8 % 2);
  NIVRAL_DWSetAlgInfo(pane, 1, place, place + 1, place + 2, place + 3, values, values + 1, values, values, 2);
  NIVRAL_DWSetDsmAlgInfo(pane, 2, place, place + 1, 1, place, place + 1, place + 2, place + 3, 2);
  NIVRAL_DWAdjustedWnd(pane);
  Pump();
}

TEST_P(Soak, SettersAreTakenWhileAnotherThreadDraws) {
  Pane pane(b.type, 200, 150);
  pane.Start(64, 48);
  Feeder feeder(pane, Grey());
  for (uint32_t i = 0; feeder.shown < 100 || i < 300; ++i)
    SetEverything(pane.handle, i);
}

/// A pane from opening to closing; the last frame's result, or 1 when there was no pane.
uint32_t UsePane(const Backend& b, HWND window, TestFrame& f) {
  void* pane = nullptr;
  if (NIVRAL_DWOpenDrawEx(&pane, b.type) != 0) return 1;
  if (b.opened) b.opened(pane);
  NIVRAL_DWSetHwnd(pane, window);
  NIVRAL_DWInitDraw(pane, 64, 48, 0);
  uint32_t result = 1;
  for (uint32_t i = 0; i < 12; ++i) {  // by then every setter had each kind of value
    SetEverything(pane, i);
    result = NIVRAL_DWDrawYUV420(pane, f.y.data(), 64, f.u.data(), f.v.data(), 32, 0, 0);
  }
  NIVRAL_DWCloseDraw(pane);
  return result;
}

TEST_P(Conformance, FailingAllocationsEndNoProcess) {
  const TestWindow window(320, 240);
  TestFrame grey = Grey();
  for (const int every : {1, 7}) {
    int failures = 0;  // in one phase there may be too few allocations for one to fail
    for (int phase = 0; phase < every; ++phase) {
      const FailingMemory failing(every, phase);
      UsePane(b, window.Handle(), grey);
      failures += failing.Failures();
    }
    EXPECT_GT(failures, 0);
  }
  EXPECT_EQ(UsePane(b, window.Handle(), grey), 0u) << "with memory back";
}

}  // namespace
