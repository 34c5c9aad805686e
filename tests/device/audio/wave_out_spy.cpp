// SPDX-License-Identifier: MIT
#include "audio/wave_out_spy.h"

#include <algorithm>
#include <cstring>

#include "audio/player.h"

namespace {
WaveOutSpy* g_spy = nullptr;

template <class Function, class... Arguments>
auto CallReal(const char* name, Arguments... arguments) {
  return RealFunction<Function>("winmm.dll", name)(arguments...);
}
}  // namespace

WaveOutSpy::WaveOutSpy() {
  g_spy = this;
  const auto patch = [this](const char* name, auto* replacement) {
    m_patches.push_back(std::make_unique<ImportPatch>("winmm.dll", name, replacement));
  };
  patch("waveOutOpen", &Open);
  patch("waveOutPrepareHeader", &Prepare);
  patch("waveOutUnprepareHeader", &Unprepare);
  patch("waveOutWrite", &Write);
  patch("waveOutReset", &Reset);
  patch("waveOutClose", &Close);
  patch("waveOutSetVolume", &SetVolume);
}

WaveOutSpy::~WaveOutSpy() {
  m_patches.clear();
  g_spy = nullptr;
}

MMRESULT WaveOutSpy::Note(const char* name) {
  std::lock_guard lock(m_mutex);
  const auto before = static_cast<int>(std::ranges::count(m_calls, name));
  m_calls.emplace_back(name);
  return fault ? fault(name, before) : MMSYSERR_NOERROR;
}

std::vector<std::string> WaveOutSpy::Calls() const {
  std::lock_guard lock(m_mutex);
  return m_calls;
}

std::vector<std::vector<uint8_t>> WaveOutSpy::Writes() const {
  std::lock_guard lock(m_mutex);
  return m_writes;
}

bool WaveOutSpy::WaitForWrites(size_t count) const {
  return WaitUntil([&] { return Writes().size() >= count; });
}

MMRESULT WINAPI WaveOutSpy::Open(HWAVEOUT* device, UINT id, const WAVEFORMATEX* format, DWORD_PTR target,
                                 DWORD_PTR instance, DWORD flags) {
  g_spy->deviceId = id;
  g_spy->format = *format;
  g_spy->target = target;
  g_spy->instance = instance;
  g_spy->openFlags = flags;
  const MMRESULT result = g_spy->Note("Open");
  return result ? result
                : CallReal<decltype(waveOutOpen)>("waveOutOpen", device, id, format, target, instance, flags);
}

MMRESULT WINAPI WaveOutSpy::Prepare(HWAVEOUT device, WAVEHDR* header, UINT size) {
  const MMRESULT result = g_spy->Note("PrepareHeader");
  return result ? result
                : CallReal<decltype(waveOutPrepareHeader)>("waveOutPrepareHeader", device, header, size);
}

MMRESULT WINAPI WaveOutSpy::Unprepare(HWAVEOUT device, WAVEHDR* header, UINT size) {
  const MMRESULT result = g_spy->Note("UnprepareHeader");
  return result ? result
                : CallReal<decltype(waveOutUnprepareHeader)>("waveOutUnprepareHeader", device, header, size);
}

MMRESULT WINAPI WaveOutSpy::Write(HWAVEOUT device, WAVEHDR* header, UINT size) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(header->lpData);
  {
    std::lock_guard lock(g_spy->m_mutex);
    g_spy->m_writes.emplace_back(bytes, bytes + header->dwBufferLength);
  }
  const MMRESULT result = g_spy->Note("Write");
  return result ? result : CallReal<decltype(waveOutWrite)>("waveOutWrite", device, header, size);
}

MMRESULT WINAPI WaveOutSpy::Reset(HWAVEOUT device) {
  const MMRESULT result = g_spy->Note("Reset");
  return result ? result : CallReal<decltype(waveOutReset)>("waveOutReset", device);
}

MMRESULT WINAPI WaveOutSpy::Close(HWAVEOUT device) {
  const MMRESULT result = g_spy->Note("Close");
  return result ? result : CallReal<decltype(waveOutClose)>("waveOutClose", device);
}

MMRESULT WINAPI WaveOutSpy::SetVolume(HWAVEOUT device, DWORD volume) {
  g_spy->volume = volume;
  const MMRESULT result = g_spy->Note("SetVolume");
  return result ? result : CallReal<decltype(waveOutSetVolume)>("waveOutSetVolume", device, volume);
}
