// SPDX-License-Identifier: MIT
#include "y4m.h"

#include <gmock/gmock.h>

#include <sstream>

#include "media_error.h"

namespace {

struct ErrorCase {
  const char* text;
  const char* message;
};

TEST(Y4mHeader, TakesWhatConvertersWrite) {
  const Y4mFormat plain = ParseY4mHeader("YUV4MPEG2 W960 H540 F25:1 Ip A1:1 C420mpeg2 XYSCSS=420MPEG2");
  EXPECT_EQ(plain.width, 960);
  EXPECT_EQ(plain.height, 540);
  EXPECT_EQ(plain.framesPerSecond, 25);
  EXPECT_NEAR(ParseY4mHeader("YUV4MPEG2 H2 W2  F30000:1001 C420jpeg").framesPerSecond, 29.97, 0.001);
  EXPECT_EQ(ParseY4mHeader("YUV4MPEG2 W3 H5 F0:0").framesPerSecond, 25) << "an unknown rate";
}

TEST(Y4mHeader, SaysWhatIsWrong) {
  constexpr ErrorCase kCases[] = {
      {"RIFF....AVI", "not a YUV4MPEG2 file"},
      {"YUV4MPEG2 W960 F25:1", "the header names no picture size"},
      {"YUV4MPEG2 W960 H540 C444", "colour format 444 is not 8-bit 4:2:0"},
      {"YUV4MPEG2 W960 H540 C420p10", "colour format 420p10 is not 8-bit 4:2:0"},
      {"YUV4MPEG2 W0 H540", "unusable picture size '0'"},
      {"YUV4MPEG2 W-4 H540", "unusable picture size '-4'"},
      {"YUV4MPEG2 W99999999999 H540", "unusable picture size '99999999999'"},
      {"YUV4MPEG2 W20000 H540", "unusable picture size '20000'"},
      {"YUV4MPEG2 W9x H540", "unusable picture size '9x'"},
      {"YUV4MPEG2 W H540", "unusable picture size ''"},
  };
  for (const ErrorCase& c : kCases) {
    try {
      ParseY4mHeader(c.text);
      ADD_FAILURE() << c.text;
    } catch (const MediaError& error) {
      EXPECT_STREQ(error.what(), c.message) << c.text;
    }
  }
}

/// Two 3 x 3 frames, whose planes are 9, 4 and 4 bytes.
const std::string kClip =
    "YUV4MPEG2 W3 H3 F10:1 C420\nFRAME\nabcdefghiUUUUVVVVFRAME Xnote\njklmnopqruuuuvvvv";

TEST(Y4mReader, ReadsFramesToTheEndAndAgain) {
  std::istringstream stream(kClip);
  Y4mReader reader(stream);
  Picture picture(reader.Format().width, reader.Format().height);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(reader.CountFrames(), 2);
    ASSERT_TRUE(reader.Read(picture));
    EXPECT_EQ(std::string(picture.y.begin(), picture.y.end()), "abcdefghi");
    ASSERT_TRUE(reader.Read(picture));
    EXPECT_EQ(std::string(picture.y.begin(), picture.y.end()), "jklmnopqr");
    EXPECT_EQ(std::string(picture.u.begin(), picture.u.end()), "uuuu");
    EXPECT_EQ(std::string(picture.v.begin(), picture.v.end()), "vvvv");
    EXPECT_FALSE(reader.Read(picture));
    reader.Rewind();
  }
}

TEST(Y4mReader, EveryTruncationIsAnErrorExceptBetweenFrames) {
  const size_t headerEnd = kClip.find('\n') + 1;
  const size_t secondFrame = kClip.find("FRAME X");
  for (size_t length = 0; length < kClip.size(); ++length) {
    std::istringstream stream(kClip.substr(0, length));
    const auto readAll = [&] {
      Y4mReader reader(stream);
      Picture picture(3, 3);
      while (reader.Read(picture)) {
      }
    };
    std::istringstream again(stream.str());
    const auto count = [&] { return Y4mReader(again).CountFrames(); };
    if (length == headerEnd || length == secondFrame) {
      EXPECT_NO_THROW(readAll()) << length;
      EXPECT_EQ(count(), length == headerEnd ? 0 : 1);
    } else {
      EXPECT_THROW(readAll(), MediaError) << length;
      EXPECT_THROW(count(), MediaError) << length;
    }
  }
}

TEST(Y4mReader, RefusesGarbageBetweenFramesAndEndlessLines) {
  std::string damaged = kClip;
  damaged.replace(damaged.find("FRAME X"), 5, "FRAMD");
  std::istringstream stream(damaged);
  Y4mReader reader(stream);
  Picture picture(3, 3);
  ASSERT_TRUE(reader.Read(picture));
  EXPECT_THROW(reader.Read(picture), MediaError);
  std::istringstream endless("YUV4MPEG2 " + std::string(1 << 20, 'X'));
  EXPECT_THROW(Y4mReader{endless}, MediaError);
}

}  // namespace
