// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_surface.h"

#include <gtest/gtest.h>

#include "support/kernel_forms.h"
#include "surface_reference.h"

namespace {

struct Shape {
  int32_t width;
  int32_t height;
  int32_t pitch;
  int32_t padding;
};

// Odd sizes, pitches whose half is not whole, wider than one chunk of the zoomed copy, no chroma at all.
constexpr Shape kShapes[] = {{64, 48, 64, 0},    {64, 48, 80, 16}, {33, 17, 36, 3},   {7, 9, 9, 0},
                             {4200, 6, 4200, 8}, {1, 1, 4, 0},     {352, 31, 352, 32}};

TEST(SurfaceCopy, PutsVBeforeU) {
  TestFrame frame = FlatFrame(4, 4, 1, 2, 3);
  TestSurface surface(4, 4, 4);
  CopyPlain(surface.view, frame.View());
  EXPECT_EQ(surface.bytes, std::vector<uint8_t>({1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1,  //
                                                 3, 3, 3, 3, 2, 2, 2, 2}));
}

void CheckZoomAtEveryFactorAndPlace() {
  std::mt19937 random(3);
  for (const Shape& s : kShapes) {
    TestFrame frame = RandomFrame(s.width, s.height, random, s.padding);
    for (int32_t factor = 1; factor <= kMaxZoom; ++factor) {
      const int32_t furthest = 1000 - 1000 / factor;
      for (const auto& [x, y] :
           {std::pair{0, 0}, std::pair{furthest, furthest}, std::pair{furthest / 3, 77}}) {
        const ZoomState zoom = factor == 1 ? ZoomState{} : ZoomState{x, y, factor};
        TestSurface surface(s.width, s.height, s.pitch);
        factor == 1 ? CopyPlain(surface.view, frame.View()) : CopyZoomed(surface.view, frame.View(), zoom);
        EXPECT_EQ(surface, ReferenceZoom(frame, s.pitch, zoom))
            << s.width << "x" << s.height << " zoom " << factor << " at " << x << "," << y;
      }
    }
  }
}

TEST(SurfaceCopy, EnlargesTheZoomWindowAtEveryFactorAndPlace) {
  for (const ColourKernels* kernels : RunnableKernels()) {
    SCOPED_TRACE(kernels->name);
    const UseKernels use(*kernels);
    CheckZoomAtEveryFactorAndPlace();
  }
}

TEST(SurfaceCopy, RepeatsRowsOnlyInTheMosaicArea) {
  std::mt19937 random(4);
  for (const Shape& s : kShapes) {
    TestFrame frame = RandomFrame(s.width, s.height, random, s.padding);
    const int32_t w = s.width;
    const int32_t h = s.height;
    for (const PixelRect& rect :
         {PixelRect{w / 4, h / 4, w * 3 / 4, h * 3 / 4}, PixelRect{0, 0, w, h}, PixelRect{3, 1, 4, h},
          PixelRect{0, 0, 0, 0}, PixelRect{w, 1, w / 2, h}, PixelRect{-50, -9, INT32_MAX, INT32_MAX},
          PixelRect{INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN}}) {
      for (uint32_t level : {0u, 1u, 2u, 5u, 1u << 30}) {
        const MosaicArea area{rect, level};
        TestSurface surface(w, h, s.pitch);
        CopyWithMosaicArea(surface.view, frame.View(), area);
        EXPECT_EQ(surface, ReferenceArea(frame, s.pitch, area)) << w << "x" << h << " level " << level;
      }
    }
  }
}

TEST(FrameStrides, TellALayoutFromTheLastFrames) {
  EXPECT_FALSE(StridesChanged({}, {64, 32, 32})) << "the first frame";
  EXPECT_FALSE(StridesChanged({64, 32, 32}, {64, 32, 32}));
  EXPECT_TRUE(StridesChanged({64, 32, 32}, {80, 32, 32}));
  EXPECT_TRUE(StridesChanged({64, 32, 32}, {-64, 32, 32})) << "the luma stride's sign is not asked for";
  EXPECT_TRUE(StridesChanged({64, 32, 32}, {64, 40, 32}));
  EXPECT_TRUE(StridesChanged({64, 32, 32}, {64, 32, 40}));
  EXPECT_FALSE(StridesChanged({64, 32, 32}, {80, 0, 40}));
  EXPECT_FALSE(StridesChanged({64, 32, 32}, {80, 40, -40}));
  EXPECT_FALSE(StridesChanged({-64, 32, 32}, {64, 32, 32})) << "after a bottom-up frame";
}

}  // namespace
