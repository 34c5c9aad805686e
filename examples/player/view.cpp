// SPDX-License-Identifier: MIT
#include "player/view.h"

#include <algorithm>
#include <cmath>

View::View(HWND main, Channel& channel, nivral::Backend backend, const OverlaySwitches& switches,
           const PlayClock& clock, ViewEvents& events, size_t index)
    : m_channel(channel),
      m_events(events),
      m_index(index),
      m_overlays(channel.MakeOverlays(switches)),
      m_window(main, {channel.first.width, channel.first.height}),
      m_pane(backend, m_window.Handle(), channel.first.width, channel.first.height),
      m_control(channel.picture, m_pane, channel.first.width),
      m_thread(m_pane, *channel.source, *m_overlays, clock) {
  m_window.SetEvents(this);
  // The pane makes its device ready while its window still has the picture's size.
  static_cast<void>(m_pane.Draw(channel.first));
}

View::~View() {
  m_window.SetEvents(nullptr);
}

/// As wide as pixels that are not square make it.
PixelSize View::PictureSize() const {
  const DrawThread::Place place = m_thread.Shown();
  const int width = place.width > 0 ? place.width : m_channel.first.width;
  const int height = place.width > 0 ? place.height : m_channel.first.height;
  return {std::max(1, static_cast<int>(std::lround(width * m_channel.source->PixelAspect()))), height};
}

PixelArea View::PlaceIn(const PixelArea& cell) {
  m_placed = PictureSize();
  const PixelArea area = FitInto(cell, m_placed);
  m_window.Place(area);
  m_thread.SetVisible(true);
  return area;
}

bool View::IsOutOfPlace() const {
  const PixelSize size = PictureSize();
  return m_placed.width > 0 && (size.width != m_placed.width || size.height != m_placed.height);
}

void View::Hide() {
  m_thread.SetVisible(false);
  m_window.Hide();
}

void View::OnSize() {
  m_pane.Set([](nivral::Display& display) { display.WindowResized(); });
  m_control.SetWidth(m_window.Size().width);
}

void View::OnWheel(int steps, POINT at) {
  const PixelSize size = m_window.Size();
  const auto perMille = [](LONG value, LONG whole) { return std::clamp(1000L * value / whole, 0L, 1000L); };
  m_control.Zoom(steps, {perMille(at.x, size.width), perMille(at.y, size.height)});
  m_thread.Refresh();
}

void View::OnDrag(const RECT& area) {
  const PixelSize size = m_window.Size();
  const auto share = [](LONG value, LONG whole) {
    return std::clamp(static_cast<float>(value) / static_cast<float>(whole), 0.0f, 1.0f);
  };
  m_control.SetMosaicArea({share(area.top, size.height), share(area.left, size.width),
                           share(area.bottom, size.height), share(area.right, size.width)});
  m_thread.Refresh();
}
