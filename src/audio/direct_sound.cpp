// SPDX-License-Identifier: MIT
#include "audio/direct_sound.h"

#include <algorithm>
#include <new>

#include "audio/buffer_fill.h"
#include "audio/padded_format.h"
#include "audio/sound_buffer_lock.h"

namespace libnivral {
namespace {
constexpr DWORD kBufferCaps =
    DSBCAPS_CTRLPOSITIONNOTIFY | DSBCAPS_CTRLFX | DSBCAPS_GLOBALFOCUS | DSBCAPS_GETCURRENTPOSITION2;
static_assert(kBufferCaps == 0x18300);
static_assert(sizeof(DSBUFFERDESC) == 40);
}  // namespace

CDirectSound::CDirectSound() {
  for (uint32_t i = 0; i < kSegmentCount; ++i) {
    m_events[i].reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    m_notify[i] = {0, m_events[i].get()};
  }
}

CDirectSound::~CDirectSound() {
  Stop();
  ReleaseDevice();
}

void CDirectSound::SetFormat(const WAVEFORMATEX& format, uint32_t segmentBytes) {
  // The worker and a live buffer go by the sizes they were opened with.
  Stop();
  ReleaseDevice();
  m_format = format;
  m_ring = SegmentRing(segmentBytes);
}

int CDirectSound::Open(HWND window, ByteQueue* queue, void* value) {
  Stop();
  ReleaseDevice();
  m_hWnd = window;
  m_queue = queue;
  m_queueValue = value;
  const bool opened = CreateBuffer() && FillWithInitialLevel() && SetNotifications() && AllocateScratch();
  if (!opened) ReleaseDevice();
  return opened ? 1 : 0;
}

bool CDirectSound::CreateBuffer() {
  if (!m_ring.Usable()) return false;
  if (FAILED(DirectSoundCreate8(nullptr, m_pDevice.put(), nullptr))) return false;
  if (FAILED(m_pDevice->SetCooperativeLevel(m_hWnd, DSSCL_PRIORITY))) return false;
  PaddedFormat format(m_format);
  if (!format.get()) return false;
  DSBUFFERDESC description{};
  description.dwSize = sizeof(description);
  description.dwFlags = kBufferCaps;
  description.dwBufferBytes = m_ring.TotalBytes();
  description.lpwfxFormat = format.get();
  if (FAILED(m_pDevice->CreateSoundBuffer(&description, m_pBuffer.put(), nullptr))) return false;
  return SUCCEEDED(m_pBuffer->QueryInterface(IID_IDirectSoundBuffer8, m_pBuffer8.put_void()));
}

bool CDirectSound::FillWithInitialLevel() {
  const SoundBufferLock lock(*m_pBuffer8.get(), 0, m_ring.TotalBytes());
  if (!lock) return false;
  std::ranges::fill(lock.First(), kInitialFill);
  std::ranges::fill(lock.Second(), m_format.wBitsPerSample == 8 ? uint8_t{128} : uint8_t{0});
  return true;
}

bool CDirectSound::SetNotifications() {
  for (uint32_t i = 0; i < kSegmentCount; ++i)
    m_notify[i].dwOffset = m_ring.SegmentOffset(i);
  ComPtr<IDirectSoundNotify> notify;
  if (FAILED(m_pBuffer8->QueryInterface(IID_IDirectSoundNotify, notify.put_void()))) return false;
  return SUCCEEDED(notify->SetNotificationPositions(kSegmentCount, m_notify));
}

bool CDirectSound::AllocateScratch() {
  m_packetCapacity = size_t{m_packetBytes} * 2;
  m_packet.reset(new (std::nothrow) uint8_t[m_packetCapacity]);
  m_overflow.reset(new (std::nothrow) uint8_t[kOverflowBytes]);
  return m_packet && m_overflow;
}

void CDirectSound::ReleaseDevice() {
  m_pBuffer8.reset();
  m_pBuffer.reset();
  m_pDevice.reset();
  m_packet.reset();
  m_overflow.reset();
}

int CDirectSound::Start() {
  if (m_started || !m_pBuffer8) return 0;
  m_ring.Rewind();
  m_started = true;
  m_pBuffer8->SetCurrentPosition(0);
  m_pBuffer8->Play(0, 0, DSBPLAY_LOOPING);
  if (m_worker.Start(&CDirectSound::RefillThread, this)) return 1;
  Stop();
  return 0;
}

void CDirectSound::Pause(uint32_t paused) {
  if (!m_pBuffer8) return;
  if (paused) {
    m_pBuffer8->Stop();
  } else {
    m_pBuffer8->Play(0, 0, DSBPLAY_LOOPING);
  }
}

void CDirectSound::Stop() {
  if (!m_started) return;
  m_worker.Stop(INFINITE);
  m_pBuffer8->Stop();
  m_started = false;
}

}  // namespace libnivral
