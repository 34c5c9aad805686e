// SPDX-License-Identifier: MIT
#include "player/options.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

Options Parse(const std::vector<const char*>& words) {
  return ParseOptions(static_cast<int>(words.size()), words.data());
}

TEST(PlayerOptions, TakesFilesAndSettingsInAnyOrderAndTheLastOfEach) {
  const Options options =
      Parse({"--size",    "640x360",       "clip.y4m",     "--backend", "d3d9",      "--zoom",
             "3,250,750", "--mosaic-area", "0,0.25,0.5,1", "--hue",     "-180",      "--pause-at",
             "60",        "--seconds",     "2.5",          "hum.WAV",   "--seconds", "3",
             "--monitor", "b.y4m",         "--panes",      "9"});
  EXPECT_THAT(options.clips, testing::ElementsAre("clip.y4m", "b.y4m"));
  EXPECT_THAT(options.sounds, testing::ElementsAre("hum.WAV"));
  EXPECT_EQ(options.panes, 9);
  EXPECT_EQ(options.width, 640);
  EXPECT_EQ(options.height, 360);
  EXPECT_EQ(options.backend, Backend::kDirect3D);
  EXPECT_EQ(options.picture.zoom, 3u);
  EXPECT_EQ(options.picture.zoomX, 250u);
  EXPECT_EQ(options.picture.zoomY, 750u);
  EXPECT_EQ(options.picture.mosaicArea.left, 0.25f);
  EXPECT_EQ(options.picture.mosaicArea.right, 1.0f);
  EXPECT_EQ(options.picture.colours.hue, -180);
  EXPECT_EQ(options.holdAt, 60);
  EXPECT_EQ(options.seconds, 3);
  EXPECT_TRUE(options.monitor);
}

TEST(PlayerOptions, RefusesWhatMakesNoSense) {
  const std::vector<std::vector<const char*>> cases = {
      {"--nonsense"},      {"--size"},           {"--size", "641x360"},  {"--size", "640"},
      {"--size", "0x0"},   {"--hue", "181"},     {"--hue", "1x"},        {"--backend", "vga"},
      {"--zoom", "9"},     {"--zoom", "2,1"},    {"--zoom", "2,1,1001"}, {"--mosaic-area", "0,0,1"},
      {"--seconds", "-1"}, {"--seconds", "nan"}, {"--panes", "3"},       {"--mosaic-area", "0,0,1,1.5"},
  };
  for (const auto& words : cases)
    EXPECT_THROW(Parse(words), OptionError) << words.front();
  EXPECT_NO_THROW(Parse(std::vector<const char*>(16, "a.y4m")));
  EXPECT_THROW(Parse(std::vector<const char*>(17, "a.y4m")), OptionError);
}

}  // namespace
