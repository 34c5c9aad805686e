// SPDX-License-Identifier: MIT
// The player as a whole: what it prints, returns and leaves on the screen.
#include <gmock/gmock.h>

#include <cmath>
#include <fstream>

#include "player/commands.h"
#include "player/windows/layout.h"
#include "player_process.h"
#include "road_scene.h"

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 360;
constexpr int kFrame = 30;
constexpr int kTimeBar = 44;  ///< under the panes

/// Graphics drivers differ in the range of luma they assume, by less than kDriverTolerance for the scene's colours.
Rgb ToRgb(const YuvColour& colour) {
  return ::ToRgb(colour.y, colour.u, colour.v, true);
}
constexpr int kDriverTolerance = 30;

/// The player's pane that lies over the middle of a cell of four.
HWND PaneIn(HWND main, int cell) {
  RECT client{};
  GetClientRect(main, &client);
  client.bottom -= kTimeBar;
  const PixelArea area = CellOf(cell, 4, {client.right, client.bottom});
  POINT middle{area.left + area.width / 2, area.top + area.height / 2};
  ClientToScreen(main, &middle);
  return WindowFromPoint(middle);
}

/// Where the bus of a road scene's frame has its lower left corner in a cell of four, or the one to the right
/// when it is mirrored.
POINT BusIn(int cell, int64_t frame, bool mirrored) {
  const PixelArea area = CellOf(cell, 4, {kWidth, kHeight});
  const PixelBox bus = RoadScene(kWidth, kHeight).Vehicles(frame)[2].box;
  const int x = bus.left * area.width / kWidth + 3;
  return {area.left + (mirrored ? area.width - x : x), area.top + bus.bottom * area.height / kHeight - 4};
}

TEST(Player, MenuKeysAndMouseChangeBackendPanesAndPictureWhileItRuns) {
  const std::string shot = FreshFile("menu.png");
  RunningPlayer player("--size 640x360 --pause-at 30 --no-sound --no-overlays --screenshot " + shot);
  HWND window = player.WaitForTitle("SDL2");
  ASSERT_TRUE(window) << player.Wait().output;
  SendMessageA(window, WM_COMMAND, kCommandDirect3D, 0);
  EXPECT_TRUE(player.WaitForTitle("Direct3D 9"));
  PostMessageA(window, WM_KEYDOWN, VK_F4, 0);
  EXPECT_TRUE(player.WaitForTitle("DirectDraw"));
  SendMessageA(window, WM_COMMAND, kCommandFourPanes, 0);
  SendMessageA(PaneIn(window, 2), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(9, 9));
  SendMessageA(PaneIn(window, 2), WM_LBUTTONUP, 0, MAKELPARAM(9, 9));
  PostMessageA(window, WM_KEYDOWN, 'M', 0);
  constexpr int64_t kFrameInThirdPane = kFrame + 120;
  const Rgb body = ToRgb(RoadScene(kWidth, kHeight).Vehicles(kFrame)[2].body);
  for (const POINT& bus : {BusIn(0, kFrame, false), BusIn(2, kFrameInThirdPane, true)})
    WaitForPixel(window, bus.x, bus.y, body, kDriverTolerance);
  PostMessageA(window, WM_KEYDOWN, VK_ESCAPE, 0);
  const PlayerRun run = player.Wait();
  EXPECT_EQ(run.exitCode, 0u) << run.output;

  const ScreenShot picture = TakePicture(shot);
  ASSERT_TRUE(picture.Width() == kWidth && picture.Height() == kHeight + kTimeBar);
  const auto isBus = [&](const POINT& at) { return Near(picture.At(at.x, at.y), body, kDriverTolerance); };
  EXPECT_TRUE(isBus(BusIn(0, kFrame, false)));
  EXPECT_TRUE(isBus(BusIn(2, kFrameInThirdPane, true)));
  EXPECT_FALSE(isBus(BusIn(2, kFrameInThirdPane, false)));
}

/// A clip whose frames are flat, brighter from one to the next.
std::string WriteSteps(const char* name, int frames, int firstLuma = 40, size_t cutOff = 0) {
  const std::string path = FreshFile(name);
  std::string clip = "YUV4MPEG2 W64 H48 F25:1 C420\n";
  for (int i = 0; i < frames; ++i)
    clip +=
        "FRAME\n" + std::string(64 * 48, static_cast<char>(firstLuma + 3 * i)) + std::string(64 * 24, '\x80');
  std::ofstream(path, std::ios::binary) << clip.substr(0, clip.size() - cutOff);
  return path;
}

