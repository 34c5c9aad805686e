// SPDX-License-Identifier: MIT
#include "player/pane_grid.h"

#include <algorithm>

PaneGrid::PaneGrid(MainWindow& window, OverlaySwitches& switches, const PlayClock& clock, ViewEvents& events)
    : m_window(window), m_switches(switches), m_clock(clock), m_events(events) {
}

void PaneGrid::Open(std::deque<Channel> channels, nivral::Backend backend) {
  Close();
  m_channels = std::move(channels);
  m_cells = static_cast<int>(m_channels.size());
  m_selected = 0;
  SetBackend(backend);
}

void PaneGrid::SetBackend(nivral::Backend backend) {
  Close();
  m_backend = backend;
  m_session.emplace(backend == nivral::Backend::kSdl2 ? nivral::Start::kSdl2
                                                      : nivral::Start::kDirect3D9OrDirectDraw);
  for (size_t i = 0; i < m_channels.size(); ++i)
    OpenView(i);
}

void PaneGrid::Add(Channel channel) {
  m_channels.push_back(std::move(channel));
  OpenView(m_channels.size() - 1);
}

void PaneGrid::OpenView(size_t index) {
  m_views.push_back(std::make_unique<View>(m_window.Handle(), m_channels[index], m_backend, m_switches,
                                           m_clock, m_events, index));
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

bool PaneGrid::IsVisible(size_t index) const {
  const auto cells = static_cast<size_t>(m_cells);
  return index / cells == m_selected / cells;
}

void PaneGrid::Arrange(const PixelArea& room) {
  PixelArea mark{};
  for (size_t i = 0; i < m_views.size(); ++i) {
    if (!IsVisible(i)) {
      m_views[i]->Hide();
      continue;
    }
    PixelArea cell = CellOf(static_cast<int>(i) % m_cells, m_cells, {room.width, room.height});
    cell.left += room.left;
    cell.top += room.top;
    const PixelArea area = m_views[i]->PlaceIn(cell);
    if (i == m_selected && m_cells > 1) mark = area;
  }
  m_window.Mark(mark);
}

bool PaneGrid::IsOutOfPlace() const {
  return std::any_of(m_views.begin(), m_views.end(), [](const auto& view) { return view->IsOutOfPlace(); });
}

void PaneGrid::Raise() {
  for (size_t i = 0; i < m_views.size(); ++i)
    if (IsVisible(i)) m_views[i]->Raise();
}

void PaneGrid::Refresh() {
  for (const auto& view : m_views)
    view->Thread().Refresh();
}

int PaneGrid::VisiblePanes() const {
  int visible = 0;
  for (size_t i = 0; i < m_views.size(); ++i)
    visible += IsVisible(i) ? 1 : 0;
  return visible;
}

bool PaneGrid::HaveFollowed(uint64_t jump) const {
  for (size_t i = 0; i < m_views.size(); ++i)
    if (IsVisible(i) && m_views[i]->Thread().Shown().jump != jump) return false;
  return true;
}

bool PaneGrid::HaveEnded() const {
  for (size_t i = 0; i < m_views.size(); ++i)
    if (m_channels[i].IsClip() && IsVisible(i) && !m_views[i]->Thread().Shown().isLast) return false;
  return true;
}

double PaneGrid::Length() const {
  double length = 0;
  for (size_t i = 0; i < m_views.size(); ++i) {
    if (!m_channels[i].IsClip()) continue;
    const DrawThread::Place place = m_views[i]->Thread().Shown();
    length = std::max(length, place.isLast ? place.end : m_channels[i].source->Duration());
  }
  return length;
}

std::vector<std::string> PaneGrid::Troubles() const {
  std::vector<std::string> lines;
  for (size_t i = 0; i < m_views.size(); ++i)
    if (const std::string trouble = m_views[i]->Thread().Trouble(); !trouble.empty())
      lines.push_back(m_channels[i].path + ": " + trouble);
  return lines;
}

Figures PaneGrid::Result() const {
  Figures figures = m_closed;
  for (const auto& view : m_views)
    figures += view->Thread().Result();
  return figures;
}
