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

PictureControl::PictureControl(PictureSettings& settings, Pane& pane, int width)
    : m_settings(settings), m_pane(pane), m_width(width) {
  ApplyMirror();
  ApplyColours();
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

/// Where pictures are zoomed, a mosaic would hide nothing then.
void PictureControl::ApplyZoom() {
  m_pane.SetZoom(m_settings.zoomX, m_settings.zoomY, m_settings.mosaicLevel ? 1 : m_settings.zoom);
}

/// Direct3D shows whole rows of the picture, of which only one may be left. Elsewhere blocks must be a
/// quarter of what they hide, which may be as wide as the area.
uint32_t PictureControl::HidingLevel() const {
  constexpr uint32_t kOneRow = 5461;
  constexpr uint32_t kWeak[] = {5, 10, 20, 30, 50};  // stand for 1 to 5
  if (m_pane.Backend() == nivral::Backend::kDirect3D9) return kOneRow;
  const MosaicArea& area = m_settings.mosaicArea;
  const auto width =
      static_cast<uint32_t>(std::max(0.0f, area.right - area.left) * static_cast<float>(m_width));
  const uint32_t level = width / 12 + 1;
  return std::ranges::count(kWeak, level) == 0 ? level : level + 1;
}

uint32_t PictureControl::MosaicLevel() const {
  const uint32_t chosen = m_settings.mosaicLevel.value_or(kHidingMosaic);
  return chosen == kHidingMosaic ? HidingLevel() : chosen;
}

void PictureControl::ApplyMosaic() {
  ApplyZoom();
  m_pane.Set([area = m_settings.mosaicArea, level = MosaicLevel(),
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
  constexpr uint32_t kLevels[] = {1,  2,  3,  4,  6,  8, 12,
                                  16, 24, 32, 48, 64, 96};  // each coarser than the one before
  const uint32_t* const coarser = std::ranges::upper_bound(kLevels, MosaicLevel());
  const uint32_t* const same = std::ranges::lower_bound(kLevels, MosaicLevel());
  if (step > 0 ? coarser == std::end(kLevels) : same == std::begin(kLevels)) return;
  m_settings.mosaicLevel = step > 0 ? *coarser : same[-1];
  ApplyMosaic();
}

void PictureControl::SetWidth(int width) {
  m_width = width;
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
