// SPDX-License-Identifier: MIT
// The capture path of CAudio: two buffers that go round on the wave-in device. What they hold goes nowhere.
#include <cstring>
#include <new>

#include "audio/audio.h"

namespace libnivral {
namespace {
constexpr int kCloseRounds = 20;
constexpr DWORD kCloseRoundMs = 100;
}  // namespace

bool CAudio::OpenCapture(WAVEFORMATEX* format, int32_t bufferSize) {
  // The buffers of a device that still runs must not be replaced under it.
  if (m_hWaveIn) CloseCapture();
  {
    CAutoLock lock(&m_settingsLock);
    m_captureBufferSize = bufferSize;
  }
  WAVEFORMATEX fixed;
  std::memcpy(&fixed, &kCaptureFormat, sizeof(fixed));
  if (format) *format = fixed;
  m_captureState.store(kCaptureRunning, std::memory_order_release);
  HWAVEIN device = nullptr;
  const MMRESULT result =
      waveInOpen(&device, WAVE_MAPPER, &fixed, reinterpret_cast<DWORD_PTR>(&CAudio::WaveInProc),
                 reinterpret_cast<DWORD_PTR>(this), CALLBACK_FUNCTION);
  if (result != MMSYSERR_NOERROR) return false;
  m_hWaveIn = device;
  for (int i = 0; i < kBufferCount; ++i)
    QueueCaptureBuffer(i, bufferSize);
  waveInStart(m_hWaveIn);
  return true;
}

/// A buffer that memory cannot hold is left out; the other one may still go round.
void CAudio::QueueCaptureBuffer(int index, int32_t size) {
  WAVEHDR& header = m_captureHeaders[index];
  header = WAVEHDR{};
  header.dwLoops = 1;
  if (size <= 0) return;
  m_captureBuffers[index].reset(new (std::nothrow) uint8_t[static_cast<size_t>(size)]);
  if (!m_captureBuffers[index]) return;
  header.lpData = reinterpret_cast<LPSTR>(m_captureBuffers[index].get());
  header.dwBufferLength = static_cast<DWORD>(size);
  waveInPrepareHeader(m_hWaveIn, &header, sizeof(header));
  waveInAddBuffer(m_hWaveIn, &header, sizeof(header));
}

void CALLBACK CAudio::WaveInProc(HWAVEIN device, UINT message, DWORD_PTR instance, DWORD_PTR header,
                                 DWORD_PTR) {
  auto& self = *reinterpret_cast<CAudio*>(instance);
  if (message == MM_WIM_DATA) self.RecycleCaptureBuffer(device, *reinterpret_cast<WAVEHDR*>(header));
  if (message == MM_WIM_CLOSE) self.OnCaptureClosed(device);
}

/// On the system's callback thread. The lock keeps a buffer that is just being handed back from slipping in
/// behind the reset of CloseCapture, where it would keep the device from closing.
void CAudio::RecycleCaptureBuffer(HWAVEIN device, WAVEHDR& header) {
  CAutoLock lock(&m_captureLock);
  if (m_captureState.load(std::memory_order_acquire) != kCaptureRunning) return;
  if (waveInUnprepareHeader(device, &header, sizeof(header)) != MMSYSERR_NOERROR) return;
  if (waveInPrepareHeader(device, &header, sizeof(header)) != MMSYSERR_NOERROR) return;
  waveInAddBuffer(device, &header, sizeof(header));
}

void CAudio::OnCaptureClosed(HWAVEIN device) {
  for (WAVEHDR& header : m_captureHeaders)
    waveInUnprepareHeader(device, &header, sizeof(header));
  // Released to CloseCapture, which frees what the headers point at.
  m_captureState.store(kCaptureClosed, std::memory_order_release);
}

bool CAudio::BeginCaptureClose() {
  CAutoLock lock(&m_captureLock);
  uint8_t running = kCaptureRunning;
  return m_captureState.compare_exchange_strong(running, kCaptureClosing);
}

bool CAudio::CloseCapture() {
  if (!BeginCaptureClose()) return true;
  waveInReset(m_hWaveIn);
  waveInClose(m_hWaveIn);
  for (int i = 0; i < kCloseRounds && m_captureState.load(std::memory_order_acquire) != kCaptureClosed; ++i)
    Sleep(kCloseRoundMs);
  m_hWaveIn = nullptr;
  for (auto& buffer : m_captureBuffers)
    buffer.reset();
  return true;
}

}  // namespace libnivral
