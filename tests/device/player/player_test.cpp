// SPDX-License-Identifier: MIT
// The player as a whole: what it prints, returns and leaves on the screen.
#include <gmock/gmock.h>

#include <cmath>
#include <fstream>
#include <iterator>

#include "player_process.h"
#include "png_picture.h"
#include "road_scene.h"

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 360;
constexpr int kFrame = 30;

/// BT.601, limited range. Graphics drivers differ in the range they assume, by less than kDriverTolerance
/// for the scene's colours.
Rgb ToRgb(const YuvColour& colour) {
  const double y = 1.164 * (colour.y - 16);
  const double u = colour.u - 128;
  const double v = colour.v - 128;
  const auto channel = [](double value) {
    return static_cast<int>(std::fmin(255, std::fmax(0, std::round(value))));
  };
  return {channel(y + 1.596 * v), channel(y - 0.392 * u - 0.813 * v), channel(y + 2.017 * u)};
}
constexpr int kDriverTolerance = 30;

std::string SceneArguments(const std::string& backend) {
  return "--backend " + backend + " --size 640x360 --pause-at 30 --seconds 2 --no-sound ";
}

class PlayerOnBackend : public testing::TestWithParam<std::string> {};

TEST_P(PlayerOnBackend, ShowsTheRoadSceneAndReports) {
  const std::string shot = FreshFile("shot.png");
  const PlayerRun run = RunPlayerProgram(SceneArguments(GetParam()) + "--no-overlays --screenshot " + shot);
  EXPECT_EQ(run.exitCode, 0u) << run.output;
  EXPECT_THAT(run.output, testing::ContainsRegex("frames \\d+, dropped \\d+, \\d+\\.\\d+ ms per frame\n"));

  const PngPicture picture(shot);
  DeleteFileA(shot.c_str());
  ASSERT_EQ(picture.Width(), kWidth);
  ASSERT_EQ(picture.Height(), kHeight);
  for (const SceneVehicle& vehicle : RoadScene(kWidth, kHeight).Vehicles(kFrame)) {
    const PixelBox& box = vehicle.box;
    const int row = box.bottom - (box.bottom - box.top) / 5;  // below windows and lights
    for (const int column : {box.left + 1, (box.left + box.right) / 2, box.right - 2})
      EXPECT_TRUE(Near(picture.At(column, row), ToRgb(vehicle.body), kDriverTolerance))
          << "class " << vehicle.classId << " at " << column << ", " << row << ": "
          << testing::PrintToString(picture.At(column, row));
    EXPECT_FALSE(Near(picture.At(box.left - 3, row), ToRgb(vehicle.body), kDriverTolerance));
    EXPECT_FALSE(Near(picture.At(box.right + 2, row), ToRgb(vehicle.body), kDriverTolerance));
  }
}

INSTANTIATE_TEST_SUITE_P(Backends, PlayerOnBackend, testing::Values("sdl", "d3d9", "ddraw"),
                         [](const auto& backend) { return backend.param; });

TEST(Player, WritesASnapshotOfTheFrame) {
  const std::string snapshot = FreshFile("shot.bmp");
  const PlayerRun run = RunPlayerProgram(SceneArguments("sdl") + "--snapshot " + snapshot);
  EXPECT_EQ(run.exitCode, 0u) << run.output;
  const PngPicture picture(snapshot);
  DeleteFileA(snapshot.c_str());
  ASSERT_EQ(picture.Width(), kWidth);
  ASSERT_EQ(picture.Height(), kHeight);
  const SceneVehicle bus = RoadScene(kWidth, kHeight).Vehicles(kFrame)[2];
  EXPECT_TRUE(Near(picture.At(bus.box.left + 1, bus.box.bottom - 2), ToRgb(bus.body), 4));
}

TEST(Player, RefusesUnusableInputWithOneLineAndCodeTwo) {
  struct Case {
    const char* content;
    const char* message;
  };
  constexpr Case kCases[] = {
      {"YUV4MPEG2 W64 H48 F25:1 C420\nFRAME\nabc", "the file ends inside a frame"},
      {"YUV4MPEG2 W64 H48 F25:1 C444\n", "colour format 444 is not 8-bit 4:2:0"},
      {"YUV4MPEG2 W64 H48 F25:1\n", "the clip has no frames"},
      {"garbage", "not a YUV4MPEG2 file"},
  };
  const std::string clip = FreshFile("clip.y4m");
  for (const Case& c : kCases) {
    std::ofstream(clip, std::ios::binary) << c.content;
    const PlayerRun run = RunPlayerProgram("--no-sound " + clip);
    EXPECT_EQ(run.exitCode, 2u) << c.content;
    EXPECT_THAT(run.output, testing::HasSubstr("nivral_player: error: " + clip + ": " + c.message + "\n"));
  }
  DeleteFileA(clip.c_str());
  EXPECT_EQ(RunPlayerProgram("--zoom 99").exitCode, 2u);
  EXPECT_EQ(RunPlayerProgram("missing.y4m").exitCode, 2u);
  const PlayerRun help = RunPlayerProgram("--help");
  EXPECT_EQ(help.exitCode, 0u);
  EXPECT_THAT(help.output, testing::HasSubstr("--backend"));
}

}  // namespace
