// SPDX-License-Identifier: MIT
// Nanoseconds that the road of a frame adds to DisplayFrame when the picture is neither adjusted nor
// mirrored.
#include <cstdio>

#include "alternate.h"
#include "display/base_displayer.h"

using namespace libnivral;

namespace {

class IdleDisplayer : public BaseDisplayer {
 public:
  int32_t DisplayFrame(const FrameView& frame, const PaneSettings&, uint32_t, int64_t) override {
    m_lastY = frame.y;
    return 0;
  }
  uint8_t* volatile m_lastY = nullptr;
};

constexpr int kCalls = 100000;

}  // namespace

int main() {
  IdleDisplayer displayer;
  IdleDisplayer* volatile pane = &displayer;
  const PaneSettings settings;
  uint8_t y[4] = {}, u[1] = {}, v[1] = {};
  displayer.InitDraw(2, 2, 0);
  const auto repeat = [](auto call) {
    for (int i = 0; i < kCalls; ++i)
      call();
  };
  const std::vector<double> ms = MedianMs(
      {{"DisplayFrame", [&] { repeat([&] {
                                pane->DisplayFrame({y, 2, u, 1, v, 1}, settings, 0, 0);
                              }); }},
       {"DrawYUV420", [&] { repeat([&] { pane->DrawYUV420(y, 2, u, 1, v, 1, 0, 0); }); }}},
      51);
  if (displayer.m_lastY != y) return 1;
  constexpr double kNsPerMs = 1e6;
  std::printf("DisplayFrame %.1f ns, DrawYUV420 %.1f ns, difference %.1f ns\n", ms[0] * kNsPerMs / kCalls,
              ms[1] * kNsPerMs / kCalls, (ms[1] - ms[0]) * kNsPerMs / kCalls);
  return 0;
}
