// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_events.h"

#include <atomic>

#include "backends/sdl2/sdl_displayer.h"

namespace {

/// Events of our windows that may be waiting in the queue before they are cleared out. SDL's queue holds
/// 65535 and refuses everything once it is full.
constexpr int kMaxWaiting = 512;

thread_local RenderScope* t_renderScope = nullptr;
thread_local bool t_passingOnSizeChange = false;
std::atomic<int> g_waiting{0};
std::atomic<uint32_t> g_deviceGeneration{0};

SDLDisplayer* DisplayerOf(uint32_t windowId) {
  SDL_Window* window = SDL_GetWindowFromID(windowId);
  return window ? static_cast<SDLDisplayer*>(SDL_GetWindowData(window, kDisplayerKey)) : nullptr;
}

/// Types of SDL's own that name their window at the place where SDL_WindowEvent does.
bool NamesWindow(uint32_t type) {
  return type == SDL_WINDOWEVENT || (type >= SDL_KEYDOWN && type <= SDL_TEXTINPUT) ||
         (type >= SDL_MOUSEMOTION && type <= SDL_MOUSEWHEEL);
}

/// Keeps what is not about our windows.
int SDLCALL KeepForeign(void*, SDL_Event* event) {
  return NamesWindow(event->type) && DisplayerOf(event->window.windowID) ? 0 : 1;
}

int SDLCALL KeepOthers(void* windowId, SDL_Event* event) {
  return NamesWindow(event->type) && event->window.windowID == *static_cast<const uint32_t*>(windowId) ? 0
                                                                                                       : 1;
}

void CountWaiting() {
  if (g_waiting.fetch_add(1, std::memory_order_relaxed) < kMaxWaiting) return;
  g_waiting.store(0, std::memory_order_relaxed);
  SDL_FilterEvents(&KeepForeign, nullptr);
}

bool IsSizeChange(const SDL_Event& event) {
  return event.type == SDL_WINDOWEVENT && (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED ||
                                           event.window.event == SDL_WINDOWEVENT_DISPLAY_CHANGED);
}

void NoteDeviceReset(uint32_t type) {
  if (type == SDL_RENDER_DEVICE_RESET) g_deviceGeneration.fetch_add(1, std::memory_order_relaxed);
  if (t_renderScope) t_renderScope->CountReset();
}

void TakeOffQueue(uint32_t firstType, uint32_t lastType, int count) {
  SDL_Event taken;
  while (count-- > 0 && SDL_PeepEvents(&taken, 1, SDL_GETEVENT, firstType, lastType) > 0) {
  }
}

}  // namespace

int SDLCALL FilterEvent(void*, SDL_Event* event) {
  if (event->type == SDL_RENDER_DEVICE_RESET || event->type == SDL_RENDER_TARGETS_RESET)
    NoteDeviceReset(event->type);
  SDLDisplayer* displayer = DisplayerOf(event->window.windowID);
  if (!displayer) return 1;
  if (NamesWindow(event->type)) CountWaiting();
  if (IsSizeChange(*event) && !t_passingOnSizeChange) {
    displayer->OnWindowSizeChanged();
    return 0;
  }
  if (event->type == SDL_WINDOWEVENT && event->window.event == SDL_WINDOWEVENT_EXPOSED)
    displayer->OnExposed();
  if (event->type == kSizeChangeEvent || event->type == kTeardownEvent)
    displayer->OnOwnEvent(event->type, event->window.data1, event->window.data2);
  return 1;
}

void PassOnSizeChange(SDL_Window* window) {
  SDL_Event event{};
  event.type = SDL_WINDOWEVENT;
  event.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
  event.window.windowID = SDL_GetWindowID(window);
  SDL_GetWindowSize(window, &event.window.data1, &event.window.data2);
  t_passingOnSizeChange = true;
  SDL_PushEvent(&event);
  t_passingOnSizeChange = false;
}

bool PushOwnEvent(SDL_Event& event) {
  const bool pushed = SDL_PushEvent(&event) == 1;
  if (pushed) TakeOffQueue(kSizeChangeEvent, kTeardownEvent, 1);
  return pushed;
}

void DropEventsOf(uint32_t windowId) {
  SDL_FilterEvents(&KeepOthers, &windowId);
}

RenderScope::RenderScope() : m_outer(t_renderScope) {
  t_renderScope = this;
}

RenderScope::~RenderScope() {
  t_renderScope = m_outer;
  TakeOffQueue(SDL_RENDER_TARGETS_RESET, SDL_RENDER_DEVICE_RESET, m_resets);
}

uint32_t RenderDeviceGeneration() {
  return g_deviceGeneration.load(std::memory_order_relaxed);
}
