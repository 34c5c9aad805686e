// SPDX-License-Identifier: MIT
#include <array>
#include <bit>
#include <cstdio>

#include "nivral/nivral.h"
#include "roads/bench_pane.h"

namespace {

constexpr int kTexts = 6;
constexpr int kBoxes = 12;
constexpr int kLandmarks = 68;

uint32_t Bits(int value) {
  return std::bit_cast<uint32_t>(static_cast<float>(value));
}

/// Through the exports, as a client draws.
class LibraryPane : public BenchPane {
 public:
  LibraryPane(int place, uint32_t backend) : m_window(place) {
    if (NIVRAL_DWOpenDrawEx(&m_pane, backend) != 0) Fail("no pane");
    NIVRAL_DWSetHwnd(m_pane, m_window.Handle());
    NIVRAL_DWInitDraw(m_pane, kFrameWidth, kFrameHeight, 0);
  }
  ~LibraryPane() override { NIVRAL_DWCloseDraw(m_pane); }
  LibraryPane(const LibraryPane&) = delete;
  LibraryPane& operator=(const LibraryPane&) = delete;

  void Draw(TestFrame& f) override {
    if (NIVRAL_DWDrawYUV420(m_pane, f.y.data(), static_cast<uint32_t>(f.strideY), f.u.data(), f.v.data(),
                            static_cast<uint32_t>(f.strideUV), 0, 0) != 0) {
      Fail("a frame was dropped");
    }
  }

 protected:
  void* Handle() const { return m_pane; }

 private:
  BenchWindow m_window;
  void* m_pane = nullptr;
};

/// Six texts, a mosaic, and with every frame twelve boxes with labels and 68 landmarks with a box. The boxes
/// move with every frame, a distance changes every second or so.
class FullPane : public LibraryPane {
 public:
  FullPane(int place, uint32_t backend) : LibraryPane(place, backend) {
    for (int i = 0; i < kTexts; ++i) {
      char text[64];
      std::snprintf(text, sizeof(text), "Channel %d  2026-01-31 12:00:0%d", i, i);
      NIVRAL_DWSetOSDText(Handle(), i, text, 10, static_cast<uint32_t>(10 + 28 * i), 0, 0xFFFFFF);
    }
    NIVRAL_DWSetMosaicLevel(Handle(), 3);
    NIVRAL_DWSetMosaicFlag(Handle(), 1);
    NIVRAL_DWSetMosaicAreaScale(Handle(), 0.4f, 0.4f, 0.6f, 0.6f);
  }

  void Draw(TestFrame& frame) override {
    SetBoxes();
    SetLandmarks();
    ++m_frame;
    LibraryPane::Draw(frame);
  }

 private:
  void SetBoxes() {
    std::array<uint32_t, kBoxes> left, top, right, bottom;
    std::array<uint16_t, kBoxes> type, distance, unused{};
    for (int i = 0; i < kBoxes; ++i) {
      const auto at = static_cast<size_t>(i);
      const int x = 20 + 95 * (i % 6) + m_frame % 16;
      const int y = 200 + 75 * (i / 6);
      left[at] = Bits(x), right[at] = Bits(x + 70);
      top[at] = Bits(y), bottom[at] = Bits(y + 50);
      type[at] = static_cast<uint16_t>(1 + i % 7);
      distance[at] = static_cast<uint16_t>(100 + 11 * i + (m_frame / 25 % kBoxes == i));
    }
    NIVRAL_DWSetAlgInfo(Handle(), kBoxes, left.data(), top.data(), right.data(), bottom.data(), type.data(),
                        distance.data(), unused.data(), unused.data(), 2);
  }

  void SetLandmarks() {
    std::array<uint32_t, kLandmarks> x, y;
    for (int i = 0; i < kLandmarks; ++i) {
      x[static_cast<size_t>(i)] = Bits(420 + i % 17 * 9 + m_frame % 8);
      y[static_cast<size_t>(i)] = Bits(40 + i / 17 * 25);
    }
    const uint32_t left = Bits(400), top = Bits(20), right = Bits(600), bottom = Bits(150);
    NIVRAL_DWSetDsmAlgInfo(Handle(), kLandmarks, x.data(), y.data(), 1, &left, &top, &right, &bottom, 2);
  }

  int m_frame = 0;
};

}  // namespace

PanePointer MakePlainPane(int place, uint32_t backend) {
  return std::make_unique<LibraryPane>(place, backend);
}

PanePointer MakeFullPane(int place, uint32_t backend) {
  return std::make_unique<FullPane>(place, backend);
}
