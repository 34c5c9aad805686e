// SPDX-License-Identifier: MIT
#include "display/even_chroma.h"

#include <gmock/gmock.h>

#include "support/frames.h"

namespace {

using testing::ElementsAre;

std::vector<uint8_t> Bytes(const uint8_t* plane, size_t count) {
  return {plane, plane + count};
}

TEST(EvenChroma, OddFramesRepeatTheirLastSamples) {
  TestFrame frame(5, 5, 5, 2);
  frame.u = {1, 2, 3, 4};
  frame.v = {5, 6, 7, 8};
  EvenChroma chroma;
  const auto complete = chroma.Complete(frame.View(), 5, 5);
  ASSERT_TRUE(complete);
  EXPECT_EQ(complete->strideU, 3);
  EXPECT_THAT(Bytes(complete->u, 9), ElementsAre(1, 2, 2, 3, 4, 4, 3, 4, 4));
  EXPECT_THAT(Bytes(complete->v, 9), ElementsAre(5, 6, 6, 7, 8, 8, 7, 8, 8));
}

TEST(EvenChroma, FramesWithoutChromaBecomeGrey) {
  TestFrame frame(3, 1);
  EvenChroma chroma;
  const auto complete = chroma.Complete(frame.View(), 3, 1);
  ASSERT_TRUE(complete);
  EXPECT_THAT(Bytes(complete->u, 2), ElementsAre(128, 128));
}

TEST(EvenChroma, RefusesFramesThatDoNotCoverTheVideo) {
  TestFrame frame = FlatFrame(8, 8, 0, 0, 0);
  EvenChroma chroma;
  EXPECT_FALSE(chroma.Complete(frame.View(), 9, 8));
  EXPECT_FALSE(chroma.Complete(frame.View(), 0, 8));
  FrameView view = frame.View();
  view.strideV = 3;
  EXPECT_FALSE(chroma.Complete(view, 8, 8));
  view = frame.View();
  view.strideY = -8;
  EXPECT_FALSE(chroma.Complete(view, 8, 8));
  view = frame.View();
  view.u = nullptr;
  EXPECT_FALSE(chroma.Complete(view, 8, 8));
}

}  // namespace
