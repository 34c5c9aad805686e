// SPDX-License-Identifier: MIT
#include "player/picture_control.h"

#include <algorithm>

#include "player/library.h"

namespace {

struct ColourStep {
  Command command;
  int ColourSettings::*value;
  int step;
  int limit;
};
constexpr ColourStep kColourSteps[] = {
    {kCommandBrighter, &ColourSettings::brightness, 10, 127},
    {kCommandDarker, &ColourSettings::brightness, -10, 127},
    {kCommandMoreContrast, &ColourSettings::contrast, 10, 100},
    {kCommandLessContrast, &ColourSettings::contrast, -10, 100},
    {kCommandMoreSaturation, &ColourSettings::saturation, 10, 100},
    {kCommandLessSaturation, &ColourSettings::saturation, -10, 100},
    {kCommandHueForward, &ColourSettings::hue, 10, 180},
    {kCommandHueBack, &ColourSettings::hue, -10, 180},
};

}  // namespace

PictureControl::PictureControl(PictureSettings& settings, Pane& pane) : m_settings(settings), m_pane(pane) {
  ApplyMirror();
  ApplyColours();
  ApplyZoom();
  ApplyMosaic();
}

void PictureControl::ApplyMirror() {
  m_pane.Set([mode = m_settings.mirror](void* handle) { nivral.DWSetMirrorMode(handle, mode); });
}

void PictureControl::ApplyColours() {
  m_pane.Set([c = m_settings.colours](void* handle) {
    nivral.SetColorParams(handle, c.brightness, c.contrast, c.saturation, c.hue, 0);
  });
}

void PictureControl::ApplyZoom() {
  m_pane.Set([x = m_settings.zoomX, y = m_settings.zoomY, factor = m_settings.zoom](void* handle) {
    nivral.DWSetZoom(handle, x, y, factor);
  });
}

void PictureControl::ApplyMosaic() {
  const MosaicArea area = m_settings.mosaicArea;
  m_pane.Set([area, level = m_settings.mosaicLevel](void* handle) {
    nivral.DWSetMosaicLevel(handle, level.value_or(1));
    nivral.DWSetMosaicAreaScale(handle, area.top, area.left, area.bottom, area.right);
    nivral.DWSetMosaicFlag(handle, level.has_value());
  });
}

bool PictureControl::Do(Command command) {
  constexpr POINT kMiddle{500, 500};
  switch (command) {
    case kCommandMirror:
      m_settings.mirror = (m_settings.mirror + 1) % 3;
      ApplyMirror();
      return true;
    case kCommandZoomIn:
      Zoom(1, kMiddle);
      return true;
    case kCommandZoomOut:
      Zoom(-1, kMiddle);
      return true;
    case kCommandNeutral:
      SetColours({});
      return true;
    case kCommandMosaic:
      m_settings.mosaicLevel = m_settings.mosaicLevel ? std::nullopt : std::optional<uint32_t>(1);
      ApplyMosaic();
      return true;
    case kCommandCoarserMosaic:
      ChangeMosaicLevel(1);
      return true;
    case kCommandFinerMosaic:
      ChangeMosaicLevel(-1);
      return true;
    default:
      return ChangeColour(command);
  }
}

bool PictureControl::ChangeColour(Command command) {
  for (const ColourStep& change : kColourSteps) {
    if (change.command != command) continue;
    int& value = m_settings.colours.*change.value;
    value = std::clamp(value + change.step, -change.limit, change.limit);
    ApplyColours();
    return true;
  }
  return false;
}

void PictureControl::ChangeMosaicLevel(int step) {
  constexpr int kStrongest = 4;
  const int level = static_cast<int>(m_settings.mosaicLevel.value_or(1));
  m_settings.mosaicLevel = static_cast<uint32_t>(std::clamp(level + step, 1, kStrongest));
  ApplyMosaic();
}

void PictureControl::Zoom(int step, POINT perMille) {
  constexpr int kGreatest = 8;
  m_settings.zoom = static_cast<uint32_t>(std::clamp(static_cast<int>(m_settings.zoom) + step, 1, kGreatest));
  m_settings.zoomX = static_cast<uint32_t>(perMille.x);
  m_settings.zoomY = static_cast<uint32_t>(perMille.y);
  ApplyZoom();
}

void PictureControl::SetMosaicArea(const MosaicArea& area) {
  m_settings.mosaicArea = area;
  if (!m_settings.mosaicLevel) m_settings.mosaicLevel = 1;
  ApplyMosaic();
}

void PictureControl::SetColours(const ColourSettings& colours) {
  m_settings.colours = colours;
  ApplyColours();
}
