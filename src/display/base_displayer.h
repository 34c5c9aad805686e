// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>

#include "backends/yuvdraw/yuv2rgb.h"
#include "backends/yuvdraw/yuv_draw.h"
#include "display/color_record.h"
#include "display/pane_settings.h"
#include "display/record_queue.h"
#include "display/records.h"
#include "display/shown_record.h"
#include "display/working_frame_pool.h"
#include "nivral/nivral.h"
#include "picture/frame_view.h"
#include "util/locked_value.h"
#include "util/mutex_lock.h"

/// What is behind a display handle: the state that all backends share, the road of a frame up to the backend,
/// and the operations that backends override.
///
/// Threads: frames come on one thread, setters on others. Texts, colour records and record queues have locks
/// of their own; a frame takes one copy of the plain settings, so what is set meanwhile holds from the next
/// frame on. Setters never wait for a frame, and callbacks may call them.
class BaseDisplayer {
 public:
  BaseDisplayer() = default;
  BaseDisplayer(const BaseDisplayer&) = delete;
  BaseDisplayer& operator=(const BaseDisplayer&) = delete;

  virtual ~BaseDisplayer() = default;

  virtual bool IsInitialized() { return m_bInitialized; }

  /// Draws a frame packed in one buffer of the video size: Y, then the plane passed as V at width * height,
  /// then the one passed as U at width * height * 3 / 2.
  virtual int32_t DrawYUV420Buffer(uint8_t* buffer, int32_t unused, uint32_t param1, int64_t param2);

  /// The road of every frame: working copy, colour adjustment and mirror when they are on, Display, frame
  /// callback. Returns the result of Display. The client's planes are never written.
  virtual int32_t DrawYUV420(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                             int32_t strideV, uint32_t param1, int64_t param2);

  /// Shows one frame of the video size. 0, or a code of the backend.
  virtual int32_t Display(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                          int32_t strideV, uint32_t param1, int64_t param2) = 0;

  /// Writes a BMP snapshot. kNoFileName without a name, else kFailed also when the file was written: the file
  /// on disk is the outcome.
  virtual int32_t SaveFrameToFile(const char* fileName, uint8_t* pY, int32_t strideY, uint8_t* pU,
                                  int32_t strideU, uint8_t* pV, int32_t strideV);
  virtual int32_t SaveBufferToFile(const char* fileName, uint8_t* buffer, uint32_t unused);

  virtual void SetUserBuffer(void* buffer, uint32_t first, uint32_t second);
  virtual void SetOSDText(int32_t index, const char* text, uint32_t x, uint32_t y, uint32_t anchor,
                          uint32_t color);
  virtual void SetOSDFont(uint32_t first, uint32_t second, const char* face);
  virtual void SetMirrorMode(uint32_t mode) { m_settings.Set(&PaneSettings::mirrorMode, mode); }
  virtual uint32_t GetMirrorMode() { return m_settings.Get(&PaneSettings::mirrorMode); }

  /// Takes the video size and makes drawing resources; 0 on success. May alternate with FreeDraw.
  virtual int32_t InitDraw(uint32_t width, uint32_t height, uint32_t param);
  virtual int32_t FreeDraw() { return 0; }

  virtual void AdjustWinRect();
  virtual void SetPlayRect(const RECT* rect);
  virtual void SetZoom(uint32_t first, uint32_t second, uint32_t third);
  virtual int32_t SetPlayWnd(HWND hwnd);
  virtual int32_t SetPlayWndEx(HWND hwnd, int64_t param, uint32_t flag);
  virtual void SetMosaicFlag(uint32_t flag);
  virtual void SetMosaicLevel(uint32_t level);
  virtual void SetMosaics(const void* rect);
  virtual void SetMosaicAreaScale(float top, float left, float bottom, float right);
  virtual void UpdateMosaics(uint32_t commit);
  virtual int32_t SetRClickPt(POINT point);

  /// Takes the records due for this frame and calls DrawAlgInfo and DrawDsmAlgInfo while they are fresh;
  /// while paused, calls both at once and takes nothing.
  virtual void DrawOverlays();
  virtual void DrawAlgInfo() {}
  virtual void DrawDsmAlgInfo() {}

  /// Takes the driver-assistance record due for this frame and burns it into the planes while it is fresh.
  virtual void DrawAlgInfoOnYUV(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                                int32_t strideV);

  /// Draws the last driver-assistance record into the planes, once there has been one.
  virtual void RenderAlgInfoYUV(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                                int32_t strideV);

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
  ColorRecord& GetColorRecord(int32_t index) { return m_colorRecords[static_cast<size_t>(index)]; }

 protected:
  /// Display with the settings that the frame took when it came. A backend overrides it and lets its Display
  /// come here with a copy of its own making.
  virtual int32_t DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t param1,
                               int64_t param2);

  /// The road of a frame that is to be mirrored or adjusted: makes a working copy and shows that. A backend
  /// that copies frames anyway may do both in one.
  virtual int32_t DisplayAdjusted(const FrameView& client, const ColorValues& colors,
                                  const PaneSettings& settings, uint32_t param1, int64_t param2);

  /// Takes the records due for this frame, or none while paused, and tells which are to be drawn. Every frame
  /// that comes takes its records, so a backend that cannot draw one calls this and draws nothing.
  struct DueOverlays {
    bool alg;
    bool dsm;
  };
  DueOverlays AdvanceOverlays();

  /// Takes the records of a frame that is refused, or none while paused, and drops them. For frames on a thread
  /// that does not have the pane: any thread may call, what is being shown stays as it is.
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
  void* m_pUserBuffer = nullptr;
  uint32_t m_dwUserFirst = 0;
  uint32_t m_dwUserSecond = 0;
  CMutexLock m_textLock;
  CMutexLock m_playRectLock;
  std::array<TextItem, kTextItemCount> m_textItems{};
  char m_szFontFace[32]{};
  uint32_t m_dwFontFirst = 0;
  uint32_t m_dwFontSecond = 14;
  std::array<ColorRecord, 2> m_colorRecords;
  POINT m_ptRClick{};
  RecordQueue<AlgRecord> m_algQueue;
  ShownRecord<AlgRecord> m_alg;
  RecordQueue<DsmRecord> m_dsmQueue;
  ShownRecord<DsmRecord> m_dsm;

 private:
  int32_t ShowFrame(const FrameView& frame, const PaneSettings& settings, uint32_t param1, int64_t param2);

  WorkingFramePool m_workingFrames;
};
