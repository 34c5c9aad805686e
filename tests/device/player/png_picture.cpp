// SPDX-License-Identifier: MIT
#include "png_picture.h"

// GDI+ wants COM's types, which windows.h leaves out when it is lean, and min and max.
#include <objidl.h>

#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

PngPicture::PngPicture(const std::string& path) {
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) return;
  {
    Gdiplus::Bitmap bitmap(std::wstring(path.begin(), path.end()).c_str());
    if (bitmap.GetLastStatus() == Gdiplus::Ok) {
      m_width = static_cast<int>(bitmap.GetWidth());
      m_height = static_cast<int>(bitmap.GetHeight());
    }
    for (int y = 0; y < m_height; ++y) {
      for (int x = 0; x < m_width; ++x) {
        Gdiplus::Color colour;
        bitmap.GetPixel(x, y, &colour);
        m_pixels.push_back(colour.GetValue());
      }
    }
  }
  Gdiplus::GdiplusShutdown(token);
}

Rgb PngPicture::At(int x, int y) const {
  const uint32_t pixel = m_pixels.at(static_cast<size_t>(y * m_width + x));
  return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255),
          static_cast<int>(pixel & 255)};
}
