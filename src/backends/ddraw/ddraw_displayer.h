// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

#include "backends/ddraw/ddraw_device.h"
#include "backends/ddraw/ddraw_slots.h"
#include "backends/ddraw/ddraw_surface.h"
#include "backends/ddraw/ddraw_text.h"
#include "display/base_displayer.h"
#include "display/mosaic_layout.h"
#include "display/overlay_list.h"
#include "util/thread_base.h"
#include "util/win_handles.h"
#include "util/work_signal.h"

namespace libnivral {

/// Shows frames through DirectDraw 7 surfaces, on machines without 3D acceleration too.
///
/// DisplayFrame copies the frame with its records and returns; a worker thread stretches it into the window,
/// or composes it outside the screen first when something lies over it, which GDI draws. The worker owns
/// every surface from InitDraw to FreeDraw. It holds no lock that a setter takes while it draws, so setters
/// never wait for a blit.
class CDirectDraw : public BaseDisplayer {
 public:
  CDirectDraw();
  ~CDirectDraw() override;

  /// Once per process: chooses the conversion loops and marks that as done. The first displayer does both
  /// when nobody has.
  static void BuildTables();
  static void SetTablesBuilt();

  /// Makes surfaces and starts the worker. Needs no window. 0, kBadSize, kNoDevice or kNoMemory.
  int32_t InitDraw(uint32_t width, uint32_t height, uint32_t param) override;

  /// Ends the worker before it returns. Refused (kFailed) on the worker itself, where only callbacks run.
  int32_t FreeDraw() override;

  // These take effect at once: the worker draws the last frame again.
  void AdjustWinRect() override;
  void SetPlayRect(const RECT* rect) override;
  int32_t SetPlayWnd(HWND hwnd) override;
  int32_t SetPlayWndEx(HWND hwnd, int64_t param, uint32_t flag) override;

  /// In which format frames are uploaded, from the next InitDraw on; Automatic unless a test or benchmark
  /// asks.
  void SetUploadFormat(UploadFormat format) { m_wantedFormat = format; }
  UploadFormat ActiveUploadFormat() const { return m_frameSurface.ActiveUploadFormat(); }

  /// Frames and repaints that the worker has brought to the screen so far.
  uint32_t ShownCount() const { return m_shownCount; }

 private:
  int32_t CreateAll();
  HRESULT CreateSurfaces();
  void CloseSlots();
  void ReleaseAll();
  void StopWorker();

  /// Hands the frame to the worker. kNotInitialised before InitDraw, after FreeDraw and without a window;
  /// kFailed for planes that cannot hold a frame.
  int32_t DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t param1,
                       int64_t param2) override;

  int32_t DisplayAdjusted(const FrameView& client, const ColourValues& colours, const PaneSettings& settings,
                          uint32_t param1, int64_t param2) override;

  /// What becomes of a frame's samples on its way into a slot.
  struct FrameChange {
    uint32_t mirrorMode = 0;
    ColourValues colours;
  };
  int32_t HandOver(const FrameView& frame, const PaneSettings& settings, const FrameChange& change,
                   int64_t param2);

  static DWORD WorkerMain(void* self);
  void Work();
  void DrawPending();
  void BurnInBoxes(const FrameView& planes);
  void DrawFrame(const FrameView& planes);
  void Repaint();
  void RequestRepaint();
  bool Recover(HRESULT failure);
  PixelRect RefreshArea(HWND window, PaneSettings& settings);
  HRESULT Compose(const PixelRect& area, const PaneSettings& settings);
  HRESULT Show();
  HRESULT ShowPlain(HWND window, const PixelRect& area);
  HRESULT ShowComposed(HWND window, const PixelRect& area, const PaneSettings& settings);

  /// What is to be drawn over the picture, taken when a frame is shown.
  struct Overlays {
    DisplayMap map;
    MosaicGrid mosaic;
    std::array<TextItem, kTextItemCount> texts;
    char face[LF_FACESIZE];
    bool anyText;
    bool anyLabel;
    bool needDC;
  };
  bool CollectOverlays(const PixelRect& area, const PaneSettings& settings);
  HRESULT PaintOverlays(const PixelRect& area, const PaneSettings& settings);
  void DrawRecord(HDC dc, RecordView record);
  HRESULT PixelateMosaic();
  void CallDisplayCallback(HDC dc, const PixelRect& area, const PaneSettings& settings);

  UploadFormat m_wantedFormat = UploadFormat::Automatic;
  CMutexLock m_handOverLock;  ///< for who brings a frame with its records, opens or closes the slots
  AdjustTables m_tables;
  FrameSlots m_slots;
  WorkSignal m_work;         ///< a frame or a wish to repaint waits
  UniqueEvent m_workerDone;  ///< manual-reset: the worker has left its body
  CThreadBase m_worker;
  std::atomic<DWORD> m_workerId{0};
  std::atomic<bool> m_repaint{false};
  std::atomic<uint32_t> m_shownCount{0};

  // The worker's while it runs. Surfaces go before the device that made them.
  DDrawDevice m_device;
  FrameSurface m_frameSurface;
  DDrawSurface m_composition;
  PixelRect m_composedArea;
  GdiText m_text;
  GdiLabels m_labels;
  OverlayList m_burnedIn;  ///< the shown frame's boxes and labels
  OverlayList m_painted;
  RectList m_pixels;
  FrameInfo m_shown;
  Overlays m_overlays{};
  bool m_frameUploaded = false;
  bool m_plainRefused = false;  ///< the driver does not take frames straight to the screen
};

}  // namespace libnivral
