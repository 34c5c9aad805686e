// SPDX-License-Identifier: MIT
#include "display/overlay_layout.h"

namespace libnivral {

OverlayStyle SdlStyle(bool withLabels) {
  constexpr int32_t kSize = kSdlLabelPoints;
  const LabelStyle label{.shown = withLabels,
                         .width = {.numerator = kSize, .denominator = 2},
                         .height = kSize,
                         .fillRight = 1,
                         .indent = 1};
  OverlayStyle style{.rounding = OverlayStyle::Rounding::CornerAndSize,
                     .mapped = true,
                     .farSides = 1,
                     .labelsOnLines = true,
                     .unknownLabel = label,
                     .carLabel = label,
                     .otherLabel = label,
                     .distanceLabel = {.shown = withLabels,
                                       .width = {.numerator = 3 * kSize, .denominator = 5},
                                       .height = kSize,
                                       .gap = 1,
                                       .fillLeft = -1,
                                       .fillRight = -1},
                     .personColour = kOverlayOrange,
                     .personLabelColour = kOverlayOrange,
                     .landmarkStep = 2,
                     .bracketsPerSize = 2,
                     .bracketParts = 8};
  style.unknownLabel.width.margin = 10;
  return style;
}

OverlayStyle Direct3DStyle(int32_t frameHeight) {
  const int32_t font = Direct3DLabelHeight(frameHeight);
  const LabelStyle label{.shown = true,
                         .width = {.numerator = font, .denominator = 2, .margin = 10},
                         .height = font,
                         .gap = 1,
                         .indent = 1};
  OverlayStyle style{
      .rounding = OverlayStyle::Rounding::Result,
      .leftOut = OverlayStyle::Beyond::Box,
      .labelsOnScreen = true,
      .unknownLabel = label,
      .carLabel = label,
      .otherLabel = label,
      .distanceLabel = {.shown = true,
                        .width = {.numerator = 7, .denominator = 10, .unit = font, .margin = 8},
                        .height = font,
                        .gap = 2,
                        .fillRight = 1,
                        .indent = 1},
      .written = OverlayStyle::Distance::Metres,
      .counted = OverlayStyle::Distance::Metres,
      .personColour = kOverlayOrange,
      .personLabelColour = kOverlayAmber,
      .bracketsOutside = 2,
      .bracketParts = 5};
  style.carLabel.width.margin = 0;
  style.carLabel.height = font * 2 / 3;
  style.carLabel.rise = 5;
  return style;
}

OverlayStyle BurnInStyle() {
  const LabelStyle label{.shown = true, .width = {.numerator = 6}, .height = 10, .gap = 1, .fillRight = 1};
  OverlayStyle style{.leftOut = OverlayStyle::Beyond::Distance,
                     .emptyResults = true,
                     .hairlines = true,
                     .labelsOnScreen = true,
                     .carLabel = label,
                     .otherLabel = label,
                     .distanceLabel = label,
                     .counted = OverlayStyle::Distance::Number};
  style.distanceLabel.gap = 2;
  return style;
}

}  // namespace libnivral
