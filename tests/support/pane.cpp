// SPDX-License-Identifier: MIT
#include "support/pane.h"

#include <algorithm>
#include <array>
#include <bit>

#include "nivral/nivral.h"

namespace {

void Mark(TestFrame& f, uint8_t luma) {
  for (int y = 0; y < f.height; ++y)
    for (int x = 0; x < f.width; ++x)
      if ((x < kMark || x >= f.width - kMark) && (y < kMark || y >= f.height - kMark))
        f.y[static_cast<size_t>(y * f.strideY + x)] = luma;
}

}  // namespace

Pane::Pane(uint32_t type, int width, int height, int x, int y, DWORD style)
    : window(width, height, x, y, style) {
  EXPECT_EQ(NIVRAL_DWOpenDrawEx(&handle, type), 0u);
  if (opened) opened(handle);
  NIVRAL_DWSetHwnd(handle, window.Handle());
}

uint32_t Pane::Draw(TestFrame& f, int64_t param2) {
  FrameView v = f.View();
  if (bottomUp) {
    const int lastLuma = f.height - 1, lastChroma = f.height / 2 - 1;
    v = {v.y + lastLuma * v.strideY,   -v.strideY, v.u + lastChroma * v.strideU, -v.strideU,
         v.v + lastChroma * v.strideV, -v.strideV};
  }
  return DrawView(v, param2);
}

uint32_t Pane::DrawView(const FrameView& v, int64_t param2) {
  return NIVRAL_DWDrawYUV420(handle, v.y, static_cast<uint32_t>(v.strideY), v.u, v.v,
                             static_cast<uint32_t>(v.strideU), 7, param2);
}

void Pane::SetBox(float left, float top, float right, float bottom, uint16_t type, uint16_t distance,
                  uint16_t width) {
  const auto [l, t, r, b] = std::bit_cast<std::array<uint32_t, 4>>(std::array{left, top, right, bottom});
  const uint16_t none = 0;
  NIVRAL_DWSetAlgInfo(handle, 1, &l, &t, &r, &b, &type, &distance, &none, &none, width);
}

/// What the screen shows of the middle of the mark: at the planes' ends drivers mix chroma that is not of the frame.
Rgb Pane::Corner() const {
  RECT client{};
  GetClientRect(window.Handle(), &client);
  const auto place = [](int extent, int length) {
    return extent - 1 - extent * std::min(kMark, length) / 2 / std::max(length, 1);
  };
  return PixelOf(window.Handle(), place(client.right, m_width), place(client.bottom, m_height));
}

bool Pane::ShowsMark(int luma, bool limited) const {
  return Near(Corner(), ToRgb(luma, 128, 128, limited), 2);
}

void Pane::Start(int width, int height) {
  Init(width, height);
  Settle(width, height);
}

void Pane::Settle(int width, int height) {
  TestFrame frame = FlatFrame(width, height, 16, 128, 128);
  m_mark = 24;
  m_width = width, m_height = height;
  Mark(frame, 24);
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(WaitUntil([&] {
      if (Draw(frame) != 0) return false;
      Pump(20);
      limitedRange = ShowsMark(m_mark, true);
      return limitedRange || ShowsMark(m_mark, false);
    })) << width
        << "x" << height << ": " << testing::PrintToString(Corner());
  }
}

ScreenShot Pane::Show(TestFrame& frame, int lighter) {
  m_mark = m_mark == 64 ? 24 : m_mark + 8;
  m_width = frame.width, m_height = frame.height;
  Mark(frame, static_cast<uint8_t>(m_mark));
  EXPECT_EQ(Draw(frame), 0u);
  EXPECT_TRUE(WaitUntil([&] { return ShowsMark(m_mark + lighter, limitedRange); }))
      << "the frame did not reach the screen: " << testing::PrintToString(Corner());
  return ScreenShot(ClientOnScreen(window.Handle()));
}

Feeder::Feeder(Pane& pane, TestFrame frame)
    : m_thread([this, &pane, fed = std::move(frame)]() mutable {
        for (; !m_stop; Sleep(1))
          shown += pane.Draw(fed) == 0;
        m_ended = true;
      }) {
}

void Feeder::Stop() {
  m_stop = true;
  EXPECT_TRUE(WaitUntil([&] { return m_ended.load(); }));
}
