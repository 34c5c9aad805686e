// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
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

struct Options {
  std::vector<std::string> clips;   ///< Y4M; none: drawn scenes
  std::vector<std::string> sounds;  ///< WAV; none: a hum with the scenes, silence with clips
  bool mute = false;
  int volume = 60;
  Backend backend = Backend::kSdl;
  int panes = 0;     ///< places in the window; 0: as many as there are pictures
  int width = 1280;  ///< of the road scene
  int height = 720;
  double seconds = 0;  ///< 0: to the end of the clips; the scenes have none
  bool loop = false;
  std::optional<int64_t> holdAt;  ///< frame to stay on
  std::string screenshot;
  std::string snapshot;
  PictureSettings picture;  ///< of every pane at first, but the mosaic only of the first
  bool overlays = true;
  std::string channel;   ///< the first pane's name
  bool monitor = false;  ///< a pane with driver monitoring
  bool help = false;
};

constexpr int kMostPanes = 16;

/// Adds a file to the clips or, when its name ends in .wav, to the sounds. Throws OptionError.
void AddFile(std::string_view path, Options& options);

/// Throws OptionError.
Options ParseOptions(int count, const char* const* words);

extern const char kUsage[];
