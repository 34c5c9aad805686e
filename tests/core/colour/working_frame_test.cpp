// SPDX-License-Identifier: MIT
#include "display/working_frame.h"

#include <cstring>
#include <limits>

#include "core/colour/reference.h"
#include "support/kernel_forms.h"

/// Read by the address sanitiser: the tests ask for more memory than there is, and get none.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}

namespace {

using reference::Settings;

struct Layout {
  uint32_t height;
  int32_t strideY, strideU, strideV;
};

/// A client's frame whose planes end where they must.
struct ClientFrame {
  FrameView View() const {
    return {y.data(), layout.strideY, u.data(), layout.strideU, v.data(), layout.strideV};
  }
  Layout layout;
  GuardedBuffer y, u, v;
};

struct Planes {
  std::vector<uint8_t> y, u, v;
};

void Mirror(std::vector<uint8_t>& plane, size_t rows, size_t width, uint32_t mode) {
  const std::vector<uint8_t> in = plane;
  for (size_t row = 0; row < rows && (row + 1) * width <= in.size(); ++row) {
    // A plane with fewer rows of this width than the frame has turns within the rows that it has.
    const size_t present = std::min(rows, width ? in.size() / width : 0);
    const size_t from = mode == 2 ? present - 1 - row : row;
    for (size_t x = 0; x < width; ++x)
      plane[row * width + x] = in[from * width + (width - 1 - x)];
  }
}

/// The definition, step by step: copy, adjust, mirror.
Planes Expected(const ClientFrame& f, uint32_t mode, const Settings& s, bool adjust) {
  Planes p{{f.y.begin(), f.y.end()}, {f.u.begin(), f.u.end()}, {f.v.begin(), f.v.end()}};
  if (adjust) {
    for (uint8_t& y : p.y)
      y = reference::AdjustLuma(y, s);
    const size_t count = static_cast<size_t>(f.layout.strideU) * f.layout.height / 2;
    for (size_t i = 0; i < std::min({count, p.u.size(), p.v.size()}); ++i)
      reference::AdjustChroma(p.u[i], p.v[i], s);
  }
  if (mode == 1 || mode == 2) {
    const auto chromaWidth = static_cast<size_t>(f.layout.strideV);
    Mirror(p.y, f.layout.height, static_cast<size_t>(f.layout.strideY), mode);
    Mirror(p.u, f.layout.height / 2, chromaWidth, mode);
    Mirror(p.v, f.layout.height / 2, chromaWidth, mode);
  }
  return p;
}

void ExpectPlanes(const Planes& want, const FrameView& got) {
  const auto same = [](const std::vector<uint8_t>& bytes, const uint8_t* plane) {
    return bytes.empty() || std::memcmp(bytes.data(), plane, bytes.size()) == 0;
  };
  ASSERT_TRUE(same(want.y, got.y)) << "Y";
  ASSERT_TRUE(same(want.u, got.u)) << "U";
  ASSERT_TRUE(same(want.v, got.v)) << "V";
}

bool IsActive(const Settings& s) {
  return IsAdjustActive({s.brightness, s.contrast, s.saturation, s.hue});
}

FrameView Prepare(WorkingFrame& working, const ClientFrame& f, uint32_t mode, const Settings& s) {
  const Layout& l = f.layout;
  const int32_t width = std::min({l.strideY, 2 * l.strideU + 1, 2 * l.strideV + 1});
  return working.Prepare(f.View(), static_cast<uint32_t>(l.height > 1 ? width : l.strideY), l.height, mode,
                         {s.brightness, s.contrast, s.saturation, s.hue});
}

class Working : public KernelTest {
 protected:
  ClientFrame MakeFrame(const Layout& l) {
    const auto bytes = [](uint32_t rows, int32_t stride) {
      return size_t{rows} * static_cast<size_t>(stride);
    };
    return {l, RandomBytes(bytes(l.height, l.strideY)), RandomBytes(bytes(l.height / 2, l.strideU)),
            RandomBytes(bytes(l.height / 2, l.strideV))};
  }

  /// Now and then a setting is 0 or at an end.
  int32_t Setting(int32_t limit) {
    const int32_t kind = Random(0, 9);
    if (kind < 3) return 0;
    if (kind == 3) return limit;
    return kind == 4 ? -limit : Random(-limit, limit);
  }
  Settings RandomSettings() { return {Setting(127), Setting(100), Setting(100), Setting(180)}; }

