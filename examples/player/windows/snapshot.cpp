// SPDX-License-Identifier: MIT
#include "player/windows/snapshot.h"

#include <shlobj.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nivral/nivral.hpp>
#include <vector>

#include "player/windows/text.h"

namespace {

template <class Header>
void Write(std::ofstream& file, const Header& header) {
  file.write(reinterpret_cast<const char*>(&header), sizeof(header));
}

}  // namespace

bool SaveSnapshot(const Frame& frame, const std::string& path) {
  // The library's rows are whole pixels, a BMP file's are filled up to four bytes and go from bottom to top.
  const auto width = static_cast<uint32_t>(frame.width);
  const auto height = static_cast<uint32_t>(frame.height);
  const size_t rowSize = size_t{width} * 3;
  const size_t filledRow = (rowSize + 3) / 4 * 4;
  std::vector<uint8_t> rgb(rowSize * height);
  NIVRAL_yv12_to_rgb24_c(rgb.data(), width, const_cast<uint8_t*>(frame.y), const_cast<uint8_t*>(frame.u),
                         const_cast<uint8_t*>(frame.v), frame.strideY, frame.strideUV, width, height);
  BITMAPINFOHEADER info{};
  info.biSize = sizeof(info);
  info.biWidth = frame.width;
  info.biHeight = frame.height;
  info.biPlanes = 1;
  info.biBitCount = 24;
  info.biSizeImage = static_cast<DWORD>(filledRow * height);
  BITMAPFILEHEADER header{};
  header.bfType = 0x4D42;
  header.bfOffBits = sizeof(header) + sizeof(info);
  header.bfSize = header.bfOffBits + info.biSizeImage;

  std::ofstream file(std::filesystem::path(Wide(path)), std::ios::binary);
  Write(file, header);
  Write(file, info);
  constexpr char kFill[3]{};
  for (size_t row = height; row-- > 0;) {
    file.write(reinterpret_cast<const char*>(rgb.data() + row * rowSize),
               static_cast<std::streamsize>(rowSize));
    file.write(kFill, static_cast<std::streamsize>(filledRow - rowSize));
  }
  return file.good();
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
