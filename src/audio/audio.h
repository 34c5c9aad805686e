// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "audio/wave_format.h"
#include "nivral/nivral.h"
#include "util/mutex_lock.h"
#include "util/win_handles.h"

namespace libnivral {

/// PCM player on the wave-out device, with a capture path on the wave-in device.
///
/// Playing runs on a thread of its own that pulls from the client's callback; the other operations may be
/// called from any thread; Play, Stop and destruction not from the callback. Nothing is reported to the
/// client: a device that cannot be opened leaves a thread that waits for Stop.
class CAudio {
 public:
  CAudio() = default;
  virtual ~CAudio();
  CAudio(const CAudio&) = delete;
  CAudio& operator=(const CAudio&) = delete;

  /// Copies 18 bytes; bufferSize is in bytes per buffer. Used by the next Play.
  void SetWaveFormat(const WAVEFORMATEX* format, int32_t bufferSize);
  void SetWriteWaveCB(void* user, NivralWriteWaveCallback callback);

  /// False when the player already runs or its thread could not be made.
  bool Play();
  void Pause(uint32_t paused) { m_paused.store(paused != 0, std::memory_order_relaxed); }
  /// Ends the thread and closes the device before it returns.
  void Stop();

  /// Percent of full volume; forgotten unless the device is open.
  void SetVolume(uint32_t percent);
  /// What the device reports for both channels, 0 while it is closed.
  int GetVolume();

  /// Starts recording at 8 kHz, 16-bit mono into two buffers that go round; *format is overwritten with that
  /// format. False when the device could not be opened; CloseCapture then still takes its two seconds.
  /// Opening and closing are for one thread at a time.
  bool OpenCapture(WAVEFORMATEX* format, int32_t bufferSize);
  /// Waits for the device's close notice, at most two seconds. Always true.
  bool CloseCapture();

  /// Each writes a format to *format and sets both buffer sizes of the player. Always true.
  bool SetNarrowBandPreset(WAVEFORMATEX* format);
  bool SetWideBandStereoPreset(WAVEFORMATEX* format);
  bool SetTelephonyPreset(WAVEFORMATEX* format);
  bool SetMuLawPreset(WAVEFORMATEX* format);

 private:
  static constexpr int kBufferCount = 2;
  static constexpr uint8_t kCaptureRunning = 0;
  static constexpr uint8_t kCaptureClosing = 1;
  static constexpr uint8_t kCaptureClosed = 2;
  class ClientSource;

  struct PlaySettings {
    WAVEFORMATEX format;
    int32_t bufferSize;
  };
  struct WriteWaveCallback {
    NivralWriteWaveCallback function;
    void* user;
  };

  static DWORD WINAPI PlaybackThread(void* player);
  void JoinThread();
  PlaySettings ReadSettings();
  WriteWaveCallback ReadCallback();
  bool Stopped() const { return m_stopped.load(std::memory_order_relaxed); }
  bool ApplyPreset(const FormatPreset& preset, WAVEFORMATEX* format);

  void OpenDevice();
  bool AllocatePlayBuffers(int32_t size);
  bool OpenWaveOut(const WAVEFORMATEX& format);
  bool PreparePlayHeaders();
  void RunMessageLoop();
  void HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);
  bool FillAndQueue(WAVEHDR& header);
  void CloseDevice();

  static void CALLBACK WaveInProc(HWAVEIN device, UINT message, DWORD_PTR instance, DWORD_PTR header,
                                  DWORD_PTR unused);
  void QueueCaptureBuffer(int index, int32_t size);
  void RecycleCaptureBuffer(HWAVEIN device, WAVEHDR& header);
  void OnCaptureClosed(HWAVEIN device);
  bool BeginCaptureClose();

  WAVEHDR m_playHeaders[kBufferCount];
  WAVEHDR m_captureHeaders[kBufferCount];
  std::atomic<uint8_t> m_captureState{kCaptureClosed};
  HWAVEOUT m_hWaveOut = nullptr;
  HWAVEIN m_hWaveIn = nullptr;
  std::unique_ptr<uint8_t[]> m_playBuffers[kBufferCount];
  std::unique_ptr<uint8_t[]> m_captureBuffers[kBufferCount];
  int32_t m_playBufferSize = 1280;
  int32_t m_captureBufferSize = 0;
  // The flags carry no data with them (starting and joining the thread orders the rest), so relaxed is
  // enough.
  std::atomic<bool> m_paused{false};
  std::atomic<uint32_t> m_buffersFilled{0};
  std::atomic<bool> m_stopped{true};
  WAVEFORMATEX m_waveFormat{};
  NivralWriteWaveCallback m_writeWaveCB = nullptr;
  void* m_writeWaveUser = nullptr;
  UniqueThread m_hThread;

  CMutexLock m_controlLock;   // Play and Stop, held while the thread is joined
  CMutexLock m_settingsLock;  // format, sizes and the callback with its user value
  CMutexLock m_captureLock;   // m_captureState against a buffer that is being queued again
  CMutexLock m_deviceLock;    // m_hWaveOut: no volume call on a device that is being closed
};

}  // namespace libnivral
