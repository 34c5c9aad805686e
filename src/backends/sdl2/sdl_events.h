// SPDX-License-Identifier: MIT
// The library's traffic through SDL's process-wide event queue.
#pragma once

#include <SDL.h>

#include <cstdint>

/// Events of our own. They use the layout of SDL_WindowEvent: windowID names the pane, data1 and data2 carry
/// values.
constexpr uint32_t kSizeChangeEvent = 0x8123;  ///< data1, data2: the new video size
constexpr uint32_t kTeardownEvent = 0x8124;

/// SDL window data and window property that hold the SDLDisplayer of a window.
constexpr char kDisplayerKey[] = "sdl2-display";

/// Installed once per process; runs for every event, in the thread that pushes it. SDL holds its lock of
/// event watchers meanwhile, which is why neither client code nor anything that waits for a pane's lock is
/// called from it: a drawing thread holds its pane's lock when it pushes events. Returns 1, so that every
/// event is queued as well, but for a window's size change, see below.
int SDLCALL FilterEvent(void* user, SDL_Event* event);

/// SDL's renderers react to a size change on the thread that owns the window, unsynchronised with a thread
/// that draws. The filter therefore holds such events back and tells the pane, whose drawing thread passes
/// them on with this.
void PassOnSizeChange(SDL_Window* window);

/// Pushes an event of our own and takes it off the queue again, which nobody may be polling. Whether SDL took
/// it.
bool PushOwnEvent(SDL_Event& event);

/// Clears the queue of what a window that is gone has left in it.
void DropEventsOf(uint32_t windowId);

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

/// Counts device losses that took renderers and textures with them; a pane that sees it move rebuilds its
/// own.
uint32_t RenderDeviceGeneration();
