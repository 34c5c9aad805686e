// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_displayer.h"

#include "colour/convert.h"
#include "display/fonts.h"
#include "util/log_file.h"

namespace libnivral {
namespace {

constexpr uint32_t kPlanarYuv420 = 3;
/// Larger pictures fit on no surface of a driver.
constexpr uint32_t kMaxVideoSide = 16384;

std::atomic<bool> g_tablesBuilt{false};

/// Waits for the event while the calling thread goes on answering messages that other threads send to its
/// windows: a driver or a client's callback on the worker may be waiting for such an answer.
void WaitAnsweringMessages(HANDLE event) {
  MSG message;
  while (MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_SENDMESSAGE) == WAIT_OBJECT_0 + 1) {
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
}

}  // namespace

void CDirectDraw::BuildTables() {
  ChooseKernels();
}

void CDirectDraw::SetTablesBuilt() {
  g_tablesBuilt = true;
}

CDirectDraw::CDirectDraw() : m_workerDone(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  if (!g_tablesBuilt) {
    BuildTables();
    SetTablesBuilt();
  }
  IconTitleFace(m_szFontFace);
}

CDirectDraw::~CDirectDraw() {
  ReleaseAll();
}

int32_t CDirectDraw::DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t,
                                  int64_t param2) {
  const int32_t result = HandOver(frame, settings, {}, param2);
  const auto& callback = settings.decodeCB;
  if (result == kOk && callback.function) {
    callback.function(frame.y, static_cast<uint32_t>(frame.strideY), m_dwWidth, m_dwHeight, param2,
                      kPlanarYuv420, callback.user);
  }
  return result;
}

/// The frame is mirrored and adjusted on its way into the slot, unless a callback wants to see what became
/// of it.
int32_t CDirectDraw::DisplayAdjusted(const FrameView& client, const ColourValues& colours,
                                     const PaneSettings& settings, uint32_t param1, int64_t param2) {
  if (settings.frameCB.function || settings.decodeCB.function || client.strideU != client.strideV)
    return BaseDisplayer::DisplayAdjusted(client, colours, settings, param1, param2);
  return HandOver(client, settings, {settings.mirrorMode, colours}, param2);
}

/// Records go with their frames, also with those that are refused or replaced before the worker comes to
/// them.
int32_t CDirectDraw::HandOver(const FrameView& frame, const PaneSettings& settings, const FrameChange& change,
                              int64_t param2) {
  FrameSlots::PutResult result = FrameSlots::PutResult::Closed;
  {
    CAutoLock guard(&m_handOverLock);
    const FrameInfo info{param2, TakeRecords(settings.paused != 0)};
    if (!IsWindow(m_hPlayWnd)) return kNotInitialised;
    const bool adjust = IsAdjustActive(change.colours);
    if (adjust) m_tables.Update(change.colours);
    const FrameCopier copier(change.mirrorMode, adjust ? &m_tables : nullptr);
    result = m_slots.Put(frame, info, adjust || change.mirrorMode ? &copier : nullptr);
  }
  if (result != FrameSlots::PutResult::Stored)
    return result == FrameSlots::PutResult::Closed ? kNotInitialised : kFailed;
  m_work.Raise();
  return kOk;
}

int32_t CDirectDraw::InitDraw(uint32_t width, uint32_t height, uint32_t param) {
  CLogFile::GetInstance()->WriteA(1, "CDirectDraw::InitDraw dwWidth%d dwHeight%d", static_cast<int>(width),
                                  static_cast<int>(height));
  if (GetCurrentThreadId() == m_workerId) return kFailed;
  ReleaseAll();
  BaseDisplayer::InitDraw(width, height, param);
  const int32_t result = CreateAll();
  if (result != kOk) ReleaseAll();
  return result;
}

int32_t CDirectDraw::CreateAll() {
  if (m_dwWidth < 1 || m_dwHeight < 1 || m_dwWidth > kMaxVideoSide || m_dwHeight > kMaxVideoSide)
    return kBadSize;
  if (FAILED(CreateSurfaces())) return kNoDevice;
  ResetEvent(m_workerDone.get());
  // Before the slots: opening forgets what was raised, and a frame may come as soon as slots let it in.
  m_work.Open();
  {
    CAutoLock guard(&m_handOverLock);
    if (!m_slots.Open(m_dwWidth, m_dwHeight)) return kNoMemory;
  }
  if (!m_worker.Start(&CDirectDraw::WorkerMain, this)) return kFailed;
  m_bInitialized = true;
  return kOk;
}

HRESULT CDirectDraw::CreateSurfaces() {
  m_composition.reset();
  m_frameSurface.Release();
  m_frameUploaded = false;
  m_plainRefused = false;
  HRESULT hr = m_device.Create();
  if (SUCCEEDED(hr)) hr = m_frameSurface.Create(m_device, m_dwWidth, m_dwHeight, m_wantedFormat);
  if (FAILED(hr)) {
    // No device without its frame surface: the next frame tries again from the start.
    m_frameSurface.Release();
    m_device.Release();
  }
  return hr;
}

int32_t CDirectDraw::FreeDraw() {
  if (GetCurrentThreadId() == m_workerId) return kFailed;
  CloseSlots();
  StopWorker();
  const bool shown = m_frameUploaded;
  ReleaseAll();
  // The last frame is still on the screen; the client paints its own background over it.
  if (shown && IsWindow(m_hPlayWnd)) InvalidateRect(m_hPlayWnd, nullptr, TRUE);
  return kOk;
}

/// Returns when no frame is on its way into a slot.
void CDirectDraw::CloseSlots() {
  CAutoLock guard(&m_handOverLock);
  m_slots.Close();
}

void CDirectDraw::ReleaseAll() {
  CloseSlots();
  StopWorker();
  m_slots.Release();
  m_bInitialized = false;
  m_frameUploaded = false;
  m_composition.reset();
  m_frameSurface.Release();
  m_device.Release();
}

void CDirectDraw::StopWorker() {
  if (m_bInitialized) {
    m_work.Close();
    WaitAnsweringMessages(m_workerDone.get());
  }
  m_worker.Stop(INFINITE);
}

void CDirectDraw::AdjustWinRect() {
  BaseDisplayer::AdjustWinRect();
  RequestRepaint();
}

void CDirectDraw::SetPlayRect(const RECT* rect) {
  {
    CAutoLock guard(&m_playRectLock);
    const PixelRect play = m_settings.Get(&PaneSettings::play);
    if (!rect || PixelRect{rect->left, rect->top, rect->right, rect->bottom} == play) return;
    BaseDisplayer::SetPlayRect(rect);
  }
  RequestRepaint();
}

int32_t CDirectDraw::SetPlayWnd(HWND hwnd) {
  BaseDisplayer::SetPlayWnd(hwnd);
  AdjustWinRect();
  return kOk;
}

int32_t CDirectDraw::SetPlayWndEx(HWND hwnd, int64_t, uint32_t) {
  return SetPlayWnd(hwnd);
}

void CDirectDraw::RequestRepaint() {
  m_repaint = true;
  m_work.Raise();
}

}  // namespace libnivral
