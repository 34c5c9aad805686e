// SPDX-License-Identifier: MIT
#include "colour/convert.h"

#include <cstring>
#include <limits>

#include "backends/yuvdraw/yuv2rgb.h"
#include "core/colour/reference.h"
#include "support/kernel_forms.h"

namespace {

class Convert : public KernelTest {
 protected:
  struct Planes {
    GuardedBuffer y, u, v;
    ConstFrameView view;
  };

  /// Random planes, the last row ending at its last pixel.
  Planes MakePlanes(int32_t width, int32_t height, int32_t strideY, int32_t strideUV) {
    const auto size = [](int32_t rowBytes, int32_t rows, int32_t stride) {
      return static_cast<size_t>(rows > 0 ? (rows - 1) * stride + rowBytes : 0);
    };
    Planes p{RandomBytes(size(width, height, strideY)),
             RandomBytes(size(width / 2, height / 2, strideUV)),
             RandomBytes(size(width / 2, height / 2, strideUV)),
             {}};
    p.view = {p.y.data(), strideY, p.u.data(), strideUV, p.v.data(), strideUV};
    return p;
  }
};

constexpr int32_t kSweepWidth = 128 * 256;

/// Converts rows of all bytes y for a given u and every v, 128 x 2 pixels per v. The plain form is compared with
/// the reference and the others with the plain one.
template <class ConvertRows, class Reference>
void SweepAllTriples(const ColourKernels& form, ConvertRows convert, Reference expected) {
  GuardedBuffer luma(kSweepWidth * 2), u(kSweepWidth / 2), v(kSweepWidth / 2), bgr(kSweepWidth * 6);
  GuardedBuffer plain(bgr.size());
  for (size_t i = 0; i < luma.size(); ++i)
    luma[i] = static_cast<uint8_t>(i % 128 + (i / kSweepWidth) * 128);
  for (size_t i = 0; i < v.size(); ++i)
    v[i] = static_cast<uint8_t>(i / 64);
  for (int32_t blue = 0; blue < 256; ++blue) {
    std::memset(u.data(), blue, u.size());
    SetCpuMask(kScalarKernels.features);
    convert(plain.data(), luma.data(), u.data(), v.data());
    SetCpuMask(form.features);
    convert(bgr.data(), luma.data(), u.data(), v.data());
    ASSERT_TRUE(std::equal(plain.begin(), plain.end(), bgr.begin())) << "u " << blue;
    for (size_t i = 0; i < luma.size() && &form == &kScalarKernels; ++i) {
      const uint8_t red = v[i % kSweepWidth / 2];
      const reference::Pixel want = expected(luma[i], blue, red);
      const uint8_t* got = bgr.data() + i * 3;
      ASSERT_TRUE(got[0] == want[0] && got[1] == want[1] && got[2] == want[2])
          << "y " << int{luma[i]} << " u " << blue << " v " << int{red};
    }
  }
}

TEST_P(Convert, EveryTriple) {
  SweepAllTriples(
      *GetParam(),
      [](uint8_t* bgr, const uint8_t* y, const uint8_t* u, const uint8_t* v) {
        Yv12ToRgb24(bgr, kSweepWidth, y, u, v, kSweepWidth, kSweepWidth / 2, kSweepWidth, 2);
      },
      reference::ToPixel);
  // A snapshot is bottom-up: the planes' rows are swapped so that the sweep finds them in its own order.
  SweepAllTriples(
      *GetParam(),
      [](uint8_t* bgr, const uint8_t* y, const uint8_t* u, const uint8_t* v) {
        YuvToBottomUpBgr24(bgr, {y + kSweepWidth, -kSweepWidth, u, 0, v, 0}, kSweepWidth, 2);
      },
      reference::ToSnapshotPixel);
}

/// What planes are converted to: the packed formats and two more.
constexpr int32_t kYuv422 = kPixelFormatCount;
constexpr int32_t kSnapshot = kYuv422 + 1;
constexpr int32_t kPixelBytes[] = {3, 4, 2, 2, 2, 3};

std::array<uint8_t, 4> Pixel(int32_t kind, int32_t x, uint8_t y, uint8_t u, uint8_t v) {
  const auto word = [](int32_t w) {
    return std::array<uint8_t, 4>{static_cast<uint8_t>(w), static_cast<uint8_t>(w >> 8)};
  };
  if (kind == kYuv422) return {x % 2 ? v : u, y};
  const reference::Pixel p =
      kind == kSnapshot ? reference::ToSnapshotPixel(y, u, v) : reference::ToPixel(y, u, v);
  switch (static_cast<PixelFormat>(kind)) {
    case PixelFormat::Bgrx32:
      return {p[0], p[1], p[2], 0};
    case PixelFormat::Rgb565:
      return word(p[2] / 8 * 2048 + p[1] / 4 * 32 + p[0] / 8);
    case PixelFormat::Rgb555:
      return word(p[2] / 8 * 1024 + p[1] / 8 * 32 + p[0] / 8);
    default:
      return {p[0], p[1], p[2]};
  }
}

/// Whether a pixel is written: whole blocks, whole pairs of every row, or all.
bool IsCovered(int32_t kind, int32_t x, int32_t row, int32_t width, int32_t rows) {
  if (kind == kSnapshot) return true;
  return x < width / 2 * 2 && rows > 1 && (kind == kYuv422 || row < rows / 2 * 2);
}

void ConvertTo(int32_t kind, uint8_t* out, int32_t pitch, const ConstFrameView& p, int32_t width,
               int32_t height) {
  if (kind < kYuv422)
    ConvertToPixels(static_cast<PixelFormat>(kind), out, pitch, p, width, height);
  else if (kind == kYuv422)
    ConvertTo422(out, pitch, p, width, height);
  else
    YuvToBottomUpBgr24(out, p, width, height);
}

TEST_P(Convert, AllSizesOfAllKinds) {
  for (int32_t round = 0; round < 800; ++round) {
    const int32_t kind = round % 6;
    const int32_t width = round < 780 ? round / 6 : Random(0, 700);
    const int32_t height = Random(kind == kSnapshot ? 0 : -7, 7);
    const int32_t rows = std::abs(height);
    const Planes p = MakePlanes(width, rows, width + Random(0, 9), width / 2 + Random(0, 9));
    const int32_t bytes = kPixelBytes[kind];
    const int32_t pitch = width * bytes + (kind == kSnapshot ? 0 : Random(0, 5));
    GuardedBuffer out(static_cast<size_t>(rows > 0 ? (rows - 1) * pitch + width * bytes : 0), 0xA5);
    std::vector<uint8_t> want(out.begin(), out.end());
    for (int32_t row = 0; row < rows; ++row) {
      const int32_t block = std::min(row / 2, rows / 2 - 1);
      const int32_t chromaRow = height < 0 ? rows / 2 - 1 - block : block;
      const uint8_t* const luma = p.view.y + (height < 0 ? rows - 1 - row : row) * p.view.strideY;
      for (int32_t x = 0; x < width; ++x) {
        if (!IsCovered(kind, x, row, width, rows)) continue;
        const int32_t at = chromaRow * p.view.strideU + std::min(x / 2, width / 2 - 1);
        const bool grey = width < 2 || rows < 2;
        const auto pixel = Pixel(kind, x, luma[x], grey ? 128 : p.view.u[at], grey ? 128 : p.view.v[at]);
        const int32_t to = kind == kSnapshot ? rows - 1 - row : row;
        std::copy_n(pixel.begin(), bytes, want.begin() + to * pitch + x * bytes);
      }
    }
    ConvertTo(kind, out.data(), pitch, p.view, width, height);
    ASSERT_TRUE(std::equal(want.begin(), want.end(), out.begin()))
        << kind << ": " << width << " x " << height;
  }
}

/// Converts a bottom-up picture by the reference and compares all three planes, padding included.
void ExpectPlanesOf(const GuardedBuffer& bgr, int32_t width, int32_t height, int32_t strideY) {
  const auto rows = static_cast<size_t>(height / 2 * 2);
  const auto stride = static_cast<size_t>(strideY);
  const size_t sizeY = rows ? (rows - 1) * stride + static_cast<size_t>(width) : 0;
  const size_t sizeUV = rows ? (rows / 2 - 1) * (stride / 2) + static_cast<size_t>(width / 2) : 0;
  const GuardedBuffer y(sizeY, 7), u(sizeUV, 7), v(sizeUV, 7);
  std::vector<uint8_t> wantY(sizeY, 7), wantU(sizeUV, 7), wantV(sizeUV, 7);
  const auto at = [&](int32_t x, int32_t row) { return bgr.data() + ((height - 1 - row) * width + x) * 3; };
  for (int32_t row = 0; row < height / 2; ++row) {
    for (int32_t x = 0; x < width / 2; ++x) {
      int32_t sum[3] = {0, 0, 0};
      for (int32_t i = 0; i < 4; ++i) {
        const uint8_t* pixel = at(x * 2 + i % 2, row * 2 + i / 2);
        wantY[static_cast<size_t>((row * 2 + i / 2) * strideY + x * 2 + i % 2)] = reference::Luma(pixel);
        for (int32_t c = 0; c < 3; ++c)
          sum[c] += pixel[c];
      }
      const auto to = static_cast<size_t>(row * (strideY / 2) + x);
      std::tie(wantU[to], wantV[to]) = reference::Chroma(sum[0], sum[1], sum[2]);
    }
  }
  Rgb24ToYv12(y.data(), u.data(), v.data(), bgr.data(), width, height, strideY);
  ASSERT_TRUE(std::equal(wantY.begin(), wantY.end(), y.begin())) << "Y of " << width << " x " << height;
  ASSERT_TRUE(std::equal(wantU.begin(), wantU.end(), u.begin())) << "U of " << width << " x " << height;
  ASSERT_TRUE(std::equal(wantV.begin(), wantV.end(), v.begin())) << "V of " << width << " x " << height;
}

TEST_P(Convert, EveryColourToYv12) {
  GuardedBuffer bgr(512 * 256 * 3);
  for (int32_t red = 0; red < 256; red += 2) {
    for (size_t i = 0; i < 512 * 256; ++i) {
      bgr[i * 3] = static_cast<uint8_t>(i);
      bgr[i * 3 + 1] = static_cast<uint8_t>(i / 512);
      bgr[i * 3 + 2] = static_cast<uint8_t>(red + static_cast<int32_t>(i / 256 % 2));
    }
    ASSERT_NO_FATAL_FAILURE(ExpectPlanesOf(bgr, 512, 256, 512));
  }
}

TEST_P(Convert, Rgb24OfAllSizes) {
  for (int32_t width = 0; width < 150; ++width) {
    const int32_t height = Random(0, 7);
    GuardedBuffer bgr = RandomBytes(static_cast<size_t>(width * height * 3));
    // Half of the pictures are of full and empty channels only, for the ends of every sum.
    for (uint8_t& byte : bgr)
      byte = width % 2 ? byte : static_cast<uint8_t>(byte < 128 ? 0 : 255);
    ASSERT_NO_FATAL_FAILURE(ExpectPlanesOf(bgr, width, height, width + Random(0, 4)));
  }
}

TEST_P(Convert, HostileArgumentsTouchNothing) {
  constexpr int32_t kLow = std::numeric_limits<int32_t>::min();
  GuardedBuffer one(1, 9);
  uint8_t* const p = one.data();
  constexpr std::pair<int32_t, int32_t> kSizes[] = {{0, 2},  {2, 0},    {1, 2},    {2, 1},    {2, -1},
                                                    {-2, 2}, {kLow, 2}, {1, kLow}, {0, kLow}, {-8, -8}};
  for (const auto& [width, height] : kSizes) {
    Yv12ToRgb24(p, width, p, p, p, width, width, width, height);
    Yv12ToRgb565(p, width, p, p, p, width, width, width, height);
    Yv12ToYuv422(p, width, p, p, p, width, width, width, height);
    Rgb24ToYv12(p, p, p, p, width, height, width);
  }
  for (const auto& [width, height] : {std::pair{0, 2}, {2, 0}, {-1, 2}, {2, -1}, {kLow, kLow}})
    YuvToBottomUpBgr24(p, {p, 2, p, 1, p, 1}, width, height);
  Rgb24ToYv12(p, p, p, p, 64, kLow, 64);
  Rgb24ToYv12(nullptr, p, p, p, 64, 64, 64);
  Yv12ToRgb24(nullptr, 64, p, p, p, 64, 32, 64, 64);
  Yv12ToRgb24(p, 64, p, nullptr, p, 64, 32, 64, 64);
  YuvToBottomUpBgr24(p, {p, 64, p, 32, nullptr, 32}, 64, 64);
  EXPECT_EQ(9, one[0]);
}

TEST_P(Convert, ZeroAndNegativeStridesStayInside) {
  constexpr int32_t kWidth = 100;
  const GuardedBuffer row = RandomBytes(kWidth), chroma = RandomBytes(kWidth / 2);
  const GuardedBuffer line(kWidth * 3), picture(kWidth * 3 * 8);
  Yv12ToRgb24(line.data(), 0, row.data(), chroma.data(), chroma.data(), 0, 0, kWidth, -8);
  Yv12ToRgb24(picture.data() + kWidth * 3 * 7, -kWidth, row.data(), chroma.data(), chroma.data(), 0, 0,
              kWidth, 8);
  EXPECT_TRUE(std::equal(line.begin(), line.end(), picture.begin()));

  const GuardedBuffer y(kWidth * 8), u(kWidth / 2 * 4), v(kWidth / 2 * 4), one(kWidth);
  Rgb24ToYv12(y.data() + kWidth * 7, u.data() + kWidth / 2 * 3, v.data() + kWidth / 2 * 3, picture.data(),
              kWidth, 8, -kWidth);
  Rgb24ToYv12(one.data(), u.data(), v.data(), picture.data(), kWidth, 8, 0);
  EXPECT_TRUE(std::equal(one.begin(), one.end(), y.begin()));
}

INSTANTIATE_KERNEL_TEST(Convert);

}  // namespace
