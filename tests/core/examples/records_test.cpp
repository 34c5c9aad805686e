// SPDX-License-Identifier: MIT
#include "player/embed/records.h"

#include <gmock/gmock.h>

#include <sstream>

#include "media_error.h"

namespace {

constexpr char kColumns[] = "class,left,top,right,bottom,distance_dm\n";

/// A track of these lines under the columns of a file keyed by `key`.
RecordTrack Read(const char* key, const std::string& lines) {
  std::stringstream stream;
  stream << key << ',' << kColumns << lines;
  return RecordTrack(stream);
}

TEST(Records, HoldUntilTheNextForHalfASecondAndAreKeyedByFrameOrTime) {
  const RecordTrack frames = Read("frame", "10,2,1,2,3,4,155\r\n10,face,5,6,7,8,,1,2,3,4\n20\n");
  EXPECT_TRUE(frames.At(9, 0, 25).objects.empty());
  const Record record = frames.At(12, 0, 25);
  ASSERT_EQ(record.objects.size(), 1u);
  EXPECT_EQ(record.objects[0].classId, 2);
  EXPECT_EQ(record.objects[0].distance, 155);
  EXPECT_EQ(record.faces.size(), 1u);
  ASSERT_EQ(record.landmarks.size(), 2u);
  EXPECT_EQ(record.landmarks[1].y, 4);
  EXPECT_TRUE(frames.At(20, 0, 25).objects.empty()) << "a line with a number only: nothing found";
  const RecordTrack times = Read("time", "0.48,2,1,2,3,4,155\n");
  EXPECT_EQ(times.At(0, 0.46, 25).objects.size(), 1u) << "nearest to this frame";
  EXPECT_EQ(times.At(0, 0.9, 25).objects.size(), 1u);
  EXPECT_TRUE(times.At(0, 1.1, 25).objects.empty());
}

TEST(Records, AreWrittenAsTheyAreReadAndMirroredWithThePicture) {
  Record record;
  record.objects.push_back({{10, 20, 30.5f, 40}, 4, 77});
  record.faces.push_back({1, 2, 3, 4});
  record.landmarks.push_back({5, 6});
  std::stringstream stream;
  WriteRecordsHeader(stream);
  WriteRecord(stream, 3, record);
  const Record read = Mirrored(RecordTrack(stream).At(3, 0, 25), 1, 100, 50);
  ASSERT_TRUE(read.objects.size() == 1 && read.faces.size() == 1 && read.landmarks.size() == 1);
  EXPECT_EQ(read.objects[0].box.left, 69.5f);
  EXPECT_EQ(read.objects[0].box.right, 90);
  EXPECT_EQ(read.objects[0].box.top, 20);
  EXPECT_EQ(read.objects[0].distance, 77);
  EXPECT_EQ(read.landmarks[0].x, 95);
  const Record turned = Mirrored(record, 2, 100, 50);
  EXPECT_EQ(turned.faces[0].top, 46);
  EXPECT_EQ(turned.faces[0].bottom, 48);
  EXPECT_EQ(turned.landmarks[0].y, 44);
}

TEST(Records, RefuseABadFileAndNameTheLine) {
  std::string many;
  for (int i = 0; i < 13; ++i)
    many += "1,2,1,2,3,4,5\n";
  const std::string twoLines = "1,2,1,2,3,4,5\n2,8,1,2,3,4,5\n";
  const std::tuple<const char*, std::string, const char*> cases[] = {{"x", "", "first line"},
                                                                     {"frame", "1,2,1,2,3\n", "line 2"},
                                                                     {"frame", twoLines, "line 3"},
                                                                     {"frame", "1,2,1,2,nan,4,5\n", "nan"},
                                                                     {"frame", many, "more than 12"}};
  for (const auto& c : cases)
    EXPECT_THAT([&] { Read(std::get<0>(c), std::get<1>(c)); },
                testing::ThrowsMessage<MediaError>(testing::HasSubstr(std::get<2>(c))));
}

}  // namespace
