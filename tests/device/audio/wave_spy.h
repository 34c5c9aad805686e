// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "support/import_patch.h"
#include "support/wait.h"

/// A function's name as an argument of templates.
template <size_t kSize>
struct WaveName {
  consteval WaveName(const char (&name)[kSize]) { std::copy_n(name, kSize, text); }
  char text[kSize];
};

/// Watches the wave-out and wave-in calls of this program on their way to the real devices, and refuses those
/// that a test wants refused. One at a time.
class WaveSpy {
 public:
  WaveSpy() {
    s_spy = this;
    Watch<"waveOutOpen">(&waveOutOpen);
    Watch<"waveOutPrepareHeader">(&waveOutPrepareHeader);
    Watch<"waveOutUnprepareHeader">(&waveOutUnprepareHeader);
    Watch<"waveOutWrite">(&waveOutWrite);
    Watch<"waveOutReset">(&waveOutReset);
    Watch<"waveOutClose">(&waveOutClose);
    Watch<"waveOutSetVolume">(&waveOutSetVolume);
    Watch<"waveInOpen">(&waveInOpen);
    Watch<"waveInPrepareHeader">(&waveInPrepareHeader);
    Watch<"waveInAddBuffer">(&waveInAddBuffer);
    Watch<"waveInReset">(&waveInReset);
  }

  /// Names of the calls so far, in order, without "wave".
  std::vector<std::string> Calls() const {
    const std::lock_guard lock(m_mutex);
    return m_calls;
  }
  ptrdiff_t Count(const std::string& name) const { return std::ranges::count(Calls(), name); }
  bool WaitFor(const std::string& name, ptrdiff_t count = 1) const {
    return WaitUntil([&] { return Count(name) >= count; });
  }

  /// What each waveOutWrite was given.
  std::vector<std::vector<uint8_t>> Writes() const {
    const std::lock_guard lock(m_mutex);
    return m_writes;
  }
  bool WaitForWrites(size_t count) const { return WaitFor("OutWrite", static_cast<ptrdiff_t>(count)); }

  /// Decides the result of a call by its name and how often it was made before; 0 goes to the device.
  std::function<MMRESULT(const std::string& name, ptrdiff_t before)> fault;

  struct {
    UINT id = 0;
    WAVEFORMATEX format{};
    DWORD_PTR target = 0;
    DWORD_PTR instance = 0;
    DWORD flags = 0;
  } opened;  ///< by the last waveOutOpen
  DWORD volume = 0;

 private:
  template <WaveName kName, class... Arguments>
  void Watch(MMRESULT(WINAPI*)(Arguments...)) {
    m_patches.push_back(std::make_unique<ImportPatch>("winmm.dll", kName.text, &Pass<kName, Arguments...>));
  }

  template <WaveName kName, class... Arguments>
  static MMRESULT WINAPI Pass(Arguments... arguments) {
    const MMRESULT refused = s_spy->Note(kName.text + std::string_view("wave").size(), arguments...);
    return refused ? refused
                   : RealFunction<MMRESULT WINAPI(Arguments...)>("winmm.dll", kName.text)(arguments...);
  }

  template <class... Arguments>
  MMRESULT Note(const std::string& name, Arguments... arguments) {
    const ptrdiff_t before = Count(name);
    {
      const std::lock_guard lock(m_mutex);
      Look(name, arguments...);
      m_calls.push_back(name);
    }
    return fault ? fault(name, before) : MMSYSERR_NOERROR;
  }

  void Look(const std::string&, HWAVEOUT*, UINT id, const WAVEFORMATEX* format, DWORD_PTR target,
            DWORD_PTR instance, DWORD flags) {
    opened = {id, *format, target, instance, flags};
  }
  void Look(const std::string& name, HWAVEOUT, WAVEHDR* header, UINT) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(header->lpData);
    if (name == "OutWrite") m_writes.emplace_back(bytes, bytes + header->dwBufferLength);
  }
  void Look(const std::string&, HWAVEOUT, DWORD asked) { volume = asked; }
  template <class... Others>
  void Look(const std::string&, Others...) {}

  static inline WaveSpy* s_spy = nullptr;
  mutable std::mutex m_mutex;
  std::vector<std::string> m_calls;
  std::vector<std::vector<uint8_t>> m_writes;
  std::vector<std::unique_ptr<ImportPatch>> m_patches;
};
