// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>

#include "backends/yuvdraw/yuv2rgb.h"
#include "backends/yuvdraw/yuv_draw.h"
#include "display/colour_record.h"
#include "display/overlay_list.h"
#include "display/pane_settings.h"
#include "display/record_queue.h"
#include "display/records.h"
#include "display/shown_record.h"
#include "display/working_frame_pool.h"
#include "nivral/nivral.h"
#include "picture/frame_view.h"
#include "util/locked_value.h"
#include "util/mutex_lock.h"

namespace libnivral {

// Result codes of displayer operations.
constexpr int32_t kOk = 0;
constexpr int32_t kNotInitialised = 0x2001;  ///< a frame came and the backend could not be made ready
constexpr int32_t kBadSize = 0x2002;         ///< a width or height below 1
constexpr int32_t kNoMemory = 0x2003;
constexpr int32_t kNoDevice = 0x2004;    ///< the graphics interface or its device could not be created
constexpr int32_t kFailed = 0x2FFF;      ///< anything else
constexpr int32_t kNoFileName = 0x2002;  ///< a snapshot without a file name

/// What is behind a display handle: the state that all backends share, the road of a frame up to the backend,
/// and the operations that backends override. A backend has to override DisplayFrame, and InitDraw and
/// FreeDraw once it has something to make and release; with that it is one (tests/support/null_displayer.h).
///
/// Threads. Frames come on one thread, the feeding one; setters come on any, also while a frame is being
/// shown, and from callbacks within it, so none may wait for a frame. Texts, colour records and record queues
/// have locks of their own, the plain settings are one LockedValue; all are held for a copy only. A frame
/// takes one copy of the settings when it comes, and what is set meanwhile holds from the next frame on.
///
/// Every operation is called without any lock of this class, by the export of its name where nothing else is
/// said. An operation that a backend overrides begins with the base's, which keeps the values.
class BaseDisplayer {
 public:
  BaseDisplayer() = default;
  BaseDisplayer(const BaseDisplayer&) = delete;
  BaseDisplayer& operator=(const BaseDisplayer&) = delete;

  /// Window's thread, after FreeDraw, nothing else in flight. Releases what is left.
  virtual ~BaseDisplayer() = default;

  /// Whether drawing resources exist. Any thread. Backends set m_bInitialized and leave this as it is.
  virtual bool IsInitialized() { return m_bInitialized; }

  // Frames. Feeding thread. Backends override none of these but DisplayFrame, below.

  /// Shows a frame packed in one buffer of the video size, neither mirrored nor adjusted: Y, then the plane
  /// passed as V at width * height, then the one passed as U at width * height * 3 / 2. No export.
  virtual int32_t DrawYUV420Buffer(uint8_t* buffer, int32_t unused, uint32_t param1, int64_t param2);

  /// The road of every frame: working copy, colour adjustment and mirror when they are on, DisplayFrame,
  /// frame callback. Returns the result of DisplayFrame. The client's planes are never written.
  virtual int32_t DrawYUV420(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                             int32_t strideV, uint32_t param1, int64_t param2);

  /// DisplayFrame with the settings of the moment, for planes as they are. No export.
  virtual int32_t Display(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                          int32_t strideV, uint32_t param1, int64_t param2);

  /// Writes a BMP snapshot. kNoFileName without a name, else kFailed also when the file was written: the file
  /// on disk is the outcome. Any thread; no export.
  virtual int32_t SaveFrameToFile(const char* fileName, uint8_t* pY, int32_t strideY, uint8_t* pU,
                                  int32_t strideU, uint8_t* pV, int32_t strideV);
  virtual int32_t SaveBufferToFile(const char* fileName, uint8_t* buffer, uint32_t unused);

  // What the client sets. Any thread. The base keeps the values; a backend overrides where a value has to act
  // before the next frame.

