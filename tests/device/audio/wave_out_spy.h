// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "support/import_patch.h"

/// Watches every wave-out call of this program on its way to the real device, and answers some of them itself
/// where a test asks for a fault. One at a time.
class WaveOutSpy {
 public:
  WaveOutSpy();
  ~WaveOutSpy();

  /// Names of the calls so far, in order, without "waveOut".
  std::vector<std::string> Calls() const;
  /// What each waveOutWrite was given.
  std::vector<std::vector<uint8_t>> Writes() const;
  /// Waits until `count` buffers have been queued; false after a minute.
  bool WaitForWrites(size_t count) const;

  /// Decides the result of a call by its name and how often it was made before; 0 goes to the device.
  std::function<MMRESULT(const std::string& name, int before)> fault;

  // Arguments of the last waveOutOpen and waveOutSetVolume.
  UINT deviceId = 0;
  WAVEFORMATEX format{};
  DWORD_PTR target = 0;
  DWORD_PTR instance = 0;
  DWORD openFlags = 0;
  DWORD volume = 0;

 private:
  MMRESULT Note(const char* name);

  static MMRESULT WINAPI Open(HWAVEOUT*, UINT, const WAVEFORMATEX*, DWORD_PTR, DWORD_PTR, DWORD);
  static MMRESULT WINAPI Prepare(HWAVEOUT, WAVEHDR*, UINT);
  static MMRESULT WINAPI Unprepare(HWAVEOUT, WAVEHDR*, UINT);
  static MMRESULT WINAPI Write(HWAVEOUT, WAVEHDR*, UINT);
  static MMRESULT WINAPI Reset(HWAVEOUT);
  static MMRESULT WINAPI Close(HWAVEOUT);
  static MMRESULT WINAPI SetVolume(HWAVEOUT, DWORD);

  mutable std::mutex m_mutex;
  std::vector<std::string> m_calls;
  std::vector<std::vector<uint8_t>> m_writes;
  std::vector<std::unique_ptr<ImportPatch>> m_patches;
};
