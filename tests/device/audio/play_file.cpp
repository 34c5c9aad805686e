// SPDX-License-Identifier: MIT
// Plays a raw PCM file through the exports, for record_check.py:
//   play_file FILE RATE CHANNELS BUFFER_BYTES [PAUSE_AT_BUFFER PAUSE_MS]
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "nivral/nivral.h"
#include "support/crash_report.h"

namespace {

struct Track {
  std::vector<uint8_t> bytes;
  size_t position = 0;
  std::atomic<int> buffers{0};

  static int NIVRAL_CALL Pull(uint8_t* buffer, int size, void* user) {
    auto& track = *static_cast<Track*>(user);
    const size_t left = track.bytes.size() - track.position;
    const size_t count = left < static_cast<size_t>(size) ? left : static_cast<size_t>(size);
    std::memset(buffer, 0, static_cast<size_t>(size));
    std::memcpy(buffer, track.bytes.data() + track.position, count);
    track.position += count;
    ++track.buffers;
    return size;
  }
};

bool Load(const char* path, std::vector<uint8_t>& bytes) {
  std::FILE* file = std::fopen(path, "rb");
  if (!file) return false;
  uint8_t block[4096];
  while (const size_t count = std::fread(block, 1, sizeof(block), file))
    bytes.insert(bytes.end(), block, block + count);
  std::fclose(file);
  return true;
}

/// False when the device has not asked for that many buffers within a minute.
bool WaitForBuffers(const Track& track, int count) {
  for (int i = 0; i < 12000 && track.buffers < count; ++i)
    Sleep(5);
  return track.buffers >= count;
}

}  // namespace

int main(int argc, char** argv) {
  InstallCrashReport();
  Track track;
  if (argc < 5 || !Load(argv[1], track.bytes)) return 2;
  const auto rate = static_cast<DWORD>(std::atoi(argv[2]));
  const auto channels = static_cast<WORD>(std::atoi(argv[3]));
  const int bufferBytes = std::atoi(argv[4]);
  const auto block = static_cast<WORD>(channels * 2);
  const WAVEFORMATEX format{WAVE_FORMAT_PCM, channels, rate, rate * block, block, 16, 0};

  void* player = nullptr;
  NIVRAL_WVOpenWave(&player);
  NIVRAL_WVSetWaveFormat(player, &format, static_cast<uint32_t>(bufferBytes));
  NIVRAL_WVSetWriteWaveCB(player, &track, &Track::Pull);
  NIVRAL_WVPlayWave(player);
  if (argc > 6 && WaitForBuffers(track, std::atoi(argv[5]))) {
    NIVRAL_WVPauseWave(player, 1);
    Sleep(static_cast<DWORD>(std::atoi(argv[6])));
    NIVRAL_WVPauseWave(player, 0);
  }
  // Three buffers more than the file: by then its last one has left the device.
  const int total = static_cast<int>(track.bytes.size()) / bufferBytes + 4;
  const bool complete = WaitForBuffers(track, total);
  NIVRAL_WVStopWave(player);
  NIVRAL_WVCloseWave(player);
  return complete ? 0 : 1;
}
