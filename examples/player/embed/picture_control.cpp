// SPDX-License-Identifier: MIT
#include "player/embed/picture_control.h"

#include <algorithm>
#include <iterator>

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
  m_pane.SetMirror(static_cast<nivral::Mirror>(m_settings.mirror));
}

void PictureControl::ApplyColours() {
  m_pane.Set([c = m_settings.colours](nivral::Display& display) {
    display.SetColor({c.brightness, c.contrast, c.saturation, c.hue});
  });
}

void PictureControl::ApplyZoom() {
  m_pane.SetZoom(m_settings.zoomX, m_settings.zoomY, m_settings.zoom);
}

void PictureControl::ApplyMosaic() {
  // Direct3D shows whole rows of the picture, of which only one may be left.
  constexpr uint32_t kHidingBlocks = 8;
  constexpr uint32_t kHidingRows = 5461;
  const MosaicArea area = m_settings.mosaicArea;
  const uint32_t hiding = m_pane.Backend() == nivral::Backend::kDirect3D9 ? kHidingRows : kHidingBlocks;
  const uint32_t chosen = m_settings.mosaicLevel.value_or(kHidingMosaic);
  m_pane.Set([area, level = chosen == kHidingMosaic ? hiding : chosen,
              isOn = m_settings.mosaicLevel.has_value()](nivral::Display& display) {
    display.SetMosaicLevel(level);
    display.SetMosaicArea(area.top, area.left, area.bottom, area.right);
    display.ShowMosaic(isOn);
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
      m_settings.mosaicLevel = m_settings.mosaicLevel ? std::nullopt : std::optional<uint32_t>(kHidingMosaic);
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
  constexpr uint32_t kLevels[] = {1, 2, 3, 4, 6, 8, 12, 16};  // each coarser than the one before
  constexpr int kLast = static_cast<int>(std::size(kLevels)) - 1;
  const uint32_t chosen = m_settings.mosaicLevel.value_or(kHidingMosaic);
  const uint32_t level = chosen == kHidingMosaic ? 8 : chosen;
  const auto at = static_cast<int>(std::lower_bound(std::begin(kLevels), std::end(kLevels), level) - kLevels);
  m_settings.mosaicLevel = kLevels[std::clamp(at + step, 0, kLast)];
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
  if (!m_settings.mosaicLevel) m_settings.mosaicLevel = kHidingMosaic;
  ApplyMosaic();
}

void PictureControl::SetColours(const ColourSettings& colours) {
  m_settings.colours = colours;
  ApplyColours();
}
