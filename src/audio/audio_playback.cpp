// SPDX-License-Identifier: MIT
// The playback thread of CAudio: it alone opens, feeds and closes the wave-out device.
#include <cstring>
#include <new>

#include "audio/audio.h"
#include "audio/buffer_fill.h"
#include "audio/padded_format.h"
#include "util/contained.h"

namespace libnivral {
namespace {

constexpr DWORD kIdlePollMs = 10;

bool RefuseForMemory(int32_t bytes) {
  CLogFile::GetInstance()->Write(2, L"CAudio::OpenDevice: no memory for %d bytes", bytes);
  return false;
}

}  // namespace

/// The client's callback as the source of a buffer's samples.
class CAudio::ClientSource final : public SampleSource {
 public:
  explicit ClientSource(CAudio& player) : m_player(player) {}

  bool Stopped() const override { return m_player.Stopped(); }
  std::optional<int> Pull(std::span<uint8_t> buffer) override {
    // Copied out, so that the client's code runs without a lock of ours.
    const WriteWaveCallback callback = m_player.ReadCallback();
    if (!callback.function) return std::nullopt;
    return callback.function(buffer.data(), static_cast<int>(buffer.size()), callback.user);
  }
  void YieldThread() override { SwitchToThread(); }

 private:
  CAudio& m_player;
};

DWORD WINAPI CAudio::PlaybackThread(void* player) {
  auto* self = static_cast<CAudio*>(player);
  if (!self) return 0;
  Contained("CAudio::PlaybackThread", [self] {
    self->OpenDevice();
    self->RunMessageLoop();
  });
  self->CloseDevice();
  return 0;
}

void CAudio::OpenDevice() {
  if (!m_hThread) return;
  const PlaySettings settings = ReadSettings();
  if (!AllocatePlayBuffers(settings.bufferSize) || !OpenWaveOut(settings.format)) return;
  if (!PreparePlayHeaders()) {
    CloseDevice();
    return;
  }
  for (WAVEHDR& header : m_playHeaders)
    waveOutWrite(m_hWaveOut, &header, sizeof(header));
}

/// A size the client got wrong or memory cannot hold leaves the player without a device, as a failed open
/// does.
bool CAudio::AllocatePlayBuffers(int32_t size) {
  if (size <= 0) return false;
  for (int i = 0; i < kBufferCount; ++i) {
    m_playBuffers[i].reset(new (std::nothrow) uint8_t[static_cast<size_t>(size)]);
    if (!m_playBuffers[i]) return RefuseForMemory(size);
    std::memset(m_playBuffers[i].get(), kInitialFill, static_cast<size_t>(size));
    m_playHeaders[i] = WAVEHDR{};
    m_playHeaders[i].lpData = reinterpret_cast<LPSTR>(m_playBuffers[i].get());
    m_playHeaders[i].dwBufferLength = static_cast<DWORD>(size);
    m_playHeaders[i].dwLoops = 1;
  }
  return true;
}

bool CAudio::OpenWaveOut(const WAVEFORMATEX& format) {
  // The device posts to this thread, so its message queue has to exist first.
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  PaddedFormat padded(format);
  if (!padded.get()) return RefuseForMemory(static_cast<int32_t>(sizeof(format) + format.cbSize));
  HWAVEOUT device = nullptr;
  const MMRESULT result = waveOutOpen(&device, WAVE_MAPPER, padded.get(), GetThreadId(m_hThread.get()),
                                      reinterpret_cast<DWORD_PTR>(this), CALLBACK_THREAD);
  if (result != MMSYSERR_NOERROR) {
    CLogFile::GetInstance()->Write(2, L"CAudio::OpenDevice: waveOutOpen failed, result %u", result);
    return false;
  }
  CAutoLock lock(&m_deviceLock);
  m_hWaveOut = device;
  return true;
}

/// False when the device has to be closed. A header refused for an invalid handle is left unprepared.
bool CAudio::PreparePlayHeaders() {
  for (WAVEHDR& header : m_playHeaders) {
    const MMRESULT result = waveOutPrepareHeader(m_hWaveOut, &header, sizeof(header));
    if (result != MMSYSERR_NOERROR && result != MMSYSERR_INVALHANDLE) return false;
  }
  return true;
}

void CAudio::RunMessageLoop() {
  while (!Stopped()) {
    MSG message;
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      HandleMessage(message.message, message.wParam, message.lParam);
    } else {
      Sleep(kIdlePollMs);
    }
  }
}

void CAudio::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != MM_WOM_DONE || Stopped()) return;
  auto* header = reinterpret_cast<WAVEHDR*>(lParam);
  // Anyone may post to a thread; only our own headers are worth following.
  if (header != &m_playHeaders[0] && header != &m_playHeaders[1]) return;
  waveOutPrepareHeader(reinterpret_cast<HWAVEOUT>(wParam), header, sizeof(*header));
  FillAndQueue(*header);
}

bool CAudio::FillAndQueue(WAVEHDR& header) {
  if (Stopped()) return false;
  m_buffersFilled.fetch_add(1, std::memory_order_relaxed);
  ClientSource source(*this);
  FillPlaybackBuffer({reinterpret_cast<uint8_t*>(header.lpData), header.dwBufferLength},
                     m_paused.load(std::memory_order_relaxed), source);
  waveOutWrite(m_hWaveOut, &header, sizeof(header));
  return true;
}

void CAudio::CloseDevice() {
  m_stopped.store(true, std::memory_order_relaxed);
  CAutoLock lock(&m_deviceLock);
  if (m_hWaveOut) {
    waveOutReset(m_hWaveOut);
    waveOutClose(m_hWaveOut);
    // After the close: the device no longer knows the handle and refuses, which is ignored.
    for (WAVEHDR& header : m_playHeaders)
      waveOutUnprepareHeader(m_hWaveOut, &header, sizeof(header));
    m_hWaveOut = nullptr;
  }
  for (auto& buffer : m_playBuffers)
    buffer.reset();
}

}  // namespace libnivral
