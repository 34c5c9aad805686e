// SPDX-License-Identifier: MIT
#include "player/options.h"

#include <charconv>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

const char kUsage[] =
    R"(nivral_player [options] [file.y4m]     shows a clip, or without a file a drawn road scene

  --backend sdl|d3d9|ddraw   how the picture is drawn (sdl)
  --seconds N                ends after N seconds (a clip: at its end; the scene: when closed)
  --size WxH                 picture size of the road scene (1280x720)
  --pause, --pause-at N      stays on the first frame, on frame N
  --screenshot FILE.png      the windows' contents as seen on the screen at the end
  --snapshot FILE.bmp        the last frame as the displayer writes it
  --sound FILE.wav           plays along; --no-sound; --volume 0..100 (60)
  --mirror 0|1|2             none, horizontal flip, half turn
  --brightness -127..127     --contrast, --saturation -100..100, --hue -180..180
  --zoom FACTOR[,X,Y]        1..8 at a point in per mille of the picture (d3d9)
  --mosaic LEVEL             privacy mosaic; --mosaic-area TOP,LEFT,BOTTOM,RIGHT as fractions
  --channel NAME             first line of text; --no-overlays
  --monitor                  second window with driver monitoring
  --help

keys: Space pause   M mirror   Q/A brightness   W/S contrast   E/D saturation   R/F hue   0 neutral colours
      X mosaic on/off   +/- mosaic level   O overlays   N snapshot   PgUp/PgDn volume   Esc end
mouse: wheel zooms at the pointer, dragging sets the mosaic area
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
  options.zoom = ParseNumber(parts[0], 1u, 8u);
  if (parts.size() == 1) return;
  options.zoomX = ParseNumber(parts[1], 0u, 1000u);
  options.zoomY = ParseNumber(parts[2], 0u, 1000u);
}

void ParseMosaicArea(std::string_view text, Options& options) {
  const auto parts = Split(text, ',');
  if (parts.size() != 4) throw OptionError("--mosaic-area wants TOP,LEFT,BOTTOM,RIGHT");
  const auto fraction = [](std::string_view part) { return ParseNumber(part, 0.0f, 1.0f); };
  options.mosaicArea = {fraction(parts[0]), fraction(parts[1]), fraction(parts[2]), fraction(parts[3])};
}

using Flag = std::function<void(Options&)>;
using Setting = std::function<void(Options&, std::string_view)>;

const std::map<std::string_view, Flag> kFlags = {
    {"--help", [](Options& o) { o.help = true; }},
    {"--pause", [](Options& o) { o.holdAt = 0; }},
    {"--no-sound", [](Options& o) { o.mute = true; }},
    {"--no-overlays", [](Options& o) { o.overlays = false; }},
    {"--monitor", [](Options& o) { o.monitor = true; }},
};

const std::map<std::string_view, Setting> kSettings = {
    {"--backend", [](Options& o, std::string_view v) { o.backend = ParseBackend(v); }},
    {"--seconds", [](Options& o, std::string_view v) { o.seconds = ParseNumber(v, 0.1, 1e6); }},
    {"--size", [](Options& o, std::string_view v) { ParseSize(v, o); }},
    {"--pause-at", [](Options& o, std::string_view v) { o.holdAt = ParseNumber<int64_t>(v, 0, 1'000'000); }},
    {"--screenshot", [](Options& o, std::string_view v) { o.screenshot = v; }},
    {"--snapshot", [](Options& o, std::string_view v) { o.snapshot = v; }},
    {"--sound", [](Options& o, std::string_view v) { o.sound = v; }},
    {"--volume", [](Options& o, std::string_view v) { o.volume = ParseNumber(v, 0, 100); }},
    {"--mirror", [](Options& o, std::string_view v) { o.mirror = ParseNumber(v, 0u, 2u); }},
    {"--brightness",
     [](Options& o, std::string_view v) { o.colours.brightness = ParseNumber(v, -127, 127); }},
    {"--contrast", [](Options& o, std::string_view v) { o.colours.contrast = ParseNumber(v, -100, 100); }},
    {"--saturation",
     [](Options& o, std::string_view v) { o.colours.saturation = ParseNumber(v, -100, 100); }},
    {"--hue", [](Options& o, std::string_view v) { o.colours.hue = ParseNumber(v, -180, 180); }},
    {"--zoom", [](Options& o, std::string_view v) { ParseZoom(v, o); }},
    {"--mosaic", [](Options& o, std::string_view v) { o.mosaicLevel = ParseNumber(v, 1u, 100u); }},
    {"--mosaic-area", [](Options& o, std::string_view v) { ParseMosaicArea(v, o); }},
    {"--channel", [](Options& o, std::string_view v) { o.channel = v; }},
};

}  // namespace

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
    } else if (!options.file.empty()) {
      throw OptionError("only one file can be shown");
    } else {
      options.file = word;
    }
  }
  return options;
}
