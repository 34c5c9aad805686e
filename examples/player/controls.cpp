// SPDX-License-Identifier: MIT
#include "player/controls.h"

#include <algorithm>

#include "nivral/nivral.h"

Controls::Controls(const Options& options, Window& window, Pane& pane, DrawThread& thread, Sound* sound,
                   std::atomic<bool>& overlays)
    : m_settings(options),
      m_window(window),
      m_pane(pane),
      m_thread(thread),
      m_sound(sound),
      m_overlays(overlays) {
  ApplyMirror();
  ApplyColours();
  ApplyZoom();
  ApplyMosaic();
  m_window.SetEvents(this);
}

Controls::~Controls() {
  m_window.SetEvents(nullptr);
}

void Controls::ApplyMirror() {
  m_pane.Set([mode = m_settings.mirror](void* handle) { NIVRAL_DWSetMirrorMode(handle, mode); });
}

void Controls::ApplyColours() {
  m_pane.Set([c = m_settings.colours](void* handle) {
    NIVRAL_SetColorParams(handle, c.brightness, c.contrast, c.saturation, c.hue, 0);
  });
}

void Controls::ApplyZoom() {
  m_pane.Set([x = m_settings.zoomX, y = m_settings.zoomY, factor = m_settings.zoom](void* handle) {
    NIVRAL_DWSetZoom(handle, x, y, factor);
  });
}

void Controls::ApplyMosaic() {
  const MosaicArea area = m_settings.mosaicArea;
  m_pane.Set([area, level = m_settings.mosaicLevel](void* handle) {
    NIVRAL_DWSetMosaicLevel(handle, level.value_or(1));
    NIVRAL_DWSetMosaicAreaScale(handle, area.top, area.left, area.bottom, area.right);
    NIVRAL_DWSetMosaicFlag(handle, level.has_value());
  });
}

void Controls::OnSize() {
  m_pane.Set([](void* handle) { NIVRAL_DWAdjustedWnd(handle); });
}

void Controls::ToggleHold() {
  const bool hold = !m_thread.IsHeld();
  m_thread.Hold(hold);
  if (m_sound) m_sound->Pause(hold);
}

void Controls::ChangeColour(int ColourSettings::*value, int step, int low, int high) {
  int& current = m_settings.colours.*value;
  current = std::clamp(current + step, low, high);
  ApplyColours();
}

void Controls::ChangeMosaicLevel(int step) {
  constexpr int kStrongest = 4;
  const int level = static_cast<int>(m_settings.mosaicLevel.value_or(1));
  m_settings.mosaicLevel = static_cast<uint32_t>(std::clamp(level + step, 1, kStrongest));
  ApplyMosaic();
}

void Controls::ChangeVolume(int step) {
  if (m_sound) m_sound->SetVolume(m_sound->Volume() + step);
}

void Controls::OnKey(int virtualKey) {
  constexpr int kColourStep = 10;
  constexpr int kVolumeStep = 10;
  switch (virtualKey) {
    case VK_SPACE:
      return ToggleHold();
    case VK_ESCAPE:
      return OnClose();
    case VK_PRIOR:
      return ChangeVolume(kVolumeStep);
    case VK_NEXT:
      return ChangeVolume(-kVolumeStep);
    case VK_OEM_PLUS:
    case VK_ADD:
      return ChangeMosaicLevel(1);
    case VK_OEM_MINUS:
    case VK_SUBTRACT:
      return ChangeMosaicLevel(-1);
    case 'Q':
      return ChangeColour(&ColourSettings::brightness, kColourStep, -127, 127);
    case 'A':
      return ChangeColour(&ColourSettings::brightness, -kColourStep, -127, 127);
    case 'W':
      return ChangeColour(&ColourSettings::contrast, kColourStep, -100, 100);
    case 'S':
      return ChangeColour(&ColourSettings::contrast, -kColourStep, -100, 100);
    case 'E':
      return ChangeColour(&ColourSettings::saturation, kColourStep, -100, 100);
    case 'D':
      return ChangeColour(&ColourSettings::saturation, -kColourStep, -100, 100);
    case 'R':
      return ChangeColour(&ColourSettings::hue, kColourStep, -180, 180);
    case 'F':
      return ChangeColour(&ColourSettings::hue, -kColourStep, -180, 180);
    case '0':
      m_settings.colours = {};
      return ApplyColours();
    case 'M':
      m_settings.mirror = (m_settings.mirror + 1) % 3;
      return ApplyMirror();
    case 'O':
      m_overlays = !m_overlays;
      return;
    case 'X':
      m_settings.mosaicLevel = m_settings.mosaicLevel ? std::nullopt : std::optional<uint32_t>(1);
      return ApplyMosaic();
    case 'N':
      return m_thread.RequestSnapshot("nivral_snapshot.bmp");
    default:
      return;
  }
}

POINT Controls::PerMille(POINT at) const {
  const SIZE size = m_window.ClientSize();
  const auto share = [](LONG value, LONG whole) {
    return std::clamp(1000L * value / std::max(whole, 1L), 0L, 1000L);
  };
  return {share(at.x, size.cx), share(at.y, size.cy)};
}

void Controls::OnWheel(int steps, POINT at) {
  constexpr int kGreatestZoom = 8;
  const POINT point = PerMille(at);
  m_settings.zoom =
      static_cast<uint32_t>(std::clamp(static_cast<int>(m_settings.zoom) + steps, 1, kGreatestZoom));
  m_settings.zoomX = static_cast<uint32_t>(point.x);
  m_settings.zoomY = static_cast<uint32_t>(point.y);
  ApplyZoom();
}

void Controls::OnDrag(const RECT& area) {
  const SIZE size = m_window.ClientSize();
  const auto share = [](LONG value, LONG whole) {
    return std::clamp(static_cast<float>(value) / static_cast<float>(std::max(whole, 1L)), 0.0f, 1.0f);
  };
  m_settings.mosaicArea = {share(area.top, size.cy), share(area.left, size.cx), share(area.bottom, size.cy),
                           share(area.right, size.cx)};
  if (!m_settings.mosaicLevel) m_settings.mosaicLevel = 1;
  ApplyMosaic();
}