  virtual void SetUserBuffer(void* buffer, uint32_t first, uint32_t second);
  virtual void SetOSDText(int32_t index, const char* text, uint32_t x, uint32_t y, uint32_t anchor,
                          uint32_t colour);
  virtual void SetOSDFont(uint32_t first, uint32_t second, const char* face);
  virtual void SetMirrorMode(uint32_t mode) { m_settings.Set(&PaneSettings::mirrorMode, mode); }
  virtual uint32_t GetMirrorMode() { return m_settings.Get(&PaneSettings::mirrorMode); }

  /// Takes the video size and makes drawing resources; 0 on success. Window's thread, with no frame in
  /// flight. May be called again, with or without FreeDraw between. The base keeps the size and makes
  /// nothing.
  virtual int32_t InitDraw(uint32_t width, uint32_t height, uint32_t param);

  /// Releases what InitDraw made; also called before the destructor. Window's thread, with no frame in
  /// flight. The base has nothing to release.
  virtual int32_t FreeDraw() { return 0; }

  /// The window's client area has another size. The base measures it.
  virtual void AdjustWinRect();
  virtual void SetPlayRect(const RECT* rect);

  /// A point in thousandths of the picture and a factor, for backends that zoom.
  virtual void SetZoom(uint32_t x, uint32_t y, uint32_t factor);

  /// Takes the window, which may be null or gone; what it returns is dropped. Called before InitDraw and, for
  /// a pane in use, by the thread of the new window.
  virtual int32_t SetPlayWnd(HWND hwnd);
  virtual int32_t SetPlayWndEx(HWND hwnd, int64_t param, uint32_t flag);

  virtual void SetMosaicFlag(uint32_t flag);
  virtual void SetMosaicLevel(uint32_t level);
  virtual void SetMosaics(const void* rect);

  /// Fractions of the client area, of which the mosaic's rectangle is computed at once.
  virtual void SetMosaicAreaScale(float top, float left, float bottom, float right);

  /// For backends that keep several mosaics; the base has one and does nothing.
  virtual void UpdateMosaics(uint32_t commit);
  virtual int32_t SetRClickPt(POINT point);

  // Overlays. Called by the backend itself, out of DisplayFrame, with whatever lock it draws under.

  /// Takes the records due for this frame and calls DrawAlgInfo and DrawDsmAlgInfo while they are fresh;
  /// while paused, calls both at once and takes nothing. Once per frame that is drawn; not overridden.
  virtual void DrawOverlays();

  /// Draws m_alg.record over the frame being made, where m_alg.shown says that there is one.
  virtual void DrawAlgInfo() {}

  /// The same for m_dsm.
  virtual void DrawDsmAlgInfo() {}

  /// For backends without a renderer: takes the driver-assistance record due for this frame and burns it into
  /// the planes while it is fresh. Not overridden.
  virtual void DrawAlgInfoOnYUV(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                                int32_t strideV);

  /// Draws the last driver-assistance record into the planes, once there has been one. Not overridden.
  virtual void RenderAlgInfoYUV(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                                int32_t strideV);

  // The rest is the base's alone. Any thread.

  void SetIndex(int32_t index) { m_settings.Set(&PaneSettings::index, index); }
  void SetPause(uint32_t paused) { m_settings.Set(&PaneSettings::paused, paused); }
  void SetDecCB(void* user, NivralDecodeCallback function);
  void SetFlashWndCB(void* user, NivralFlashWndCallback function);
  void SetDisplayCB(void* user, NivralDisplayCallback function);
  void SetDrawYUV420CB(void* user, NivralFrameCallback function);

  /// Queues a record of 1 to 12 boxes; other counts are ignored. Edges are floats in 32-bit words.
  void SetAlgInfo(int32_t count, const uint32_t* left, const uint32_t* top, const uint32_t* right,
                  const uint32_t* bottom, const uint16_t* classId, const uint16_t* distance,
                  const uint16_t* third, const uint16_t* fourth, uint16_t value);

