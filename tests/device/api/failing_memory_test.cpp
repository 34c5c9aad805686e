// SPDX-License-Identifier: MIT
// A client that does everything, with a DLL whose allocations fail: nothing is promised to be seen or heard,
// but every call returns, no process dies, and with memory back frames are shown.
#include "support/failing_memory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <bit>
#include <string>
#include <vector>

#include "nivral/nivral.h"
#include "support/test_window.h"

namespace {

constexpr uint32_t kWidth = 160;
constexpr uint32_t kHeight = 120;

struct Case {
  uint32_t backend;
  int every;
};

class FailingAllocations : public testing::TestWithParam<Case> {
 protected:
  static HMODULE Library() { return GetModuleHandleW(L"libnivral.dll"); }
};

int NIVRAL_CALL Pull(uint8_t* buffer, int size, void*) {
  std::fill_n(buffer, size, uint8_t{0});
  return size;
}

void SetRecords(void* pane) {
  constexpr int kBoxes = 12;
  constexpr int kPoints = 68;
  std::array<uint32_t, kPoints> low{};
  std::array<uint32_t, kPoints> high{};
  std::array<uint16_t, kBoxes> value{};
  low.fill(std::bit_cast<uint32_t>(20.0f));
  high.fill(std::bit_cast<uint32_t>(100.0f));
  NIVRAL_DWSetAlgInfo(pane, kBoxes, low.data(), low.data(), high.data(), high.data(), value.data(),
                      value.data(), value.data(), value.data(), 2);
  NIVRAL_DWSetDsmAlgInfo(pane, kPoints, low.data(), high.data(), 1, low.data(), low.data(), high.data(),
                         high.data(), 2);
}

uint32_t DrawFrame(void* pane) {
  static std::vector<uint8_t> luma(kWidth * kHeight, 128);
  static std::vector<uint8_t> chroma(kWidth * kHeight / 4, 128);
  return NIVRAL_DWDrawYUV420(pane, luma.data(), kWidth, chroma.data(), chroma.data(), kWidth / 2, 0, 0);
}

/// One pane from opening to closing, with everything over the picture, set anew for each frame. The last
/// frame's result, or 1 when there was no pane.
uint32_t UsePane(uint32_t backend, HWND window) {
  void* pane = nullptr;
  if (NIVRAL_DWOpenDrawEx(&pane, backend) != 0) return 1;
  NIVRAL_DWSetHwnd(pane, window);
  NIVRAL_DWInitDraw(pane, kWidth, kHeight, 0);
  uint32_t result = 1;
  for (int frame = 0; frame < 30; ++frame) {
    for (int i = 0; i < 6; ++i)
      NIVRAL_DWSetOSDText(pane, i, "12:34:56 km/h", 5, static_cast<uint32_t>(20 * i), 0, 0xFFFFFF);
    NIVRAL_DWSetMosaicFlag(pane, 1);
    NIVRAL_DWSetMosaicAreaScale(pane, 0.1f, 0.1f, 0.5f, 0.5f);
    NIVRAL_DWSetMirrorMode(pane, static_cast<uint32_t>(frame % 3));
    NIVRAL_SetColorParams(pane, frame % 2 * 10, 5, 0, 0, 0);
    SetRecords(pane);
    result = DrawFrame(pane);
    if (frame % 10 == 9) NIVRAL_DWAdjustedWnd(pane);
    Pump();
  }
  NIVRAL_DWCloseDraw(pane);
  return result;
}

void UsePlayer() {
  const WAVEFORMATEX format{WAVE_FORMAT_PCM, 1, 8000, 16000, 2, 16, 0};
  void* player = nullptr;
  if (NIVRAL_WVOpenWave(&player) != 0) return;
  NIVRAL_WVSetWaveFormat(player, &format, 320);
  NIVRAL_WVSetWriteWaveCB(player, nullptr, &Pull);
  NIVRAL_WVPlayWave(player);
  Sleep(50);
  NIVRAL_WVCloseWave(player);
}

TEST_P(FailingAllocations, EndNoProcess) {
  const auto [backend, every] = GetParam();
  const TestWindow window(320, 240);
  NIVRAL_InitializeEx(backend == 0);
  for (int phase = 0; phase < every && phase < 10; ++phase) {
    FailingMemory failing(Library(), every, phase);
    UsePane(backend, window.Handle());
    UsePlayer();
    EXPECT_GT(failing.Failures(), 0);
  }
  EXPECT_EQ(UsePane(backend, window.Handle()), 0u) << "with memory back";
  NIVRAL_UnInitialize();
}

std::string NameOf(const testing::TestParamInfo<Case>& info) {
  constexpr const char* kNames[] = {"Sdl2", "Direct3D", "DirectDraw"};
  return std::string(kNames[info.param.backend]) + (info.param.every == 1 ? "All" : "EveryTenth");
}

INSTANTIATE_TEST_SUITE_P(, FailingAllocations,
                         testing::Values(Case{0, 10}, Case{1, 10}, Case{2, 10}, Case{0, 1}, Case{1, 1},
                                         Case{2, 1}),
                         &NameOf);

}  // namespace
