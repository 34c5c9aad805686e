// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <optional>

#include "backends/sdl2/sdl_events.h"
#include "backends/sdl2/sdl_library.h"
#include "backends/sdl2/sdl_lock.h"
#include "backends/sdl2/sdl_objects.h"
#include "backends/sdl2/sdl_overlays.h"
#include "backends/sdl2/sdl_window_hook.h"
#include "display/base_displayer.h"
#include "picture/frame_padder.h"
#include "util/win_handles.h"

namespace libnivral {

/// Shows frames through an SDL renderer on the client's window: one streaming YV12 texture of the video size,
/// stretched over the whole client area.
///
/// Results are 0 and 1. Threads: frames on any thread, window changes on the window's own; one lock
/// serialises them. A thread that must not wait for it (PaneLock) has its window, size or release noted for
/// whoever works on the pane, and its frame dropped. InitDraw with a new window and FreeDraw belong on the
/// window's thread, since SDL exchanges the window's procedure there.
class SDLDisplayer : public BaseDisplayer {
 public:
  SDLDisplayer();
  ~SDLDisplayer() override;

  void SetOSDText(int32_t index, const char* text, uint32_t x, uint32_t y, uint32_t anchor,
                  uint32_t colour) override;

  /// 0 only when a texture is being made anew: an unchanged size reports 1 and keeps what is there.
  int32_t InitDraw(uint32_t width, uint32_t height, uint32_t param) override;
  int32_t FreeDraw() override;
  void AdjustWinRect() override;

  /// Takes a window; InitDraw puts the renderer on it. Non-zero when the window could be tagged.
  int32_t SetPlayWnd(HWND hwnd) override;

  /// Draw the record being shown into the frame that is being made.
  void DrawAlgInfo() override;
  void DrawDsmAlgInfo() override;

 private:
  int32_t DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t param1,
                       int64_t param2) override;
  /// Holds the pane's lock for a scope, unless the thread must not wait for it. At the beginning and the end
  /// the requests of threads that did not get it are done.
  class Guard {
   public:
    explicit Guard(SDLDisplayer& pane, HWND newWindow = nullptr);
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    explicit operator bool() const { return m_held; }

   private:
    SDLDisplayer& m_pane;
    bool m_held;
  };

  template <class Work, class Request>
  int32_t WithLock(HWND newWindow, Work&& work, Request&& request);
  void DoRequests();
  Wait WaitMode(HWND newWindow = nullptr) const;

  /// Reasons for a pane that shows nothing, and goes on doing so. A frame that merely comes at the wrong
  /// time, as to a hidden window, is none.
  enum class Problem : uint32_t { SdlNotStarted = 1, NoWindow = 2, NoRenderer = 4 };
  void LogOnce(Problem problem, const wchar_t* text);

  int32_t TakePlayWnd(HWND hwnd);
  int32_t TakeSize(VideoSize size);
  bool Bind();
  void CreateWindowOnClient();
  bool SetVideoSize(VideoSize size);
  void AdjustDisplayRect(VideoSize size);
  bool ResetRender();
  bool ResetTexture();
  bool PostEvent(uint32_t type, VideoSize size);
  void HandleOwnEvent(uint32_t type, VideoSize size);
  bool SdlHasGone() const { return m_sdlRun != SdlRun(); }
  void ReleaseSdlObjects();
  void ForgetSdlObjects();
  void ShowPlayWnd() const;
  bool RequestTeardown();
  bool Teardown();
  void ForgetPlayWnd();

  std::optional<int32_t> DrawLocked(const FrameView& frame, const MosaicSettings& mosaic, VideoSize& size);
  bool IsReady() const;
  void CatchUpWithWindow();
  void RebuildLostDevice();
  bool Present(const FrameView& frame, const MosaicSettings& mosaic);
  bool Upload(const FrameView& frame);
  DisplayMap Map() const;
  void PaintRecord(RecordView record) override;
  void AddTexts();
  std::optional<MosaicGrid> LayOutMosaic(const MosaicSettings& mosaic, SDL_Point& display) const;
  static void OnRedraw(HWND hwnd, WPARAM pane);
  void CallFlashCallback();

  PaneEvents m_events;
  std::atomic<bool> m_bound{false};
  std::atomic<bool> m_resizePending{false};
  // Teardown, which the destructor runs, releases the textures, then the renderer they belong to, then the
  // window.
  SdlWindow m_sdlWindow;
  SdlTexture m_sdlTexture;
  SdlRenderer m_sdlRenderer;
  SdlOverlays m_overlays;
  std::atomic<VideoSize> m_displaySize{VideoSize{}};  ///< the client area's, as last measured
  VideoSize m_textureSize;
  PaneLock m_lock;  ///< guards every field of this class that is not atomic
  PaneRequests m_requests;
  std::atomic<uint32_t> m_logged{0};  ///< each Problem that the log has been told
  UniqueEvent m_hEvent;

  std::optional<WindowHook> m_hook;                ///< while m_sdlWindow exists
  std::optional<PaneRegistration> m_registration;  ///< while m_sdlWindow exists
  uint32_t m_sdlRun = 0;                           ///< of SDL, in which m_sdlWindow was made
  uint32_t m_deviceGeneration = 0;
  ULONGLONG m_lastRebuild = 0;
  FramePadder m_padder;
};

}  // namespace libnivral
