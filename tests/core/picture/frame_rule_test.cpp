// SPDX-License-Identifier: MIT
// Which planes hold a frame, and that all who read frames agree on it and read the same samples, no others.
#include <gmock/gmock.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <span>

#include "backends/d3d9/d3d_surface.h"
#include "backends/ddraw/ddraw_slots.h"
#include "display/working_frame.h"
#include "picture/frame_padder.h"
#include "support/frames.h"
#include "support/guarded_buffer.h"

namespace {

using testing::ElementsAre;

struct Case {
  const char* what;
  int32_t width, height;
  int32_t strideY, strideU, strideV;
  bool holds;
  const char* planes = "YUV";
};

constexpr Case kCases[] = {
    {"tight", 6, 4, 6, 3, 3, true},
    {"padded, each plane its own way", 6, 4, 9, 5, 4, true},
    {"odd", 5, 3, 5, 2, 2, true},
    {"one pixel", 1, 1, 1, 0, 0, true, "Y"},
    {"one wide", 1, 5, 2, 0, 0, true, "Y"},
    {"one high", 6, 1, 6, -1, 7, true, "Y"},
    {"bottom-up", 6, 4, -6, -3, -3, true},
    {"bottom-up, odd and padded", 5, 3, -9, -4, -5, true},
    {"only the luma bottom-up", 6, 4, -6, 3, 3, true},
    {"only V bottom-up", 6, 4, 6, 3, -3, true},
    {"no luma", 6, 4, 6, 3, 3, false, "UV"},
    {"no U", 6, 4, 6, 3, 3, false, "YV"},
    {"no V", 6, 4, 6, 3, 3, false, "YU"},
    {"narrow luma", 6, 4, 5, 3, 3, false},
    {"narrow U", 6, 4, 6, 2, 3, false},
    {"narrow V", 6, 4, 6, 3, 2, false},
    {"narrow and bottom-up", 6, 4, -5, -3, -3, false},
    {"no step between luma rows", 6, 4, 0, 3, 3, false},
    {"no step between chroma rows", 6, 4, 6, 0, 0, false},
    {"no width", 0, 4, 6, 3, 3, false},
    {"no height", 6, 0, 6, 3, 3, false},
    {"sizes below nothing", -6, -4, 6, 3, 3, false},
};

/// A plane of random bytes in memory of its own, guarded.
struct Plane {
  Plane(int32_t height, int32_t stride, bool there)
      : rows(static_cast<size_t>(std::max(height, 0))),
        step(static_cast<size_t>(std::abs(stride))),
        bytes(rows * step) {
    for (uint8_t& byte : bytes)
      byte = static_cast<uint8_t>(std::rand());
    if (there) top = bytes.data() + (stride < 0 && rows > 0 ? (rows - 1) * step : 0);
  }
  size_t rows, step;
  GuardedBuffer bytes;
  uint8_t* top = nullptr;
};

struct Client {
  explicit Client(const Case& c)
      : y(c.height, c.strideY, std::strchr(c.planes, 'Y')),
        u(c.height / 2, c.strideU, std::strchr(c.planes, 'U')),
        v(c.height / 2, c.strideV, std::strchr(c.planes, 'V')),
        view{y.top, c.strideY, u.top, c.strideU, v.top, c.strideV} {}
  Plane y, u, v;
  FrameView view;
};

/// The samples of a picture from the top down: Y, U, V.
std::vector<uint8_t> Samples(const ConstFrameView& f, int32_t width, int32_t height) {
  std::vector<uint8_t> all;
  const auto add = [&all](const uint8_t* plane, int32_t stride, int32_t columns, int32_t rows) {
    for (int32_t row = 0; columns > 0 && row < rows; ++row)
      all.insert(all.end(), plane + ptrdiff_t{row} * stride, plane + ptrdiff_t{row} * stride + columns);
  };
  add(f.y, f.strideY, width, height);
  add(f.u, f.strideU, width / 2, height / 2);
  add(f.v, f.strideV, width / 2, height / 2);
  return all;
}

std::vector<uint8_t> OnSurface(const ConstFrameView& f, int32_t width, int32_t height) {
  const int32_t pitch = width + width % 2;
  std::vector<uint8_t> bytes(static_cast<size_t>(pitch * height) * 3 / 2);
  const Yv12Surface surface{bytes.data(), pitch, width, height};
  CopyPlain(surface, f);
  return Samples({surface.Luma().first, pitch, surface.U().first, pitch / 2, surface.V().first, pitch / 2},
                 width, height);
}

TEST(FrameRule, IsOneForAllWhoReadFrames) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.what);
    const Client client(c);
    const auto width = static_cast<uint32_t>(c.width), height = static_cast<uint32_t>(c.height);
    EXPECT_EQ(HoldsFrame(client.view, c.width, c.height), c.holds);
    FramePadder padder;
    const auto padded = padder.PadChroma(client.view, c.width, c.height);
    ASSERT_EQ(padded.has_value(), c.holds);
    ASSERT_EQ(padder.PadAll(client.view, c.width, c.height).has_value(), c.holds);
    WorkingFrame working;
    const FrameView copy = working.Prepare(client.view, width, height, 9, {});
    ASSERT_EQ(copy.y != client.view.y, c.holds);
    if (c.width < 1 || c.height < 1) continue;
    FrameSlots slots;
    ASSERT_TRUE(slots.Open(width, height));
    ASSERT_EQ(slots.Put(client.view, {}) == FrameSlots::PutResult::Stored, c.holds);
    if (!c.holds) continue;

    const std::vector<uint8_t> want = Samples(client.view, c.width, c.height);
    EXPECT_EQ(Samples(copy, c.width, c.height), want);
    EXPECT_EQ(Samples(slots.Take().Planes(), c.width, c.height), want);
    EXPECT_EQ(OnSurface(client.view, c.width, c.height), want);
    const auto again = padder.PadChroma(client.view, c.width, c.height);
    if (c.width > 1 && c.height > 1) {
      EXPECT_EQ(Samples(*again, c.width, c.height), want);
    }
    EXPECT_FALSE(again->IsBottomUp());
  }
  constexpr uint8_t kByte = 0;
  EXPECT_TRUE(HoldsFrame({&kByte, INT_MIN, nullptr, 0, nullptr, 0}, INT_MAX, 1)) << "the largest stride";
}

