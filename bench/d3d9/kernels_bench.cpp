// SPDX-License-Identifier: MIT
// Copies of a frame into system memory in a locked surface's layout, against memcpy of the same bytes and the
// forms that do one run or one byte at a time.
#include <cstring>
#include <random>

#include "alternate.h"
#include "backends/d3d9/d3d_mosaic.h"
#include "backends/d3d9/d3d_surface.h"
#include "support/frames.h"

namespace {

constexpr int32_t kWidth = 1920;
constexpr int32_t kHeight = 1080;
constexpr int kRounds = 101;

/// One fill per run of equal samples, straight into the surface.
void ZoomPlaneByRuns(const SurfacePlane& to, const uint8_t* from, int32_t stride, int32_t factor) {
  for (int32_t row = 0; row < to.height; ++row) {
    const uint8_t* source = from + row / factor * stride;
    for (int32_t column = 0; column < to.width; column += factor)
      std::memset(to.Row(row) + column, source[column / factor],
                  static_cast<size_t>(std::min(factor, to.width - column)));
  }
}

void ZoomByRuns(const Yv12Surface& surface, const FrameView& f, int32_t factor) {
  ZoomPlaneByRuns(surface.Luma(), f.y, f.strideY, factor);
  ZoomPlaneByRuns(surface.V(), f.v, f.strideV, factor);
  ZoomPlaneByRuns(surface.U(), f.u, f.strideU, factor);
}

/// One byte at a time.
void PixelatePlain(const Yv12Surface& surface, const FrameView& f) {
  for (int32_t row = 0; row < surface.height; ++row)
    for (int32_t column = 0; column < surface.width; ++column)
      surface.Luma().Row(row)[column] = f.y[row / 16 * 16 * f.strideY + column / 16 * 16];
}

/// Frames from a decoder's ring of buffers, more than a processor's cache holds, into the one surface that a
/// pane has.
class Stream {
 public:
  Stream() {
    std::mt19937 random(1);
    for (TestFrame& frame : m_frames) {
      // Room for a whole frame, so that one memcpy can take as many bytes from there.
      frame.y.resize(kBytes);
      for (uint8_t& sample : frame.y)
        sample = static_cast<uint8_t>(random());
    }
  }

  void Next() { m_turn = (m_turn + 1) % kCount; }
  FrameView Frame() { return m_frames[m_turn].View(); }
  FrameView Padded() { return m_padded[m_turn].View(); }
  Yv12Surface Surface() { return {m_surface.data(), kWidth, kWidth, kHeight}; }
  void Copy(size_t bytes) { std::memcpy(m_surface.data(), m_frames[m_turn].y.data(), bytes); }

  static constexpr size_t kBytes = size_t{kWidth} * kHeight * 3 / 2;

 private:
  static constexpr size_t kCount = 16;
  std::vector<TestFrame> m_frames{kCount, TestFrame(kWidth, kHeight)};
  std::vector<TestFrame> m_padded{kCount, TestFrame(kWidth, kHeight, kWidth + 64, kWidth / 2 + 32)};
  std::vector<uint8_t> m_surface = std::vector<uint8_t>(kBytes, 1);
  size_t m_turn = 0;
};

}  // namespace

int main() {
  Stream stream;
  const auto way = [&](const char* name, auto run) {
    return Way{name, [&stream, run] {
                 stream.Next();
                 run();
               }};
  };
  const Way copyAll = way("memcpy of the frame", [&] { stream.Copy(Stream::kBytes); });
  const Way copyLuma = way("memcpy of the luma", [&] { stream.Copy(size_t{kWidth} * kHeight); });

  const MosaicArea area{{kWidth / 4, kHeight / 4, kWidth * 3 / 4, kHeight * 3 / 4}, 16};
  Compare("1920x1080 copies",
          {copyAll, way("plain", [&] { CopyPlain(stream.Surface(), stream.Frame()); }),
           way("plain, padded rows", [&] { CopyPlain(stream.Surface(), stream.Padded()); }),
           way("mosaic area", [&] { CopyWithMosaicArea(stream.Surface(), stream.Frame(), area); })},
          kRounds);
  for (int32_t factor = 2; factor <= kMaxZoom; ++factor) {
    const std::string title = "1920x1080 zoomed by " + std::to_string(factor);
    Compare(title.c_str(),
            {copyAll,
             way("zoomed",
                 [&] {
                   CopyZoomed(stream.Surface(), stream.Frame(), {0, 0, factor});
                 }),
             way("one fill per run", [&] { ZoomByRuns(stream.Surface(), stream.Frame(), factor); })},
            kRounds);
  }
  const PixelRect whole{0, 0, kWidth, kHeight};
  Compare(
      "1920x1080 luma mosaic",
      {copyLuma, way("16x16 blocks", [&] { PixelateLuma(stream.Surface(), stream.Frame(), whole, {}, 0); }),
       way("one byte at a time", [&] { PixelatePlain(stream.Surface(), stream.Frame()); })},
      kRounds);
}