  /// Queues a record of 0 to 68 landmarks and at most 12 boxes; other counts are ignored.
  void SetDsmAlgInfo(int32_t pointCount, const uint32_t* x, const uint32_t* y, int32_t boxCount,
                     const uint32_t* left, const uint32_t* top, const uint32_t* right, const uint32_t* bottom,
                     uint16_t value);

  /// Record 0 acts on the picture, record 1 is only kept. The index is not checked.
  ColourRecord& GetColourRecord(int32_t index) { return m_colourRecords[static_cast<size_t>(index)]; }

 protected:
  /// Shows one frame of the video size: the operation that makes a backend. Called on the feeding thread
  /// without a lock; a client that breaks the rule of one feeding thread may call it twice at once. Returns
  /// 0, or a code of those above or of the backend's own.
  ///
  /// In this order: no resources, a code (kNotInitialised); planes that HoldsFrame refuses, a code (kFailed);
  /// the picture; DrawOverlays; the decode callback, for backends that have one. A frame that is not drawn
  /// takes its records all the same: AdvanceOverlays or DropOverlays. Planes are the client's or a copy,
  /// valid during the call and not to be written. `settings` are the frame's.
  virtual int32_t DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t param1,
                               int64_t param2) = 0;

  /// The road of a frame that is to be mirrored or adjusted, instead of DisplayFrame; as that one. The base
  /// shows a working copy and calls the frame callback. A backend that copies frames anyway may do both in
  /// one, when no callback wants to see the copy.
  virtual int32_t DisplayAdjusted(const FrameView& client, const ColourValues& colours,
                                  const PaneSettings& settings, uint32_t param1, int64_t param2);

  /// Takes the records due for this frame, or none while paused, and tells which are to be drawn. Every frame
  /// that comes takes its records, so a backend that cannot draw one calls this and draws nothing.
  struct DueOverlays {
    bool alg;
    bool dsm;
  };
  DueOverlays AdvanceOverlays();

  /// Draws a record over the frame being made. DrawAlgInfo and DrawDsmAlgInfo come here, and DrawOverlays
  /// with records of any kind that has no operation of its own.
  virtual void PaintRecord(RecordView) {}

  /// AdvanceOverlays for a backend that burns driver assistance into its frames and draws later: what is due.
  FrameRecords TakeRecords(bool paused);

  /// Takes the records of a frame that is refused, or none while paused, and drops them. For frames on a
  /// thread that does not have the pane: any thread may call, what is being shown stays as it is.
  void DropOverlays();

  /// Recomputes the mosaic rectangle from its fractions and the play window's client size when `wanted`
  /// holds.
  void FitMosaic(bool (*wanted)(const MosaicSettings&));

  LockedValue<PaneSettings> m_settings;
  std::atomic<HWND> m_hPlayWnd{nullptr};
  uint32_t m_dwWidth = 0;
  uint32_t m_dwHeight = 0;
  bool m_bInitialized = false;
  YUV2RGB m_converter;
  CYuvDraw m_yuvDraw;
  OverlayList m_burnIn;  ///< kept from frame to frame for its memory
  void* m_pUserBuffer = nullptr;
  uint32_t m_dwUserFirst = 0;
  uint32_t m_dwUserSecond = 0;
  CMutexLock m_textLock;
  CMutexLock m_playRectLock;
  std::array<TextItem, kTextItemCount> m_textItems{};
  char m_szFontFace[32]{};
  uint32_t m_dwFontFirst = 0;
  uint32_t m_dwFontSecond = 14;
  std::array<ColourRecord, 2> m_colourRecords;
  POINT m_ptRClick{};
  RecordQueue<AlgRecord> m_algQueue;
  ShownRecord<AlgRecord> m_alg;
  RecordQueue<DsmRecord> m_dsmQueue;
  ShownRecord<DsmRecord> m_dsm;

 private:
  int32_t ShowFrame(const FrameView& frame, const PaneSettings& settings, uint32_t param1, int64_t param2);

  WorkingFramePool m_workingFrames;
};

}  // namespace libnivral
