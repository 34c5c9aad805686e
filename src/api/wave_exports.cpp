// SPDX-License-Identifier: MIT
// NIVRAL_WV*: each checks the handle and forwards to one operation of the player behind it.
#include <new>

#include "api/guard.h"
#include "audio/audio.h"
#include "nivral/nivral.h"

using namespace libnivral;  // NOLINT(google-global-names-in-headers): no header

extern "C" {

uint32_t NIVRAL_CALL NIVRAL_WVOpenWave(void** phWave) {
  if (!phWave) return kApiFailed;
  return Guarded([&] {
    auto* player = new (std::nothrow) CAudio;
    if (!player) return kApiFailed;
    *phWave = player;
    return kApiOk;
  });
}

uint32_t NIVRAL_CALL NIVRAL_WVCloseWave(void* hWave) {
  return Forward<CAudio>(hWave, [](CAudio& a) { delete &a; });
}

uint32_t NIVRAL_CALL NIVRAL_WVSetWaveFormat(void* hWave, const WAVEFORMATEX* format, uint32_t bufferSize) {
  return Forward<CAudio>(hWave,
                         [&](CAudio& a) { a.SetWaveFormat(format, static_cast<int32_t>(bufferSize)); });
}

uint32_t NIVRAL_CALL NIVRAL_WVSetWriteWaveCB(void* hWave, void* user, NivralWriteWaveCallback callback) {
  return Forward<CAudio>(hWave, [&](CAudio& a) { a.SetWriteWaveCB(user, callback); });
}

uint32_t NIVRAL_CALL NIVRAL_WVPlayWave(void* hWave) {
  return Forward<CAudio>(hWave, [](CAudio& a) { a.Play(); });
}

uint32_t NIVRAL_CALL NIVRAL_WVPauseWave(void* hWave, uint32_t paused) {
  return Forward<CAudio>(hWave, [&](CAudio& a) { a.Pause(paused); });
}

uint32_t NIVRAL_CALL NIVRAL_WVStopWave(void* hWave) {
  return Forward<CAudio>(hWave, [](CAudio& a) { a.Stop(); });
}

uint32_t NIVRAL_CALL NIVRAL_WVSetVolume(void* hWave, uint16_t volume) {
  return Forward<CAudio>(hWave, [&](CAudio& a) { a.SetVolume(volume); });
}

}  // extern "C"
