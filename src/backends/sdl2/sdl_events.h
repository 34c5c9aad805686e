// SPDX-License-Identifier: MIT
// The library's traffic through SDL's process-wide event queue.
#pragma once

#include <SDL.h>
#include <windows.h>

#include <atomic>
#include <cstdint>

namespace libnivral {

/// Events of our own. They use the layout of SDL_WindowEvent: windowID names the pane, data1 and data2 carry
/// values.
constexpr uint32_t kSizeChangeEvent = 0x8123;  ///< data1, data2: the new video size
constexpr uint32_t kTeardownEvent = 0x8124;

/// SDL window data and window property that hold the SDLDisplayer of a window.
constexpr char kDisplayerKey[] = "sdl2-display";

/// What the event filter and its pane tell each other.
struct PaneEvents {
  std::atomic<HWND> window{nullptr};  ///< that SDL has taken
  std::atomic<bool> stopped{false};   ///< the client has freed the drawing resources
  std::atomic<bool> frameShown{false};
  std::atomic<bool> windowSizeChanged{false};  ///< set by the filter: the renderer has not been told yet
  std::atomic<bool> redrawPosted{false};       ///< exposures up to its arrival are merged into one message

  /// Whether exposures are to be reported to the client.
  bool WantsFlash() const { return !stopped && frameShown; }
};

/// Makes a pane known to the event filter while an SDL window of its own exists. A link of the filter's list
/// itself, so that there is no memory to want.
class PaneRegistration {
 public:
  PaneRegistration(uint32_t windowId, PaneEvents& events, WPARAM pane);

  /// Waits for a filter that is just dealing with the pane, and clears SDL's queue of what it left.
  ~PaneRegistration();
  PaneRegistration(const PaneRegistration&) = delete;
  PaneRegistration& operator=(const PaneRegistration&) = delete;

  /// The newest of a window; none is null. With the filter's lock held.
  static PaneRegistration* Find(uint32_t windowId);
  PaneEvents& Events() const { return m_events; }
  WPARAM Pane() const { return m_pane; }

 private:
  uint32_t m_windowId;
  PaneEvents& m_events;
  WPARAM m_pane;
  PaneRegistration* m_next;
};

/// Installed once; runs for every event, in the thread that pushes it. SDL holds its lock of event watchers
/// meanwhile, which a drawing thread may want while it holds its pane's lock. So nothing here waits for a
/// pane or calls the client: the filter only leaves notes. Returns 1, so that every event is queued as well,
/// but for a size change of our windows: SDL's renderers would react to it on the window's thread,
/// unsynchronised with the one that draws. That event is held back, and the drawing thread passes it on.
int SDLCALL FilterEvent(void* user, SDL_Event* event);

/// Tells the renderer of a window, on the calling thread, that the window's size changed. Walks SDL's list of
/// windows, as does PushOwnEvent.
void PassOnSizeChange(SDL_Window* window);

/// Pushes an event of our own and takes it off the queue again, which nobody may be polling. The result is
/// that of SDL_PushEvent: 0 when somebody filtered it out, below 0 when the queue is full of the client's
/// events.
int PushOwnEvent(SDL_Event& event);

/// Encloses calls into a renderer. Events that SDL pushes from within when it had to reset a device are taken
/// off the queue at the end.
class RenderScope {
 public:
  RenderScope();
  ~RenderScope();
  RenderScope(const RenderScope&) = delete;
  RenderScope& operator=(const RenderScope&) = delete;

  void CountReset() { ++m_resets; }

 private:
  RenderScope* m_outer;
  int m_resets = 0;
};

/// Counts device losses that took renderers and textures with them; a pane that sees it move rebuilds them.
uint32_t RenderDeviceGeneration();

}  // namespace libnivral
