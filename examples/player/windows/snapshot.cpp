// SPDX-License-Identifier: MIT
#include "player/windows/snapshot.h"

#include <shlobj.h>

#include <cstdio>
#include <nivral/nivral.hpp>

#include "player/windows/text.h"

bool SaveSnapshot(const Frame& frame, const std::string& path) {
  const nivral::Frame planes{frame.y, frame.strideY, frame.u, frame.v, frame.strideUV, 0, 0};
  return nivral::SaveBmp(Wide(path).c_str(), planes, static_cast<uint32_t>(frame.width),
                         static_cast<uint32_t>(frame.height));
}

std::string NewSnapshotPath() {
  PWSTR folder = nullptr;
  std::wstring path;
  if (SHGetKnownFolderPath(FOLDERID_Pictures, 0, nullptr, &folder) == S_OK)
    path = std::wstring(folder) + L"\\";
  CoTaskMemFree(folder);
  SYSTEMTIME now{};
  GetLocalTime(&now);
  char name[64];
  std::snprintf(name, sizeof(name), "snapshot %04d-%02d-%02d %02d-%02d-%02d-%03d.bmp", now.wYear, now.wMonth,
                now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
  return Utf8(path) + name;
}
