// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <optional>

#include "backends/sdl2/sdl_events.h"
#include "backends/sdl2/sdl_objects.h"
#include "backends/sdl2/sdl_overlays.h"
#include "backends/sdl2/window_hook.h"
#include "display/base_displayer.h"
#include "display/even_chroma.h"
#include "util/win_handles.h"
#include "util/window_lock.h"

/// Shows frames through an SDL renderer on the client's window: one streaming YV12 texture of the video size,
/// stretched over the whole client area.
///
/// Results are 0 and 1. Threads: frames on any thread, window changes on the window's own; one re-entrant
/// lock serialises them. InitDraw with a new window and FreeDraw belong on the window's thread, since SDL
/// exchanges the window's procedure there.
class SDLDisplayer : public BaseDisplayer {
 public:
  SDLDisplayer();
  ~SDLDisplayer() override;

  int32_t Display(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV, int32_t strideV,
                  uint32_t param1, int64_t param2) override;
  void SetOSDText(int32_t index, const char* text, uint32_t x, uint32_t y, uint32_t anchor,
                  uint32_t color) override;

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
  uint32_t Bind();
  void CreateWindowOnClient();
  bool SetVideoSize(int32_t width, int32_t height);
  void AdjustDisplayRect(int32_t width, int32_t height);
  bool ResetRender();
  bool ResetTexture();
  bool PostEvent(uint32_t type, int32_t first, int32_t second);
  void HandleOwnEvent(uint32_t type, int32_t first, int32_t second);
  void ReleaseSdlObjects();
  void ShowPlayWnd() const;
  uint32_t RequestTeardown();
  uint32_t Teardown();
  void ForgetPlayWnd();

  bool IsReady() const;
  void CatchUpWithWindow();
  void RebuildLostDevice();
  bool Present(const FrameView& frame, const MosaicSettings& mosaic);
  bool Upload(const FrameView& frame);
  DisplayMap Map() const;
  void DrawTexts();
  void DrawMosaic(const MosaicSettings& mosaic);
  static void OnRedraw(HWND hwnd, WPARAM pane);
  void CallFlashCallback();

  PaneEvents m_events;
  std::atomic<uint32_t> m_bound{0};
  std::atomic<uint32_t> m_resizePending{0};
  // Teardown, which the destructor runs, releases the textures, then the renderer they belong to, then the
  // window.
  SdlWindow m_sdlWindow;
  SdlTexture m_sdlTexture;
  SdlRenderer m_sdlRenderer;
  SdlOverlays m_overlays;
  SDL_Rect m_displayRect{};
  WindowLock m_lock;  ///< guards every field of this class
  UniqueEvent m_hEvent;

  std::optional<WindowHook> m_hook;                ///< while m_sdlWindow exists
  std::optional<PaneRegistration> m_registration;  ///< while m_sdlWindow exists
  uint32_t m_sdlRun = 0;                           ///< of SDL, in which m_sdlWindow was made
  uint32_t m_deviceGeneration = 0;
  ULONGLONG m_lastRebuild = 0;
  EvenChroma m_evenChroma;
};
