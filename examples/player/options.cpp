// SPDX-License-Identifier: MIT
#include "player/options.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

const char kUsage[] =
    R"(nivral_player [options] [file.y4m | file.wav]...   plays them; without a clip, drawn scenes

  --backend sdl|d3d9|ddraw   how the picture is drawn (sdl)
  --panes 1|4|9|16           places in the window (as many as there are pictures)
  --seconds N                ends after N seconds (clips: at the end of the longest; scenes: when closed)
  --loop                     clips start again at their end
  --size WxH                 picture size of the road scene (1280x720)
  --pause, --pause-at N      stays on the first frame, on frame N
  --screenshot FILE.png      the window's contents as seen on the screen at the end
  --snapshot FILE.bmp        the first pane's last frame as it came from its source
  --sound FILE.wav           plays along; --no-sound; --volume 0..100 (60)
  --mirror 0|1|2             none, horizontal flip, half turn
  --brightness -127..127     --contrast, --saturation -100..100, --hue -180..180
  --zoom FACTOR[,X,Y]        1..8 at a point in per mille of the picture (d3d9)
  --mosaic LEVEL             privacy mosaic, first pane; --mosaic-area TOP,LEFT,BOTTOM,RIGHT as fractions
  --channel NAME             the first pane's first line of text; --no-overlays
  --monitor                  a further pane with driver monitoring
  --help

keys: Space pause   Right step   Tab next pane   1 4 9 6 one, four, nine, sixteen panes   Esc end
      M mirror   Up/Down zoom   X mosaic on/off   +/- mosaic level   T texts   B boxes   L landmarks
      C colour sliders   Q/A brightness   W/S contrast   E/D saturation   R/F hue   0 neutral colours
      F2 SDL2   F3 Direct3D 9   F4 DirectDraw   N snapshot   PgUp/PgDn volume   Ctrl+O open
mouse: click chooses a pane, wheel zooms at the pointer, dragging sets the mosaic area
)";

namespace {

template <class Number>
Number ParseNumber(std::string_view text, Number low, Number high) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= low && value <= high))
    throw OptionError("'" + std::string(text) + "' is not a number in the range allowed");
  return value;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const size_t at = text.find(separator);
    parts.push_back(text.substr(0, at));
    if (at == text.npos) return parts;
    text.remove_prefix(at + 1);
  }
}

Backend ParseBackend(std::string_view name) {
  if (name == "sdl") return Backend::kSdl;
  if (name == "d3d9") return Backend::kDirect3D;
  if (name == "ddraw") return Backend::kDirectDraw;
  throw OptionError("no backend is called '" + std::string(name) + "'");
}

void ParseSize(std::string_view text, Options& options) {
  const auto parts = Split(text, 'x');
  if (parts.size() != 2) throw OptionError("--size wants WIDTHxHEIGHT");
  options.width = ParseNumber(parts[0], 2, 16384);
  options.height = ParseNumber(parts[1], 2, 16384);
  if (options.width % 2 != 0 || options.height % 2 != 0) throw OptionError("--size wants even numbers");
}

void ParseZoom(std::string_view text, Options& options) {
  const auto parts = Split(text, ',');
  if (parts.size() != 1 && parts.size() != 3) throw OptionError("--zoom wants FACTOR or FACTOR,X,Y");
  options.picture.zoom = ParseNumber(parts[0], 1u, 8u);
  if (parts.size() == 1) return;
  options.picture.zoomX = ParseNumber(parts[1], 0u, 1000u);
  options.picture.zoomY = ParseNumber(parts[2], 0u, 1000u);
}

void ParseMosaicArea(std::string_view text, Options& options) {
  const auto parts = Split(text, ',');
  if (parts.size() != 4) throw OptionError("--mosaic-area wants TOP,LEFT,BOTTOM,RIGHT");
  const auto fraction = [](std::string_view part) { return ParseNumber(part, 0.0f, 1.0f); };
  options.picture.mosaicArea = {fraction(parts[0]), fraction(parts[1]), fraction(parts[2]),
                                fraction(parts[3])};
}

