// SPDX-License-Identifier: MIT
// Plays a counting pattern for some seconds, through the exports or by the barest wave-out program, with two
// buffers of 1280 bytes of 8 kHz 16-bit mono; for wave_bench.py:  wave_bench exports|paused|bare SECONDS
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "nivral/nivral.h"
#include "util/win_handles.h"

using namespace libnivral;

namespace {

constexpr int kBufferBytes = 1280;
constexpr WAVEFORMATEX kFormat{WAVE_FORMAT_PCM, 1, 8000, 16000, 2, 16, 0};

/// Samples 1 to 32000 round and round, so that zeros and leaps in a recording are faults.
int NIVRAL_CALL Count(uint8_t* buffer, int size, void* user) {
  auto& last = *static_cast<int16_t*>(user);
  for (int i = 0; i + 1 < size; i += 2) {
    last = static_cast<int16_t>(last % 32000 + 1);
    std::memcpy(buffer + i, &last, sizeof(last));
  }
  return size;
}

void PlayThroughExports(DWORD ms, bool paused) {
  int16_t last = 0;
  void* player = nullptr;
  NIVRAL_WVOpenWave(&player);
  NIVRAL_WVSetWaveFormat(player, &kFormat, kBufferBytes);
  NIVRAL_WVSetWriteWaveCB(player, &last, &Count);
  NIVRAL_WVPlayWave(player);
  NIVRAL_WVPauseWave(player, paused);
  Sleep(ms);
  NIVRAL_WVCloseWave(player);
}

void PlayBare(DWORD ms) {
  int16_t last = 0;
  uint8_t buffers[2][kBufferBytes];
  WAVEHDR headers[2]{};
  const UniqueEvent done(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  HWAVEOUT device = nullptr;
  if (waveOutOpen(&device, WAVE_MAPPER, &kFormat, reinterpret_cast<DWORD_PTR>(done.get()), 0, CALLBACK_EVENT))
    return;
  for (int i = 0; i < 2; ++i) {
    Count(buffers[i], kBufferBytes, &last);
    headers[i].lpData = reinterpret_cast<LPSTR>(buffers[i]);
    headers[i].dwBufferLength = kBufferBytes;
    waveOutPrepareHeader(device, &headers[i], sizeof(headers[i]));
    waveOutWrite(device, &headers[i], sizeof(headers[i]));
  }
  for (const ULONGLONG end = GetTickCount64() + ms; GetTickCount64() < end;) {
    WaitForSingleObject(done.get(), 1000);
    for (WAVEHDR& header : headers) {
      if (!(header.dwFlags & WHDR_DONE)) continue;
      Count(reinterpret_cast<uint8_t*>(header.lpData), kBufferBytes, &last);
      waveOutWrite(device, &header, sizeof(header));
    }
  }
  waveOutReset(device);
  for (WAVEHDR& header : headers)
    waveOutUnprepareHeader(device, &header, sizeof(header));
  waveOutClose(device);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const auto ms = static_cast<DWORD>(std::atof(argv[2]) * 1000);
  const bool bare = !std::strcmp(argv[1], "bare");
  if (bare) PlayBare(ms);
  if (!bare) PlayThroughExports(ms, !std::strcmp(argv[1], "paused"));
  return 0;
}
