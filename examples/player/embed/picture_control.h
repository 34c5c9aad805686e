// SPDX-License-Identifier: MIT
#pragma once

#include "player/commands.h"
#include "player/embed/pane.h"
#include "player/options.h"

/// Brings what the user sets for one picture to its pane. Window thread.
class PictureControl {
 public:
  /// Applies the settings at once. They outlive the control, which changes them.
  PictureControl(PictureSettings& settings, Pane& pane, int width);

  /// Of the pane's window, in client pixels: blocks do not grow with it.
  void SetWidth(int width);

  /// Whether the command was one for the picture.
  bool Do(Command command);

  /// Zooms in (1) or out (-1) at a point of the pane in per mille.
  void Zoom(int step, POINT perMille);
  void SetMosaicArea(const MosaicArea& area);
  void SetColours(const ColourSettings& colours);

 private:
  bool ChangeColour(Command command);
  void ChangeMosaicLevel(int step);
  void ApplyMirror();
  void ApplyColours();
  void ApplyZoom();
  void ApplyMosaic();
  uint32_t HidingLevel() const;
  uint32_t MosaicLevel() const;

  PictureSettings& m_settings;
  Pane& m_pane;
  int m_width;
};
