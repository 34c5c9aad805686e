// SPDX-License-Identifier: MIT
#include "player/view.h"

#include <algorithm>

#include "player/library.h"

View::View(HWND main, Channel& channel, Backend backend, const OverlaySwitches& switches,
           DrawThread::Plan plan, std::function<void()> onSelect)
    : m_picture(channel.Size()),
      m_onSelect(std::move(onSelect)),
      m_overlays(channel.MakeOverlays(switches)),
      m_window(main, m_picture),
      m_pane(backend, m_window.Handle(), m_picture.width, m_picture.height),
      m_control(channel.picture, m_pane),
      m_thread(m_pane, *channel.source, *m_overlays, std::move(plan)) {
  m_window.SetEvents(this);
  // The pane makes its device ready while its window still has the picture's size.
  channel.source->Seek(0);
  m_pane.Draw(channel.source->Current(), channel.source->Frame());
}

View::~View() {
  m_window.SetEvents(nullptr);
}

PixelArea View::PlaceIn(const PixelArea& cell) {
  const PixelArea area = FitInto(cell, m_picture);
  m_window.Place(area);
  m_thread.SetVisible(true);
  return area;
}

void View::Hide() {
  m_thread.SetVisible(false);
  m_window.Hide();
}

void View::OnSize() {
  m_pane.Set([](void* handle) { nivral.DWAdjustedWnd(handle); });
}

void View::OnWheel(int steps, POINT at) {
  const PixelSize size = m_window.Size();
  const auto perMille = [](LONG value, LONG whole) { return std::clamp(1000L * value / whole, 0L, 1000L); };
  m_control.Zoom(steps, {perMille(at.x, size.width), perMille(at.y, size.height)});
}

void View::OnDrag(const RECT& area) {
  const PixelSize size = m_window.Size();
  const auto share = [](LONG value, LONG whole) {
    return std::clamp(static_cast<float>(value) / static_cast<float>(whole), 0.0f, 1.0f);
  };
  m_control.SetMosaicArea({share(area.top, size.height), share(area.left, size.width),
                           share(area.bottom, size.height), share(area.right, size.width)});
}
