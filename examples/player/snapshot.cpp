// SPDX-License-Identifier: MIT
#include "player/snapshot.h"

#include <fstream>

#include "player/library.h"

namespace {

template <class Header>
void Write(std::ofstream& file, const Header& header) {
  file.write(reinterpret_cast<const char*>(&header), sizeof(header));
}

}  // namespace

bool SaveSnapshot(const Picture& picture, const std::string& path) {
  // The library's rows are whole pixels, a BMP file's are filled up to four bytes and go from bottom to top.
  const size_t rowSize = static_cast<size_t>(picture.width) * 3;
  const size_t filledRow = (rowSize + 3) / 4 * 4;
  std::vector<uint8_t> rgb(rowSize * static_cast<size_t>(picture.height));
  nivral.yv12_to_rgb24_c(rgb.data(), static_cast<uint32_t>(picture.width), picture.y.data(), picture.u.data(),
                         picture.v.data(), static_cast<uint32_t>(picture.width),
                         static_cast<uint32_t>(picture.strideUV), static_cast<uint32_t>(picture.width),
                         static_cast<uint32_t>(picture.height));
  BITMAPINFOHEADER info{};
  info.biSize = sizeof(info);
  info.biWidth = picture.width;
  info.biHeight = picture.height;
  info.biPlanes = 1;
  info.biBitCount = 24;
  info.biSizeImage = static_cast<DWORD>(filledRow * static_cast<size_t>(picture.height));
  BITMAPFILEHEADER header{};
  header.bfType = 0x4D42;
  header.bfOffBits = sizeof(header) + sizeof(info);
  header.bfSize = header.bfOffBits + info.biSizeImage;

  std::ofstream file(path, std::ios::binary);
  Write(file, header);
  Write(file, info);
  constexpr char kFill[3]{};
  for (size_t row = static_cast<size_t>(picture.height); row-- > 0;) {
    file.write(reinterpret_cast<const char*>(rgb.data() + row * rowSize),
               static_cast<std::streamsize>(rowSize));
    file.write(kFill, static_cast<std::streamsize>(filledRow - rowSize));
  }
  return file.good();
}
