// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <dsound.h>

#include <cstdint>
#include <memory>
#include <span>

#include "audio/buffer_fill.h"
#include "util/com_ptr.h"
#include "util/thread_base.h"
#include "util/win_handles.h"

namespace libnivral {

/// PCM player on DirectSound: a looping buffer of four segments, of which a worker thread refills one each
/// time the play cursor enters the next. Driven from one thread. A derived class calls Stop in its own
/// destructor, before what ConvertPacket uses is gone.
class CDirectSound {
 public:
  CDirectSound();
  virtual ~CDirectSound();
  CDirectSound(const CDirectSound&) = delete;
  CDirectSound& operator=(const CDirectSound&) = delete;

  /// Both are set before Open; closes what is open. segmentBytes is a quarter of the buffer.
  void SetFormat(const WAVEFORMATEX& format, uint32_t segmentBytes);
  /// The largest packet that is converted whole; of a longer one the rest is dropped.
  void SetPacketBytes(uint32_t bytes) { m_packetBytes = bytes; }

  /// Opens the default device. The queue stays the caller's and outlives the player; `value` is kept beside
  /// it for the caller. 1 on success, else 0 with nothing held.
  int Open(HWND window, ByteQueue* queue, void* value);
  /// 1 when playing began; 0 when it had been started before, without Open, or without a worker thread.
  int Start();
  /// Not 0 holds the buffer, 0 lets it loop on.
  void Pause(uint32_t paused);
  void Stop();

  void* QueueValue() const { return m_queueValue; }

 protected:
  /// Makes 16-bit samples of a packet's data: writes them to `room` and returns their number. Called on the
  /// worker thread, before each part's first packet with an empty one for what an earlier packet left over.
  /// Makes nothing as it stands, so that every segment plays the initial level and the queue is drained.
  virtual uint16_t ConvertPacket(std::span<const uint8_t> packet, std::span<uint8_t> room);

 private:
  static constexpr uint32_t kOverflowBytes = 102400;
  /// Room for the largest packet a decoder hands on, unless the caller knows better.
  static constexpr uint32_t kDefaultPacketBytes = kOverflowBytes / 2;
  class Converter;

  bool CreateBuffer();
  bool FillWithInitialLevel();
  bool SetNotifications();
  bool AllocateScratch();
  void ReleaseDevice();
  static DWORD RefillThread(void* player);
  void RefillUntilStopped();
  void RefillSegment();

  UniqueEvent m_events[kSegmentCount];
  ComPtr<IDirectSound8> m_pDevice;
  ComPtr<IDirectSoundBuffer> m_pBuffer;
  ComPtr<IDirectSoundBuffer8> m_pBuffer8;
  DSBPOSITIONNOTIFY m_notify[kSegmentCount];
  SegmentRing m_ring;
  WAVEFORMATEX m_format{};
  HWND m_hWnd = nullptr;
  ByteQueue* m_queue = nullptr;
  void* m_queueValue = nullptr;
  bool m_started = false;
  uint32_t m_packetBytes = kDefaultPacketBytes;
  size_t m_packetCapacity = 0;
  std::unique_ptr<uint8_t[]> m_packet;
  std::unique_ptr<uint8_t[]> m_overflow;
  CThreadBase m_worker;
};

}  // namespace libnivral
