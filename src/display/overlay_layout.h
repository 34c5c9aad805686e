// SPDX-License-Identifier: MIT
// What is painted for a record, and what the backends do differently with it.
#pragma once

#include "display/overlay_list.h"
#include "display/records.h"

namespace libnivral {

/// What a text takes before there are letters: so much for its characters, and a margin.
struct TextWidth {
  int64_t numerator = 0;
  int64_t denominator = 1;
  int64_t unit = 1;  ///< the quotient counts whole ones of it
  int64_t margin = 0;

  constexpr int64_t Of(int64_t characters) const {
    return characters * numerator / denominator * unit + margin;
  }
};

/// A label at a place that it gets from its box. All in pixels.
struct LabelStyle {
  bool shown = false;
  TextWidth width{};
  int32_t height = 0;
  int32_t gap = 0;        ///< between the label and its box
  int32_t fillLeft = 0;   ///< its area's left side, seen from its place
  int32_t fillRight = 0;  ///< and the right one, seen from its place and width
  int32_t indent = 0;     ///< its letters' left side, seen from its place
  int32_t rise = 0;       ///< how far above its place they are
};

struct OverlayStyle {
  /// What is cut to whole pixels.
  enum class Rounding : uint8_t {
    CornerAndSize,  ///< a box's corner and its size
    Edges,          ///< a box's edges
    Result,         ///< what is drawn, after a box was grown and labels were placed by it
  };
  Rounding rounding = Rounding::Edges;

  /// Coordinates are mapped to the display, else the display has the video's size.
  bool mapped = false;

  /// What is left out when a box begins right of or below the display.
  enum class Beyond : uint8_t { Nothing, Distance, Box };
  Beyond leftOut = Beyond::Nothing;

  // Driver assistance.
  bool emptyResults = false;    ///< boxes without class and distance are shown too
  bool hairlines = false;       ///< outlines are a pixel wide, whatever the record says
  int32_t farSides = 0;         ///< how far inside its box an outline's right and bottom sides lie
  bool labelsOnLines = false;   ///< labels stand by the outermost and innermost outline, else by the box
  bool labelsOnScreen = false;  ///< labels that begin left of or above the display are moved onto it
  LabelStyle unknownLabel{};
  LabelStyle carLabel{};
  LabelStyle otherLabel{};
  LabelStyle distanceLabel{};
  /// How a distance is written, and in which form its characters are counted for its label's width.
  enum class Distance : uint8_t {
    Tenths,  ///< metres with one decimal
    Metres,  ///< whole metres, rounded up
    Number,  ///< tenths of a metre
  };
  Distance written = Distance::Tenths;
  Distance counted = Distance::Tenths;
  OverlayColour boxColour = kOverlayGreen;  ///< also of all labels but a person's
  OverlayColour personColour = kOverlayGreen;
  OverlayColour personLabelColour = kOverlayGreen;

  // Driver monitoring.
  int32_t landmarkStep = 1;     ///< one landmark of so many is shown
  int32_t bracketsPerSize = 1;  ///< nested brackets for each pixel of the point size
  int32_t bracketsOutside = 1;  ///< one part of them in so many lies outside the box
  int32_t bracketParts = 1;     ///< an arm takes one part of a side in so many
};

/// Label fonts: points of SDL's, and the height of Direct3D's in a frame.
constexpr int32_t kSdlLabelPoints = 12;
constexpr int32_t Direct3DLabelHeight(int32_t frameHeight) {
  return frameHeight / 40;
}

/// Boxes come without labels where there is no font for them.
OverlayStyle SdlStyle(bool withLabels);

/// For what is not burned into the frame.
inline OverlayStyle DirectDrawStyle() {
  return SdlStyle(false);
}

OverlayStyle Direct3DStyle(int32_t frameHeight);

/// Driver assistance only. Colours mean nothing to the planes.
OverlayStyle BurnInStyle();

/// Fills the list with what is to be painted for a record on a display that shows the whole video.
void LayOutRecord(OverlayList& list, RecordView record, const DisplayMap& map, const OverlayStyle& style);

}  // namespace libnivral