/// What a bottom-up frame is: rows in the other order, padding behind each.
Client TopDown(const Client& from, Case c) {
  c.strideY = -c.strideY, c.strideU = -c.strideU, c.strideV = -c.strideV;
  Client client(c);
  for (auto [to, in] : {std::pair{&client.y, &from.y}, {&client.u, &from.u}, {&client.v, &from.v}}) {
    for (size_t row = 0; row < to->rows; ++row)
      std::copy_n(in->bytes.data() + (to->rows - 1 - row) * to->step, to->step, to->top + row * to->step);
  }
  return client;
}

TEST(FrameRule, BottomUpFramesAreMirroredAndAdjustedLikeOthers) {
  for (const Case& c :
       {Case{"", 6, 4, -6, -3, -3, true}, {"", 67, 33, -80, -40, -40, true}, {"", 3, 4, -4, -2, -2, true}}) {
    const Client bottomUp(c);
    const Client topDown = TopDown(bottomUp, c);
    const auto width = static_cast<uint32_t>(c.width), height = static_cast<uint32_t>(c.height);
    for (uint32_t n = 0; n < 12; ++n) {
      const ColourValues colours[] = {{}, {10, 20, 0, 0}, {-5, 0, 30, 40}};
      WorkingFrame working, reference;
      const FrameView want = reference.Prepare(topDown.view, width, height, n % 4, colours[n / 4]);
      const FrameView got = working.Prepare(bottomUp.view, width, height, n % 4, colours[n / 4]);
      EXPECT_EQ(Samples(got, c.width, c.height), Samples(want, c.width, c.height)) << n;
      AdjustTables tables;
      tables.Update(colours[n / 4]);
      const FrameCopier copier(n % 4, IsAdjustActive(colours[n / 4]) ? &tables : nullptr);
      FrameSlots slots;
      ASSERT_TRUE(slots.Open(width, height));
      slots.Put(bottomUp.view, {}, &copier);
      EXPECT_EQ(Samples(slots.Take().Planes(), c.width, c.height), Samples(want, c.width, c.height)) << n;
    }
  }
}

TEST(FramePadder, RepeatsTheLastColumnAndRow) {
  TestFrame odd(5, 3, 6, 3);
  odd.y = {1, 2, 3, 4, 5, 0, 6, 7, 8, 9, 10, 0, 11, 12, 13, 14, 15, 0};
  odd.u = {50, 51, 0};
  odd.v = {60, 61, 0};
  FramePadder padder;
  auto padded = padder.PadChroma(odd.View(), 5, 3);
  ASSERT_TRUE(padded);
  EXPECT_EQ(padded->y, odd.y.data());
  ASSERT_EQ(padded->strideU, 3);
  EXPECT_THAT(std::span(padded->u, 6), ElementsAre(50, 51, 51, 50, 51, 51));
  EXPECT_THAT(std::span(padded->v, 6), ElementsAre(60, 61, 61, 60, 61, 61));
  padded = padder.PadAll(odd.View(), 5, 3);
  ASSERT_TRUE(padded);
  ASSERT_EQ(padded->strideY, 6);
  EXPECT_THAT(std::span(padded->y, 24), ElementsAre(1, 2, 3, 4, 5, 5, 6, 7, 8, 9, 10, 10, 11, 12, 13, 14, 15,
                                                    15, 11, 12, 13, 14, 15, 15));
  padded = padder.PadChroma(odd.View(), 5, 1);
  ASSERT_TRUE(padded);
  EXPECT_THAT(std::span(padded->u, 3), ElementsAre(128, 128, 128)) << "no chroma";
}

}  // namespace