int ParsePanes(std::string_view text) {
  const int panes = ParseNumber(text, 1, kMostPanes);
  if (panes != 1 && panes != 4 && panes != 9 && panes != 16) throw OptionError("--panes wants 1, 4, 9 or 16");
  return panes;
}

using Flag = std::function<void(Options&)>;
using Setting = std::function<void(Options&, std::string_view)>;

const std::map<std::string_view, Flag> kFlags = {
    {"--help", [](Options& o) { o.help = true; }},
    {"--pause", [](Options& o) { o.holdAt = 0; }},
    {"--no-sound", [](Options& o) { o.mute = true; }},
    {"--no-overlays", [](Options& o) { o.overlays = false; }},
    {"--monitor", [](Options& o) { o.monitor = true; }},
    {"--loop", [](Options& o) { o.loop = true; }},
};

const std::map<std::string_view, Setting> kSettings = {
    {"--backend", [](Options& o, std::string_view v) { o.backend = ParseBackend(v); }},
    {"--seconds", [](Options& o, std::string_view v) { o.seconds = ParseNumber(v, 0.1, 1e6); }},
    {"--size", [](Options& o, std::string_view v) { ParseSize(v, o); }},
    {"--pause-at", [](Options& o, std::string_view v) { o.holdAt = ParseNumber<int64_t>(v, 0, 1'000'000); }},
    {"--panes", [](Options& o, std::string_view v) { o.panes = ParsePanes(v); }},
    {"--screenshot", [](Options& o, std::string_view v) { o.screenshot = v; }},
    {"--snapshot", [](Options& o, std::string_view v) { o.snapshot = v; }},
    {"--sound", [](Options& o, std::string_view v) { o.sounds.emplace_back(v); }},
    {"--volume", [](Options& o, std::string_view v) { o.volume = ParseNumber(v, 0, 100); }},
    {"--mirror", [](Options& o, std::string_view v) { o.picture.mirror = ParseNumber(v, 0u, 2u); }},
    {"--brightness",
     [](Options& o, std::string_view v) { o.picture.colours.brightness = ParseNumber(v, -127, 127); }},
    {"--contrast",
     [](Options& o, std::string_view v) { o.picture.colours.contrast = ParseNumber(v, -100, 100); }},
    {"--saturation",
     [](Options& o, std::string_view v) { o.picture.colours.saturation = ParseNumber(v, -100, 100); }},
    {"--hue", [](Options& o, std::string_view v) { o.picture.colours.hue = ParseNumber(v, -180, 180); }},
    {"--zoom", [](Options& o, std::string_view v) { ParseZoom(v, o); }},
    {"--mosaic", [](Options& o, std::string_view v) { o.picture.mosaicLevel = ParseNumber(v, 1u, 5461u); }},
    {"--mosaic-area", [](Options& o, std::string_view v) { ParseMosaicArea(v, o); }},
    {"--channel", [](Options& o, std::string_view v) { o.channel = v; }},
};

}  // namespace

void AddFile(std::string_view path, Options& options) {
  constexpr std::string_view kWav = ".wav";
  const auto sameLetter = [](char a, char b) {
    return a == b || (a >= 'A' && a <= 'Z' && a + 'a' - 'A' == b);
  };
  const std::string_view ending = path.substr(path.size() - std::min(path.size(), kWav.size()));
  const bool isSound = std::equal(ending.begin(), ending.end(), kWav.begin(), kWav.end(), sameLetter);
  (isSound ? options.sounds : options.clips).emplace_back(path);
  if (options.clips.size() > kMostPanes) throw OptionError("at most 16 clips can be shown");
}

Options ParseOptions(int count, const char* const* words) {
  Options options;
  for (int i = 0; i < count; ++i) {
    const std::string_view word = words[i];
    if (const auto flag = kFlags.find(word); flag != kFlags.end()) {
      flag->second(options);
    } else if (const auto setting = kSettings.find(word); setting != kSettings.end()) {
      if (++i == count) throw OptionError(std::string(word) + " wants a value");
      setting->second(options, words[i]);
    } else if (word.starts_with("--")) {
      throw OptionError("unknown option " + std::string(word) + " (--help lists them)");
    } else {
      AddFile(word, options);
    }
  }
  return options;
}
