// SPDX-License-Identifier: MIT
#include "backends/yuvdraw/bmp_file.h"

#include <sys/stat.h>

#include <cstdio>
#include <memory>

namespace libnivral {
namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using UniqueFile = std::unique_ptr<std::FILE, FileCloser>;

template <class Integer>
uint8_t* Put(uint8_t* to, Integer value) {
  for (size_t i = 0; i < sizeof(value); ++i)
    *to++ = static_cast<uint8_t>(value >> (8 * i));
  return to;
}

bool Write(std::FILE* file, const uint8_t* bytes, size_t count) {
  return std::fwrite(bytes, 1, count, file) == count;
}

bool WriteRows(std::FILE* file, const uint8_t* bgr, uint32_t width, uint32_t height) {
  const size_t rowBytes = size_t{width} * 3;
  const size_t padding = static_cast<size_t>(BmpRowBytes(width)) - rowBytes;
  if (padding == 0) return Write(file, bgr, rowBytes * height);
  constexpr uint8_t kZeros[3]{};
  for (uint32_t row = 0; row < height; ++row) {
    if (!Write(file, bgr + row * rowBytes, rowBytes) || !Write(file, kZeros, padding)) return false;
  }
  return true;
}

/// Devices stay; what the name stood for before was emptied by opening it.
void RemoveIfRegular(const char* fileName) {
  struct stat status {};
  if (stat(fileName, &status) == 0 && (status.st_mode & S_IFMT) == S_IFREG) std::remove(fileName);
}

}  // namespace

std::array<uint8_t, kBmpHeaderBytes> MakeBmpHeader(uint32_t width, uint32_t height) {
  const auto imageBytes = static_cast<uint32_t>(BmpRowBytes(width) * height);
  std::array<uint8_t, kBmpHeaderBytes> header{'B', 'M'};
  uint8_t* to = Put<uint32_t>(header.data() + 2, imageBytes + kBmpHeaderBytes);
  to = Put<uint32_t>(to, 0);
  to = Put<uint32_t>(to, kBmpHeaderBytes);
  to = Put<uint32_t>(to, 40);
  to = Put<uint32_t>(to, width);
  to = Put<uint32_t>(to, height);
  to = Put<uint16_t>(to, 1);
  to = Put<uint16_t>(to, 24);
  to = Put<uint32_t>(to, 0);
  Put<uint32_t>(to, imageBytes);
  return header;
}

bool WriteBmpFile(const char* fileName, const uint8_t* bgr, uint32_t width, uint32_t height) {
  UniqueFile file(std::fopen(fileName, "wb"));
  // A scanner may hold a file that was there before for a moment.
  if (!file) file.reset(std::fopen(fileName, "wb"));
  if (!file) return false;
  const auto header = MakeBmpHeader(width, height);
  const bool written =
      Write(file.get(), header.data(), header.size()) && WriteRows(file.get(), bgr, width, height);
  // A full disk may show only when the last bytes leave the buffer.
  const bool complete = std::fclose(file.release()) == 0 && written;
  if (!complete) RemoveIfRegular(fileName);
  return complete;
}

}  // namespace libnivral
