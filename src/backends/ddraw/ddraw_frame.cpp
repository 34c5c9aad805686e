// SPDX-License-Identifier: MIT
// CDirectDraw: what happens on the worker thread.
#include <ddraw.h>

#include <new>

#include "backends/ddraw/ddraw_displayer.h"
#include "backends/ddraw/ddraw_error.h"
#include "backends/ddraw/ddraw_layout.h"
#include "display/burn_in.h"
#include "display/overlay_layout.h"

namespace libnivral {

DWORD CDirectDraw::WorkerMain(void* self) {
  // Also when a client's callback throws: whoever stops the worker waits for this, and frames are refused.
  struct Ending {
    CDirectDraw& worker;
    ~Ending() {
      worker.CloseSlots();
      worker.m_workerId = 0;
      SetEvent(worker.m_workerDone.get());
    }
  } ending{*static_cast<CDirectDraw*>(self)};
  ending.worker.Work();
  return 0;
}

void CDirectDraw::Work() {
  m_workerId = GetCurrentThreadId();
  while (m_work.Wait()) {
    try {
      DrawPending();
    } catch (const std::bad_alloc&) {
      m_frameUploaded = false;  // this frame is dropped
    }
  }
}

void CDirectDraw::DrawPending() {
  const bool repaint = m_repaint.exchange(false);
  const FrameSlots::Loan frame = m_slots.Take();
  if (!frame) {
    if (repaint) Repaint();
    return;
  }
  m_shown = frame.Info();
  BurnInBoxes(frame.Planes());
  DrawFrame(frame.Planes());
}

void CDirectDraw::BurnInBoxes(const FrameView& planes) {
  m_burnedIn.Clear();
  if (!m_shown.records.alg) return;
  const auto map = DisplayMap::Unscaled(static_cast<int32_t>(m_dwWidth), static_cast<int32_t>(m_dwHeight));
  LayOutRecord(m_burnedIn, &*m_shown.records.alg, map, BurnInStyle());
  BurnIn(m_yuvDraw, m_burnedIn, planes, m_dwWidth, m_dwHeight);
}

void CDirectDraw::DrawFrame(const FrameView& planes) {
  m_frameUploaded = false;
  if (!IsWindowVisible(m_hPlayWnd)) return;
  HRESULT hr = DDERR_SURFACELOST;
  for (int attempt = 0; attempt < 2 && FAILED(hr); ++attempt) {
    if (attempt > 0 && !Recover(hr)) return;
    hr = m_device ? m_frameSurface.Upload(planes) : DDERR_SURFACELOST;
    if (SUCCEEDED(hr)) hr = Show();
  }
  m_frameUploaded = SUCCEEDED(hr);
}

/// Shows the last frame again, after the window or the play rectangle changed.
void CDirectDraw::Repaint() {
  if (!m_frameUploaded || !IsWindowVisible(m_hPlayWnd)) return;
  const HRESULT hr = Show();
  // Restored surfaces are empty: the next frame fills them.
  if (FAILED(hr)) m_frameUploaded = false;
}

/// Brings lost surfaces back, or makes everything anew when the display mode has changed. False when there is
/// nothing to gain from another attempt at this frame.
bool CDirectDraw::Recover(HRESULT failure) {
  if (!IsLost(failure)) return false;
  if (failure == DDERR_SURFACELOST && m_device && SUCCEEDED(m_device.Restore())) return true;
  return SUCCEEDED(CreateSurfaces());
}

/// What is shown follows the window by itself, and so does the mosaic over it; a rectangle given in pixels
/// stays.
PixelRect CDirectDraw::RefreshArea(HWND window, PaneSettings& settings) {
  RECT client;
  if (GetClientRect(window, &client)) {
    settings.client = {client.left, client.top, client.right, client.bottom};
    m_settings.Set(&PaneSettings::client, settings.client);
    if (settings.mosaic.fromFractions) settings.mosaic.FitTo(client.right, client.bottom);
  }
  return DrawnArea(settings.play, settings.client);
}

HRESULT CDirectDraw::Show() {
  const HWND window = m_hPlayWnd;
  PaneSettings settings = m_settings.Copy();
  const PixelRect area = RefreshArea(window, settings);
  if (area.Empty()) return DD_OK;
  const bool anyOverlay = CollectOverlays(area, settings);
  HRESULT hr = anyOverlay ? S_FALSE : ShowPlain(window, area);
  if (hr == S_FALSE) hr = ShowComposed(window, area, settings);
  if (SUCCEEDED(hr)) ++m_shownCount;
  return hr;
}

/// A picture that nothing lies over goes from its surface straight into a window that is seen as a whole.
/// S_FALSE when it cannot.
HRESULT CDirectDraw::ShowPlain(HWND window, const PixelRect& area) {
  if (m_plainRefused || !m_device.IsFullyVisible(window, area)) return S_FALSE;
  const HRESULT hr = m_frameSurface.PresentTo(m_device, window, area);
  if (SUCCEEDED(hr) || IsLost(hr)) return hr;
  m_plainRefused = true;
  return S_FALSE;
}

HRESULT CDirectDraw::ShowComposed(HWND window, const PixelRect& area, const PaneSettings& settings) {
  const HRESULT hr = Compose(area, settings);
  return FAILED(hr) ? hr : m_device.Present(window, m_composition.get(), area);
}

HRESULT CDirectDraw::Compose(const PixelRect& area, const PaneSettings& settings) {
  const bool fits =
      m_composition && m_composedArea.Width() == area.Width() && m_composedArea.Height() == area.Height();
  if (!fits) {
    const HRESULT hr = m_device.CreateScreenCompatible(static_cast<uint32_t>(area.Width()),
                                                       static_cast<uint32_t>(area.Height()), m_composition);
    if (FAILED(hr)) return hr;
  }
  m_composedArea = area;
  const HRESULT hr = m_frameSurface.StretchTo(m_composition.get());
  return FAILED(hr) ? hr : PaintOverlays(area, settings);
}

}  // namespace libnivral