  void Check(const ClientFrame& f, uint32_t mode, const Settings& s) {
    const Planes before{{f.y.begin(), f.y.end()}, {f.u.begin(), f.u.end()}, {f.v.begin(), f.v.end()}};
    ASSERT_NO_FATAL_FAILURE(ExpectPlanes(Expected(f, mode, s, IsActive(s)), Prepare(m_working, f, mode, s)));
    ASSERT_NO_FATAL_FAILURE(ExpectPlanes(before, f.View())) << "the client's frame was written";
  }

  WorkingFrame m_working;
};

TEST_P(Working, EveryPairOfSamplesUnderManySettings) {
  const ClientFrame f = MakeFrame({512, 256, 256, 256});
  for (size_t i = 0; i < 65536; ++i) {
    f.u[i] = static_cast<uint8_t>(i / 256);
    f.v[i] = static_cast<uint8_t>(i);
  }
  for (int32_t round = 0; round < 120; ++round) {
    const Settings s = RandomSettings();
    ASSERT_NO_FATAL_FAILURE(Check(f, static_cast<uint32_t>(round % 4), s))
        << s.brightness << ", " << s.contrast << ", " << s.saturation << ", " << s.hue;
  }
}

TEST_P(Working, EverySampleUnderAllKindsOfSettings) {
  const ClientFrame f = MakeFrame({2, 256, 256, 256});
  for (size_t i = 0; i < 256; ++i)
    f.y[i] = f.u[i] = f.v[i] = static_cast<uint8_t>(i);
  for (int32_t contrast = -100; contrast <= 100; contrast += 5)
    for (int32_t value = -127; value <= 127; ++value)
      ASSERT_NO_FATAL_FAILURE(Check(f, 3, {value, contrast, std::clamp(value, -100, 100), 0}))
          << contrast << ", " << value;
}

TEST_P(Working, AllWidthsAndStridesMirroredAndAdjusted) {
  for (int32_t width = 0; width < 300; ++width) {
    const Layout like{static_cast<uint32_t>(Random(0, 7)), width, width / 2, width / 2};
    const Layout any{static_cast<uint32_t>(Random(0, 9)), Random(2, 90), Random(1, 70), Random(1, 70)};
    for (const Layout& layout : {like, any}) {
      const ClientFrame f = MakeFrame(layout);
      for (uint32_t mode = 0; mode < 4; ++mode)
        ASSERT_NO_FATAL_FAILURE(Check(f, mode, RandomSettings()))
            << layout.height << " rows, strides " << layout.strideY << ", " << layout.strideU << ", "
            << layout.strideV;
    }
  }
}

INSTANTIATE_KERNEL_TEST(Working);

TEST(WorkingFrame, OneValueOutOfRangeSwitchesOff) {
  EXPECT_FALSE(IsAdjustActive({}));
  for (const ColourValues& c : {ColourValues{127, 0, 0, 0}, {-127, 100, 100, 180}, {0, -100, -100, -180}})
    EXPECT_TRUE(IsAdjustActive(c));
  constexpr ColourValues kOneOut[] = {{128, 5, 5, 5}, {-128, 5, 5, 5}, {5, 101, 5, 5}, {5, -101, 5, 5},
                                      {5, 5, 101, 5}, {5, 5, -101, 5}, {5, 5, 5, 181}, {5, 5, 5, -181}};
  for (const ColourValues& c : kOneOut)
    EXPECT_FALSE(IsAdjustActive(c));
  uint8_t y[] = {10, 20};
  WorkingFrame working;
  const FrameView copy = working.Prepare({y, 2, nullptr, 0, nullptr, 0}, 2, 1, 1, {200, 0, 0, 0});
  EXPECT_EQ(20, copy.y[0]);
  EXPECT_EQ(10, copy.y[1]);
}

TEST(WorkingFrame, WhatNoMemoryIsThereForStaysTheClients) {
  uint8_t y[4] = {}, u[2] = {}, v[2] = {};
  WorkingFrame working;
  // More than any machine has: the sizes do not wrap into something small.
  constexpr int32_t kHuge = std::numeric_limits<int32_t>::max();
  constexpr uint32_t kTall = std::numeric_limits<uint32_t>::max();
  const FrameView shown = working.Prepare({y, kHuge, u, kHuge, v, kHuge}, 2, kTall, 1, {10, 10, 10, 10});
  EXPECT_TRUE(shown.y == y && shown.u == u && shown.v == v);
  // A single row has no chroma.
  const FrameView row = working.Prepare({y, 4, u, 2, v, 2}, 4, 1, 1, {});
  EXPECT_NE(y, row.y);
  EXPECT_EQ(u, row.u);
}

}  // namespace
