// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

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

struct Options {
  std::string file;   ///< Y4M; empty: the road scene
  std::string sound;  ///< WAV; empty: own tone with the road scene, silence with a file
  bool mute = false;
  int volume = 60;
  Backend backend = Backend::kSdl;
  int width = 1280;  ///< of the road scene
  int height = 720;
  double seconds = 0;             ///< 0: to the end of the file; the road scene has none
  std::optional<int64_t> holdAt;  ///< frame to stay on
  std::string screenshot;
  std::string snapshot;
  uint32_t mirror = 0;
  ColourSettings colours;
  uint32_t zoom = 1;
  uint32_t zoomX = 500;  ///< per mille of the picture
  uint32_t zoomY = 500;
  std::optional<uint32_t> mosaicLevel;
  MosaicArea mosaicArea;
  bool overlays = true;
  std::string channel = "Camera 1";
  bool monitor = false;  ///< second pane: driver monitoring
  bool help = false;
};

/// Throws OptionError.
Options ParseOptions(int count, const char* const* words);

extern const char kUsage[];
