// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/// Words on the command line that make no sense; the text is one line for the user.
struct OptionError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

enum class Backend : uint32_t { kSdl = 0, kDirect3D = 1, kDirectDraw = 2 };

struct ColourSettings {
  int brightness = 0;
  int contrast = 0;
  int saturation = 0;
  int hue = 0;
};

/// Fractions of the client area.
struct MosaicArea {
  float top = 0.28f;
  float left = 0.17f;
  float bottom = 0.46f;
  float right = 0.36f;
};

/// In place of a level: whatever hides a face or a number plate on the backend.
constexpr uint32_t kHidingMosaic = 0;

/// What the user sets per pane.
struct PictureSettings {
  uint32_t mirror = 0;
  ColourSettings colours;
  uint32_t zoom = 1;
  uint32_t zoomX = 500;  ///< per mille of the picture
  uint32_t zoomY = 500;
  std::optional<uint32_t> mosaicLevel;  ///< none: no mosaic
  MosaicArea mosaicArea;
};

/// All texts and paths are UTF-8.
struct Options {
  std::vector<std::string> files;  ///< clips and sounds; without a clip: drawn scenes
  std::string sound;               ///< plays instead of the clips' own
  bool mute = false;
  std::optional<int> volume;  ///< percent; none: as it was last time
  Backend backend = Backend::kSdl;
  int panes = 0;     ///< places in the window; 0: as many as there are pictures
  int width = 1280;  ///< of the road scene
  int height = 720;
  double seconds = 0;  ///< 0: until the user ends the player
  double speed = 1;
  bool repeat = false;
  bool exitAtEnd = false;
  std::optional<int64_t> holdAt;  ///< frame to stay on
  std::string screenshot;
  std::string snapshot;
  std::string records;  ///< of the first clip; otherwise the file beside each clip, with .csv after its name
  std::string writeRecords;  ///< where the drawn road's records go; nothing is shown then
  PictureSettings picture;   ///< of every pane at first, but the mosaic only of the first
  bool overlays = true;
  std::string channel;   ///< the first pane's name
  bool monitor = false;  ///< a pane with driver monitoring
  bool remember = true;  ///< settings of the last run, and this one's for the next
  std::string help;      ///< not empty: to be shown instead of anything else
};

constexpr size_t kMostPanes = 16;

/// Throws OptionError.
Options ParseOptions(std::vector<std::string> words);

extern const char kKeyList[];
