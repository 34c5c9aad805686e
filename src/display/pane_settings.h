// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "nivral/nivral.h"
#include "picture/pixel_rect.h"

namespace libnivral {

/// A callback and the client's context for it.
template <class Function>
struct Callback {
  Function function = nullptr;
  void* user = nullptr;
};

struct MosaicSettings {
  PixelRect rect;  ///< in client coordinates; Direct3D keeps thousandths of the frame here
  uint32_t flag = 0;
  uint32_t level = 0;
  /// Fractions of the client area that the rectangle was last computed from.
  float top = 0;
  float left = 0;
  float bottom = 0;
  float right = 0;
  bool fromFractions = false;  ///< the fractions were set after the rectangle

  bool HasFractions() const { return right > left && bottom > top; }
  /// A window without a client area, as a minimised one, leaves the rectangle as it was.
  void FitTo(int32_t clientWidth, int32_t clientHeight) {
    if (clientWidth < 1 && clientHeight < 1) return;
    fromFractions = true;
    rect = {ScaleEdge(clientWidth, left), ScaleEdge(clientHeight, top), ScaleEdge(clientWidth, right),
            ScaleEdge(clientHeight, bottom)};
  }
};

/// The plain settings of a pane. Setters change them at any time and on any thread; a frame works on one copy
/// of all, so that it never meets half a rectangle or a function with another one's context, and what is set
/// while it is drawn holds from the next frame on.
struct PaneSettings {
  PixelRect play;    ///< the part of the window to draw into, the whole when empty
  PixelRect client;  ///< the window's client area when last measured
  uint32_t mirrorMode = 0;
  uint32_t zoom[3]{};
  int32_t index = -1;
  uint32_t paused = 0;
  MosaicSettings mosaic;
  Callback<NivralDecodeCallback> decodeCB;
  Callback<NivralFlashWndCallback> flashWndCB;
  Callback<NivralDisplayCallback> displayCB;
  Callback<NivralFrameCallback> frameCB;
};

}  // namespace libnivral
