// SPDX-License-Identifier: MIT
#include "player/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>

const char kKeyList[] =
    R"(Space: pause
Right, Left: next, previous frame
Ctrl+Right, Ctrl+Left: 5 seconds on, back
Home, End: start, end
] [ Backspace: faster, slower, usual speed
P: repeat
PgUp, PgDn: volume
1 4 9 6: one, four, nine, sixteen panes
Tab: next pane
F11 or double click: full screen
Esc: leave it, end
M: mirror
Up, Down: zoom (Direct3D 9)
X: mosaic
+ and -: coarser, finer mosaic
T: texts
B: boxes
L: landmarks
C: colour sliders
Q A W S E D R F: the four colour values
0: neutral colours
F2 F3 F4: SDL2, Direct3D 9, DirectDraw
N: snapshot
Ctrl+O: open
F1: this list

A click chooses a pane, dragging sets its
mosaic, the wheel zooms. Click or drag the
time line to seek. Drop files to open them.
)";

namespace {

template <class Number>
Number ParseNumber(const std::string& option, const std::string& text, Number low, Number high) {
  Number value{};
  if (!CLI::detail::lexical_cast(text, value) || !(value >= low && value <= high))
    throw CLI::ValidationError(option, "'" + text + "' is not a number from " + CLI::detail::to_string(low) +
                                           " to " + CLI::detail::to_string(high));
  return value;
}

void ParseSize(const std::string& text, Options& options) {
  const auto parts = CLI::detail::split(text, 'x');
  if (parts.size() != 2) throw CLI::ValidationError("--size", "wants WIDTHxHEIGHT");
  options.width = ParseNumber("--size", parts[0], 2, 16384);
  options.height = ParseNumber("--size", parts[1], 2, 16384);
  if (options.width % 2 != 0 || options.height % 2 != 0)
    throw CLI::ValidationError("--size", "wants even numbers");
}

void ParseZoom(const std::string& text, Options& options) {
  const auto parts = CLI::detail::split(text, ',');
  if (parts.size() != 1 && parts.size() != 3)
    throw CLI::ValidationError("--zoom", "wants FACTOR or FACTOR,X,Y");
  options.picture.zoom = ParseNumber("--zoom", parts[0], 1u, 8u);
  if (parts.size() == 1) return;
  options.picture.zoomX = ParseNumber("--zoom", parts[1], 0u, 1000u);
  options.picture.zoomY = ParseNumber("--zoom", parts[2], 0u, 1000u);
}

void ParseMosaicArea(const std::string& text, Options& options) {
  const auto parts = CLI::detail::split(text, ',');
  if (parts.size() != 4) throw CLI::ValidationError("--mosaic-area", "wants TOP,LEFT,BOTTOM,RIGHT");
  MosaicArea& area = options.picture.mosaicArea;
  float* const edges[] = {&area.top, &area.left, &area.bottom, &area.right};
  for (size_t i = 0; i < parts.size(); ++i)
    *edges[i] = ParseNumber("--mosaic-area", parts[i], 0.0f, 1.0f);
}

/// Ranges let "nan" through.
std::string CheckDigits(const std::string& text) {
  return text.find_first_not_of("0123456789.eE+-") == text.npos ? "" : "'" + text + "' is not a number";
}

void AddPlayback(CLI::App& app, Options& o) {
  app.add_option("file", o.files, "Clips and sounds; without a clip, drawn scenes are shown");
  app.add_option("--sound", o.sound, "A file whose sound plays instead of the clips' own");
  app.add_flag("--no-sound", o.mute, "Silence");
  app.add_option("--volume", o.volume, "Percent")->check(CLI::Range(0, 100));
  app.add_option("--speed", o.speed, "Times the usual one; sound only at 1")
      ->check(CLI::Range(0.25, 8.0))
      ->check(CheckDigits);
  app.add_flag("--repeat,--loop", o.repeat, "Start again at the end");
  app.add_flag("--exit", o.exitAtEnd, "End at the end of the clips");
  app.add_option("--seconds", o.seconds, "End after so many")
      ->check(CLI::Range(0.1, 1e6))
      ->check(CheckDigits);
  app.add_flag_callback(
      "--pause", [&o] { o.holdAt = 0; }, "Stay on the first frame");
  app.add_option("--pause-at", o.holdAt, "Stay on the frame with this number")
      ->check(CLI::Range(0, 10'000'000));
  app.add_flag_callback(
      "--no-settings", [&o] { o.remember = false; },
      "Neither use what the last run remembered nor remember anything");
}

void AddPicture(CLI::App& app, Options& o) {
  const std::map<std::string, Backend> backends{
      {"sdl", Backend::kSdl}, {"d3d9", Backend::kDirect3D}, {"ddraw", Backend::kDirectDraw}};
  app.add_option("--backend", o.backend, "How pictures are drawn: sdl, d3d9 or ddraw")
      ->transform(CLI::CheckedTransformer(backends).description(""));
  app.add_option("--panes", o.panes, "Places in the window")->check(CLI::IsMember({1, 4, 9, 16}));
  app.add_option("--mirror", o.picture.mirror, "0 none, 1 horizontal flip, 2 half turn")
      ->check(CLI::Range(0, 2));
  app.add_option("--brightness", o.picture.colours.brightness)->check(CLI::Range(-127, 127));
  app.add_option("--contrast", o.picture.colours.contrast)->check(CLI::Range(-100, 100));
  app.add_option("--saturation", o.picture.colours.saturation)->check(CLI::Range(-100, 100));
  app.add_option("--hue", o.picture.colours.hue)->check(CLI::Range(-180, 180));
  app.add_option_function<std::string>(
      "--zoom", [&o](const std::string& text) { ParseZoom(text, o); },
      "FACTOR[,X,Y]: 1 to 8 at a point in per mille of the picture (d3d9)");
  app.add_option_function<std::string>(
      "--size", [&o](const std::string& text) { ParseSize(text, o); }, "WxH of the drawn road (1280x720)");
}

void AddOverlays(CLI::App& app, Options& o) {
  app.add_option("--channel", o.channel, "The first pane's name");
  app.add_flag("!--no-overlays", o.overlays, "No texts, boxes and landmarks at first");
  app.add_flag("--monitor", o.monitor, "A further pane with driver monitoring");
  app.add_option("--records", o.records,
                 "Boxes and landmarks of the first clip; otherwise those in CLIP.csv beside each clip");
  app.add_option("--write-records", o.writeRecords, "Write the drawn road's records for 10 seconds, and end");
  app.add_option("--mosaic", o.picture.mosaicLevel, "Privacy mosaic of the first pane: its level")
      ->check(CLI::Range(1, 5461));
  app.add_option_function<std::string>(
      "--mosaic-area", [&o](const std::string& text) { ParseMosaicArea(text, o); },
      "TOP,LEFT,BOTTOM,RIGHT as fractions of the pane");
  app.add_option("--screenshot", o.screenshot, "PNG file for the window's contents at the end");
  app.add_option("--snapshot", o.snapshot, "BMP file for the first pane's last frame, without overlays");
}

}  // namespace

Options ParseOptions(std::vector<std::string> words) {
  Options options;
  CLI::App app("Plays recordings through libnivral.", "nivral_player");
  app.set_help_flag("-h,--help", "This list (also /?)");
  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  AddPlayback(app, options);
  AddPicture(app, options);
  AddOverlays(app, options);
  app.get_option("file")->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  app.footer("\nKeys:\n" + std::string(kKeyList));
  std::replace(words.begin(), words.end(), std::string("/?"), std::string("--help"));
  std::reverse(words.begin(), words.end());  // as the library wants them
  try {
    app.parse(words);
  } catch (const CLI::CallForHelp&) {
    options.help = app.help();
  } catch (const CLI::ParseError& error) {
    throw OptionError(error.what());
  }
  return options;
}
