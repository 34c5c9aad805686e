// SPDX-License-Identifier: MIT
#include "player/windows/screenshot.h"

// GDI+ wants COM's types, which windows.h leaves out when it is lean, and min and max.
#include <objidl.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include "player/windows/text.h"

namespace {

struct DcDeleter {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using UniqueDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

struct ScreenDc {
  ScreenDc() : dc(GetDC(nullptr)) {}
  ~ScreenDc() { ReleaseDC(nullptr, dc); }
  ScreenDc(const ScreenDc&) = delete;
  ScreenDc& operator=(const ScreenDc&) = delete;
  HDC dc;
};

struct GdiPlus {
  GdiPlus() {
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok)
      throw std::runtime_error("GDI+ is not available");
  }
  ~GdiPlus() { Gdiplus::GdiplusShutdown(token); }
  GdiPlus(const GdiPlus&) = delete;
  GdiPlus& operator=(const GdiPlus&) = delete;
  ULONG_PTR token = 0;
};

/// From the screen, since a window's own device context does not see what graphics interfaces presented.
UniqueBitmap Capture(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  const ScreenDc screen;
  UniqueBitmap bitmap(CreateCompatibleBitmap(screen.dc, width, height));
  const UniqueDc memory(CreateCompatibleDC(screen.dc));
  HGDIOBJ previous = SelectObject(memory.get(), bitmap.get());
  BitBlt(memory.get(), 0, 0, width, height, screen.dc, area.left, area.top, SRCCOPY);
  SelectObject(memory.get(), previous);
  return bitmap;
}

}  // namespace

void SaveScreenshot(HWND window, const std::string& path) {
  // The PNG encoder of GDI+.
  constexpr CLSID kPng{0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
  const UniqueBitmap picture = Capture(window);
  const GdiPlus gdiPlus;
  Gdiplus::Bitmap bitmap(picture.get(), nullptr);
  if (bitmap.Save(Wide(path).c_str(), &kPng, nullptr) != Gdiplus::Ok)
    throw std::runtime_error(path + ": the screenshot could not be written");
}
