// SPDX-License-Identifier: MIT
#include "audio/audio.h"

#include <cstring>

#include "audio/wave_format.h"

namespace libnivral {

static_assert(sizeof(WAVEFORMATEX) == sizeof(WaveFormat));

CAudio::~CAudio() {
  Stop();
  CloseCapture();
}

void CAudio::SetWaveFormat(const WAVEFORMATEX* format, int32_t bufferSize) {
  if (!format) return;
  CAutoLock lock(&m_settingsLock);
  std::memcpy(&m_waveFormat, format, sizeof(m_waveFormat));
  m_playBufferSize = bufferSize;
}

CAudio::PlaySettings CAudio::ReadSettings() {
  CAutoLock lock(&m_settingsLock);
  return {m_waveFormat, m_playBufferSize};
}

void CAudio::SetWriteWaveCB(void* user, NivralWriteWaveCallback callback) {
  CAutoLock lock(&m_settingsLock);
  m_writeWaveCB = callback;
  m_writeWaveUser = user;
}

CAudio::WriteWaveCallback CAudio::ReadCallback() {
  CAutoLock lock(&m_settingsLock);
  return {m_writeWaveCB, m_writeWaveUser};
}

bool CAudio::Play() {
  CAutoLock control(&m_controlLock);
  if (!Stopped()) return false;
  JoinThread();  // of a run that ended by itself because the device refused a header
  m_stopped.store(false, std::memory_order_relaxed);
  m_paused.store(false, std::memory_order_relaxed);
  // Suspended until its handle is stored: the thread names itself to the device by that handle.
  m_hThread.reset(CreateThread(nullptr, 0, &CAudio::PlaybackThread, this, CREATE_SUSPENDED, nullptr));
  if (!m_hThread) {
    CloseDevice();
    return false;
  }
  ResumeThread(m_hThread.get());
  return true;
}

void CAudio::Stop() {
  CAutoLock control(&m_controlLock);
  m_stopped.store(true, std::memory_order_relaxed);
  JoinThread();
}

void CAudio::JoinThread() {
  if (!m_hThread) return;
  PostThreadMessageW(GetThreadId(m_hThread.get()), WM_QUIT, 0, 0);
  WaitForSingleObject(m_hThread.get(), INFINITE);
  m_hThread.reset();
}

void CAudio::SetVolume(uint32_t percent) {
  CAutoLock device(&m_deviceLock);
  if (m_hWaveOut) waveOutSetVolume(m_hWaveOut, DeviceVolume(percent));
}

int CAudio::GetVolume() {
  CAutoLock device(&m_deviceLock);
  DWORD volume = 0;
  if (m_hWaveOut) waveOutGetVolume(m_hWaveOut, &volume);
  return static_cast<int>(volume);
}

bool CAudio::ApplyPreset(const FormatPreset& preset, WAVEFORMATEX* format) {
  if (format) std::memcpy(format, &preset.format, sizeof(*format));
  CAutoLock lock(&m_settingsLock);
  m_playBufferSize = preset.playBytes;
  m_captureBufferSize = preset.captureBytes;
  return true;
}

bool CAudio::SetNarrowBandPreset(WAVEFORMATEX* format) {
  return ApplyPreset(kNarrowBandPreset, format);
}

bool CAudio::SetWideBandStereoPreset(WAVEFORMATEX* format) {
  return ApplyPreset(kWideBandStereoPreset, format);
}

bool CAudio::SetTelephonyPreset(WAVEFORMATEX* format) {
  return ApplyPreset(kTelephonyPreset, format);
}

bool CAudio::SetMuLawPreset(WAVEFORMATEX* format) {
  return ApplyPreset(kMuLawPreset, format);
}

}  // namespace libnivral
