// SPDX-License-Identifier: MIT
#include "player/pane_grid.h"

#include <algorithm>

#include "media_error.h"

PaneGrid::PaneGrid(MainWindow& window, OverlaySwitches& switches, DrawThread::Plan plan,
                   std::function<void()> onSelect)
    : m_window(window), m_switches(switches), m_plan(std::move(plan)), m_onSelect(std::move(onSelect)) {
}

void PaneGrid::Open(std::deque<Channel> channels, Backend backend) {
  Close();
  m_channels = std::move(channels);
  m_cells = static_cast<int>(m_channels.size());
  m_selected = 0;
  SetBackend(backend);
}

void PaneGrid::SetBackend(Backend backend) {
  Close();
  m_backend = backend;
  m_session.emplace(backend);
  for (size_t i = 0; i < m_channels.size(); ++i)
    OpenView(i);
  Arrange();
}

void PaneGrid::Add(Channel channel) {
  m_channels.push_back(std::move(channel));
  OpenView(m_channels.size() - 1);
}

void PaneGrid::OpenView(size_t index) {
  DrawThread::Plan plan = m_plan;
  if (index > 0) plan.onRewind = nullptr;
  m_views.push_back(std::make_unique<View>(m_window.Handle(), m_channels[index], m_backend, m_switches,
                                           std::move(plan), [this, index] { Select(index); }));
  m_views.back()->Thread().Start();
}

void PaneGrid::Close() {
  for (const auto& view : m_views) {
    view->Thread().Stop();
    m_closed += view->Thread().Result();
  }
  m_views.clear();
  m_session.reset();
}

void PaneGrid::SetCells(int cells) {
  m_cells = cells;
  Arrange();
}

bool PaneGrid::IsVisible(size_t index) const {
  const auto cells = static_cast<size_t>(m_cells);
  return index / cells == m_selected / cells;
}

void PaneGrid::Arrange() {
  PixelArea mark{};
  for (size_t i = 0; i < m_views.size(); ++i) {
    if (!IsVisible(i)) {
      m_views[i]->Hide();
      continue;
    }
    const int cell = static_cast<int>(i) % m_cells;
    const PixelArea area = m_views[i]->PlaceIn(CellOf(cell, m_cells, m_window.Size()));
    if (i == m_selected && m_cells > 1) mark = area;
  }
  m_window.Mark(mark);
}

void PaneGrid::Raise() {
  for (size_t i = 0; i < m_views.size(); ++i)
    if (IsVisible(i)) m_views[i]->Raise();
}

void PaneGrid::Select(size_t index) {
  if (index == m_selected) return;
  m_selected = index;
  Arrange();
  m_onSelect();
}

void PaneGrid::Hold(bool hold) {
  m_plan.hold = hold;
  for (const auto& view : m_views)
    view->Thread().Hold(hold);
}

void PaneGrid::Step() {
  for (const auto& view : m_views)
    view->Thread().Step();
}

void PaneGrid::RefreshOverlays() {
  for (const auto& view : m_views)
    view->Thread().Refresh();
}

int PaneGrid::VisiblePanes() const {
  int visible = 0;
  for (size_t i = 0; i < m_views.size(); ++i)
    visible += IsVisible(i) ? 1 : 0;
  return visible;
}

bool PaneGrid::IsFinished() const {
  bool anyClip = false;
  bool allEnded = true;
  for (size_t i = 0; i < m_views.size(); ++i) {
    const DrawThread& thread = m_views[i]->Thread();
    if (thread.HasFailed()) return true;
    if (m_channels[i].kind != ChannelKind::kClip) continue;
    anyClip = true;
    allEnded = allEnded && thread.IsFinished();
  }
  return anyClip && allEnded;
}

void PaneGrid::Finish() {
  for (const auto& view : m_views)
    view->Thread().Stop();
  for (const auto& view : m_views)
    if (!view->Thread().Error().empty()) throw MediaError(view->Thread().Error());
}

Figures PaneGrid::Result() const {
  Figures figures = m_closed;
  for (const auto& view : m_views)
    figures += view->Thread().Result();
  return figures;
}