TEST(Player, SeveralClipsFillThePanesInOrder) {
  const std::string shot = FreshFile("clips.png");
  const std::string bright = WriteSteps("bright.y4m", 1, 200), dark = WriteSteps("dark.y4m", 1, 64);
  const PlayerRun run =
      RunPlayerProgram("--no-overlays --seconds 1 --screenshot " + shot + " " + bright + " " + dark);
  EXPECT_EQ(run.exitCode, 0u);
  EXPECT_THAT(run.output, testing::ContainsRegex("frames \\d+, dropped \\d+, \\d+\\.\\d+ ms per frame\n"));
  const ScreenShot picture = TakePicture(shot);
  for (const std::string& path : {bright, dark})
    DeleteFileA(path.c_str());
  ASSERT_GT(picture.Width(), 0);
  const auto middleOf = [&](int index) {
    const PixelArea cell = CellOf(index, 2, {picture.Width(), picture.Height() - kTimeBar});
    return picture.At(cell.left + cell.width / 2, cell.top + cell.height / 2);
  };
  EXPECT_TRUE(Near(middleOf(0), ToRgb({200, 128, 128}), kDriverTolerance));
  EXPECT_TRUE(Near(middleOf(1), ToRgb({64, 128, 128}), kDriverTolerance));
}

/// The number of the frame of such a clip that a snapshot shows.
int StepIn(const std::string& snapshot) {
  const ScreenShot picture = TakePicture(snapshot);
  if (picture.Width() == 0) return -1;
  return static_cast<int>(std::lround((picture.At(32, 24).r / 1.164 + 16 - 40) / 3));
}

TEST(Player, SeeksAndStepsToTheVeryFrame) {
  const std::string clip = WriteSteps("steps.y4m", 50);
  const std::string shot = FreshFile("step.bmp");
  EXPECT_EQ(RunPlayerProgram("--pause-at 33 --seconds 1 --snapshot " + shot + " " + clip).exitCode, 0u);
  EXPECT_EQ(StepIn(shot), 33);
  RunningPlayer player("--pause-at 10 --snapshot " + shot + " " + clip);
  HWND window = player.WaitForTitle("paused");
  ASSERT_TRUE(window) << player.Wait().output;
  for (const Command command :
       {kCommandToEnd, kCommandPreviousFrame, kCommandPreviousFrame, kCommandNextFrame})
    SendMessageA(window, WM_COMMAND, command, 0);
  SendMessageA(window, WM_COMMAND, kCommandExit, 0);
  EXPECT_EQ(player.Wait().exitCode, 0u);
  EXPECT_EQ(StepIn(shot), 48);
  DeleteFileA(clip.c_str());
}

TEST(Player, PlaysACutOffClipAsFarAsItGoesAndStaysOnItsLastFrame) {
  const std::string clip = WriteSteps("cut.y4m", 20, 40, 100);
  const std::string shot = FreshFile("cut.bmp");
  PlayerRun run = RunPlayerProgram("--exit --snapshot " + shot + " " + clip);
  EXPECT_EQ(run.exitCode, 0u) << run.output;
  EXPECT_EQ(StepIn(shot), 18);
  RunningPlayer player("--pause-at 10 --snapshot " + shot + " " + clip);
  HWND window = player.WaitForTitle("paused");
  ASSERT_TRUE(window) << player.Wait().output;
  RECT client{};
  GetClientRect(window, &client);
  WaitForPixel(window, client.right / 2, client.bottom / 2, ToRgb({40 + 3 * 10, 128, 128}), kDriverTolerance);
  std::ofstream(clip, std::ios::binary | std::ios::trunc).close();  // as if its disk were gone
  SendMessageA(window, WM_COMMAND, kCommandToStart, 0);
  SendMessageA(window, WM_COMMAND, kCommandExit, 0);
  run = player.Wait();
  EXPECT_EQ(run.exitCode, 0u) << run.output;
  EXPECT_EQ(StepIn(shot), 10);
  DeleteFileA(clip.c_str());
}

TEST(Player, RefusesUnusableInputWithOneLineAndCodeTwo) {
  for (const auto& [name, content, message] :
       {std::tuple{"clip.mp4", "garbage", "damaged, cut off before its index, or not a recording"},
        {"clip.y4m", "YUV4MPEG2 W64 H48 F25:1\n", "no picture can be decoded"},
        {"missing.mp4", "", "No such file or directory"}}) {
    const std::string path = FreshFile(name);
    if (*content) std::ofstream(path, std::ios::binary) << content;
    const PlayerRun run = RunPlayerProgram(path);
    DeleteFileA(path.c_str());
    EXPECT_EQ(run.exitCode, 2u) << message;
    EXPECT_EQ(run.output, "nivral_player: error: " + path + ": " + message + "\n");
  }
  EXPECT_EQ(RunPlayerProgram("--zoom 99").exitCode, 2u);
  EXPECT_EQ(RunPlayerProgram("--help").exitCode, 0u);
}

}  // namespace
