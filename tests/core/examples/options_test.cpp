// SPDX-License-Identifier: MIT
#include "player/options.h"

#include <gmock/gmock.h>

#include <iterator>
#include <sstream>
#include <vector>

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

}  // namespace
