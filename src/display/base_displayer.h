// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>

#include "backends/yuvdraw/yuv2rgb.h"
#include "backends/yuvdraw/yuv_draw.h"
#include "display/color_record.h"
#include "display/frame_view.h"
#include "display/record_queue.h"
#include "display/records.h"
#include "display/shown_record.h"
#include "display/working_frame_pool.h"
#include "nivral/nivral.h"
#include "util/mutex_lock.h"

/// A callback and the client's context for it.
template <class Function>
struct Callback {
  Function function = nullptr;
  void* user = nullptr;
};

/// What is behind a display handle: the state that all backends share, the road of a frame up to the backend,
/// and the operations that backends override.
///
/// Threads: frames come on one thread, setters on others. Texts, colour records and record queues have locks
/// of their own; plain settings are read by the drawing thread as they are and take effect from the next
/// frame.
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
  virtual void SetMirrorMode(uint32_t mode) { m_dwMirrorMode = mode; }
  virtual uint32_t GetMirrorMode() { return m_dwMirrorMode; }

  /// Takes the video size and makes drawing resources; 0 on success. May alternate with FreeDraw.
  virtual int32_t InitDraw(uint32_t width, uint32_t height, uint32_t param);
  virtual int32_t FreeDraw() { return 0; }

  virtual void AdjustWinRect();
  virtual void SetPlayRect(const RECT* rect);
  virtual void SetZoom(uint32_t first, uint32_t second, uint32_t third);
  virtual int32_t SetPlayWnd(HWND hwnd);
  virtual int32_t SetPlayWndEx(HWND hwnd, int64_t param, uint32_t flag);
  virtual void SetMosaicFlag(uint32_t flag) { m_dwMosaicFlag = flag; }
  virtual void SetMosaicLevel(uint32_t level) { m_dwMosaicLevel = level; }
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

  void SetIndex(int32_t index) { m_nIndex = index; }
  void SetPause(uint32_t paused) { m_dwPause = paused; }
  void SetDecCB(void* user, NivralDecodeCallback function) { m_decodeCB = {function, user}; }
  void SetFlashWndCB(void* user, NivralFlashWndCallback function) { m_flashWndCB = {function, user}; }
  void SetDisplayCB(void* user, NivralDisplayCallback function) { m_displayCB = {function, user}; }
  void SetDrawYUV420CB(void* user, NivralFrameCallback function) { m_frameCB = {function, user}; }

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
  /// Recomputes the mosaic rectangle from the area scale and the play window's client size.
  void UpdateMosaicRect();

  /// After a change of the client area: a mosaic that was given as fractions keeps covering the same part.
  void RefitMosaic();

  HWND m_hPlayWnd = nullptr;
  uint32_t m_dwWidth = 0;
  uint32_t m_dwHeight = 0;
  bool m_bInitialized = false;
  RECT m_rcPlay{};
  RECT m_rcClient{};
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
  uint32_t m_dwMirrorMode = 0;
  int32_t m_nIndex = -1;
  uint32_t m_dwZoom[3]{};
  RECT m_rcMosaic{};
  uint32_t m_dwMosaicFlag = 0;
  uint32_t m_dwMosaicLevel = 0;
  float m_fMosaicTop = 0;
  float m_fMosaicLeft = 0;
  float m_fMosaicBottom = 0;
  float m_fMosaicRight = 0;
  std::array<ColorRecord, 2> m_colorRecords;
  POINT m_ptRClick{};
  Callback<NivralDecodeCallback> m_decodeCB;
  Callback<NivralFlashWndCallback> m_flashWndCB;
  Callback<NivralDisplayCallback> m_displayCB;
  Callback<NivralFrameCallback> m_frameCB;
  RecordQueue<AlgRecord> m_algQueue;
  ShownRecord<AlgRecord> m_alg;
  uint32_t m_dwPause = 0;
  RecordQueue<DsmRecord> m_dsmQueue;
  ShownRecord<DsmRecord> m_dsm;

 private:
  int32_t ShowFrame(const FrameView& frame, uint32_t param1, int64_t param2);

  WorkingFramePool m_workingFrames;
};
