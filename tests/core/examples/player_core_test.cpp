// SPDX-License-Identifier: MIT
// The portable parts of the player: its command line, cells, clock and files of records.
#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <vector>

#include "media_error.h"
#include "player/embed/records.h"
#include "player/media/play_clock.h"
#include "player/options.h"
#include "player/windows/layout.h"

namespace {

using Words = std::vector<std::string>;

TEST(PlayerOptions, TakesFilesAndSettingsInAnyOrderAndTheLastOfEach) {
  std::istringstream line(
      "--size 640x360 clip.mp4 --backend d3d9 --zoom=3,250,750 --mosaic-area 0,0.25,0.5,1 "
      "--hue -180 --pause-at 60 --seconds 2.5 hum.WAV --seconds=3 --monitor b.y4m --panes 9 "
      "--no-overlays");
  const Options o = ParseOptions(Words(std::istream_iterator<std::string>(line), {}));
  EXPECT_THAT(o.files, testing::ElementsAre("clip.mp4", "hum.WAV", "b.y4m"));
  EXPECT_TRUE(o.panes == 9 && o.width == 640 && o.height == 360 && o.backend == Backend::kDirect3D);
  EXPECT_TRUE(o.picture.zoom == 3 && o.picture.zoomX == 250 && o.picture.zoomY == 750);
  EXPECT_TRUE(o.picture.mosaicArea.left == 0.25f && o.picture.mosaicArea.right == 1.0f);
  EXPECT_TRUE(o.picture.colours.hue == -180 && o.holdAt == 60 && o.seconds == 3);
  EXPECT_TRUE(o.monitor && !o.overlays && o.help.empty());
  EXPECT_THAT(ParseOptions({"/?"}).help, testing::HasSubstr("--backend"));
}

TEST(PlayerOptions, RefusesWhatMakesNoSenseAndNamesOptionAndRange) {
  const std::vector<std::pair<Words, std::string>> cases = {
      {{"--nonsense"}, "--nonsense"},
      {{"--size"}, "--size"},
      {{"--size", "641x360"}, "--size: wants even"},
      {{"--size", "0x0"}, "--size: '0' is not a number from 2 to 16384"},
      {{"--hue", "181"}, "--hue: Value 181 not in range -180 to 180"},
      {{"--zoom", "9"}, "--zoom: '9' is not a number from 1 to 8"},
      {{"--zoom", "2,1"}, "--zoom: wants"},
      {{"--mosaic-area", "0,0,1,1.5"}, "--mosaic-area: '1.5'"},
      {{"--seconds", "nan"}, "--seconds"},
  };
  for (const auto& c : cases)
    EXPECT_THAT([&] { ParseOptions(c.first); },
                testing::ThrowsMessage<OptionError>(testing::HasSubstr(c.second)));
}

TEST(PlayerLayout, CellsFillTheWindowWithoutOverlap) {
  const PixelSize window{1277, 719};
  for (const auto& [count, places] : {std::pair{1, 1}, {2, 2}, {3, 4}, {4, 4}, {5, 6}, {9, 9}, {16, 16}}) {
    std::vector<int> covered(1277 * 719);
    for (int i = 0; i < count; ++i) {
      const PixelArea cell = CellOf(i, count, window);
      ASSERT_TRUE(cell.left >= 0 && cell.left + cell.width <= window.width) << count;
      for (int at = 0; at < cell.width * cell.height; ++at)
        ++covered.at(
            static_cast<size_t>((cell.top + at / cell.width) * window.width + cell.left + at % cell.width));
    }
    EXPECT_EQ(*std::max_element(covered.begin(), covered.end()), 1) << count;
    const auto pixels = static_cast<double>(std::count(covered.begin(), covered.end(), 1));
    EXPECT_NEAR(pixels / static_cast<double>(covered.size()), count / double(places), 0.06) << count;
  }
  EXPECT_EQ(CellOf(0, 1, window).width, window.width);
}

TEST(PlayerLayout, PicturesKeepTheirProportionsInTheMiddle) {
  const PixelArea wide = FitInto({10, 20, 640, 480}, {1280, 720});
  EXPECT_TRUE(wide.left == 10 && wide.top == 80 && wide.width == 640 && wide.height == 360);
  const PixelArea high = FitInto({0, 0, 640, 360}, {300, 600});
  EXPECT_TRUE(high.left == 230 && high.width == 180 && high.height == 360);
  EXPECT_EQ(FitInto({0, 0, 0, 0}, {16384, 2}).height, 1) << "a minimised window";
}

TEST(PlayClock, RunsAtItsSpeedStaysWhereItIsToldAndFollowsTheSound) {
  PlayClock clock;
  PlayClock::TimePoint now;
  const auto pass = [&](int ms) { return clock.Read(now += std::chrono::milliseconds(ms)).position; };
  EXPECT_EQ(pass(500), 0);
  clock.JumpTo(10);
  EXPECT_EQ(clock.Read(now).jump, 1u);
  EXPECT_EQ(pass(500), 10);
  clock.Run(now);
  EXPECT_NEAR(pass(500), 10.5, 1e-9);
  clock.SetSpeed(4, now);
  EXPECT_NEAR(pass(500), 12.5, 1e-9);
  clock.Stop(now);
  clock.Follow(50, now);
  EXPECT_NEAR(pass(500), 12.5, 1e-9) << "a sound that ends late moves nothing";
  clock.SetSpeed(1, now);
  clock.Run(now);
  clock.Follow(12.45, now);
  EXPECT_NEAR(pass(0), 12.45, 1e-9) << "at first at once";
  clock.Follow(12.55, now);
  EXPECT_NEAR(pass(0), 12.55, 1e-9) << "a jump at once, too";
  clock.Follow(12.56, now);
  EXPECT_NEAR(pass(0), 12.551, 1e-9) << "small differences little by little";
  for (int i = 1; i <= 40; ++i)
    clock.Follow(12.56 + i * 0.1 - (i % 8 == 5 ? 0 : 0.05), now += std::chrono::milliseconds(100));
  EXPECT_NEAR(pass(0), 16.56, 2e-3) << "what is told late moves nothing";
}

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
