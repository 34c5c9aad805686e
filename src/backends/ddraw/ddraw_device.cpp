// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_device.h"

#include <algorithm>
#include <memory>
#include <new>

#include "backends/ddraw/ddraw_error.h"
#include "backends/ddraw/ddraw_layout.h"

namespace libnivral {
namespace {

PixelRect DesktopBounds() {
  const int left = GetSystemMetrics(SM_XVIRTUALSCREEN);
  const int top = GetSystemMetrics(SM_YVIRTUALSCREEN);
  return {left, top, left + GetSystemMetrics(SM_CXVIRTUALSCREEN), top + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

RECT ToRect(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}

/// An area of a window's client area in screen coordinates; empty when the window is gone.
PixelRect OnScreen(HWND window, const PixelRect& area) {
  POINT origin{area.left, area.top};
  if (!ClientToScreen(window, &origin)) return {};
  return {origin.x, origin.y, origin.x + static_cast<int32_t>(area.Width()),
          origin.y + static_cast<int32_t>(area.Height())};
}

}  // namespace

HRESULT DDrawDevice::Create() {
  Release();
  void* object = nullptr;
  HRESULT hr = LogFailure("Create: DirectDrawCreateEx",
                          DirectDrawCreateEx(nullptr, &object, IID_IDirectDraw7, nullptr));
  if (FAILED(hr)) return hr;
  m_directDraw.reset(static_cast<IDirectDraw7*>(object));
  hr = LogFailure("Create: SetCooperativeLevel",
                  m_directDraw->SetCooperativeLevel(nullptr, DDSCL_NORMAL | DDSCL_MULTITHREADED));
  if (SUCCEEDED(hr)) hr = CreatePrimary();
  if (FAILED(hr)) Release();
  return hr;
}

HRESULT DDrawDevice::CreatePrimary() {
  DDSURFACEDESC2 description{};
  description.dwSize = sizeof(description);
  description.dwFlags = DDSD_CAPS;
  description.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
  HRESULT hr = LogFailure("CreatePrimary: CreateSurface",
                          m_directDraw->CreateSurface(&description, m_primary.put(), nullptr));
  if (FAILED(hr)) return hr;

  m_screenFormat.dwSize = sizeof(m_screenFormat);
  hr = LogFailure("CreatePrimary: GetPixelFormat", m_primary->GetPixelFormat(&m_screenFormat));
  if (FAILED(hr)) return hr;
  const auto format = IdentifyPixels(m_screenFormat.dwRGBBitCount, m_screenFormat.dwRBitMask,
                                     m_screenFormat.dwGBitMask, m_screenFormat.dwBBitMask);
  if (!format) return LogFailure("CreatePrimary: IdentifyPixels", DDERR_INVALIDPIXELFORMAT);
  m_format = *format;
  return DD_OK;
}

/// A new clipper for each window: Wine looks at a clipper's window only when the surface gets the clipper,
/// and paints over other windows without it.
HRESULT DDrawDevice::BindWindow(HWND window) {
  if (window == m_clippedWindow) return DD_OK;
  m_clipper.reset();
  HRESULT hr =
      LogFailure("BindWindow: CreateClipper", m_directDraw->CreateClipper(0, m_clipper.put(), nullptr));
  if (SUCCEEDED(hr)) hr = LogFailure("BindWindow: SetHWnd", m_clipper->SetHWnd(0, window));
  if (SUCCEEDED(hr)) hr = LogFailure("BindWindow: SetClipper", m_primary->SetClipper(m_clipper.get()));
  m_clippedWindow = SUCCEEDED(hr) ? window : nullptr;
  return hr;
}

void DDrawDevice::Release() {
  m_clipper.reset();
  m_primary.reset();
  m_directDraw.reset();
  m_clippedWindow = nullptr;
}

HRESULT DDrawDevice::CreateScreenCompatible(uint32_t width, uint32_t height, DDrawSurface& surface) const {
  return CreateOffscreen(m_screenFormat, width, height, surface);
}

HRESULT DDrawDevice::CreateFourCC(DWORD fourCC, uint32_t width, uint32_t height,
                                  DDrawSurface& surface) const {
  DDPIXELFORMAT format{};
  format.dwSize = sizeof(format);
  format.dwFlags = DDPF_FOURCC;
  format.dwFourCC = fourCC;
  return CreateOffscreen(format, width, height, surface);
}

HRESULT DDrawDevice::CreateOffscreen(const DDPIXELFORMAT& format, uint32_t width, uint32_t height,
                                     DDrawSurface& surface) const {
  surface.reset();
  DDSURFACEDESC2 description{};
  description.dwSize = sizeof(description);
  description.dwFlags = DDSD_CAPS | DDSD_WIDTH | DDSD_HEIGHT | DDSD_PIXELFORMAT;
  description.dwWidth = width;
  description.dwHeight = height;
  description.ddpfPixelFormat = format;
  description.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN;
  return LogFailure("CreateOffscreen: CreateSurface",
                    m_directDraw->CreateSurface(&description, surface.put(), nullptr));
}

bool DDrawDevice::ListsFourCC(DWORD fourCC) const {
  DWORD count = 0;
  if (FAILED(m_directDraw->GetFourCCCodes(&count, nullptr)) || count == 0) return false;
  const std::unique_ptr<DWORD[]> codes(new (std::nothrow) DWORD[count]);
  if (!codes || FAILED(m_directDraw->GetFourCCCodes(&count, codes.get()))) return false;
  return std::find(codes.get(), codes.get() + count, fourCC) != codes.get() + count;
}

HRESULT DDrawDevice::Present(HWND window, IDirectDrawSurface7* picture, const PixelRect& area) {
  const PixelRect screen = OnScreen(window, area);
  // A destination that reaches beyond the desktop is refused even with a clipper.
  const ScreenCopy copy = CutToScreen(screen.left, screen.top, static_cast<int32_t>(screen.Width()),
                                      static_cast<int32_t>(screen.Height()), DesktopBounds());
  return copy.target.Empty() ? DD_OK : BlitToScreen(window, picture, copy.source, copy.target);
}

HRESULT DDrawDevice::PresentScaled(HWND window, IDirectDrawSurface7* picture, const PixelRect& part,
                                   const PixelRect& area) {
  const PixelRect screen = OnScreen(window, area);
  return screen.Empty() ? DD_OK : BlitToScreen(window, picture, part, screen);
}

bool DDrawDevice::IsFullyVisible(HWND window, const PixelRect& area) {
  RECT wanted = ToRect(OnScreen(window, area));
  if (FAILED(BindWindow(window))) return false;
  struct {
    RGNDATAHEADER header;
    RECT only;
  } visible{};
  // Fails for want of room when there is more than one rectangle to be seen.
  DWORD size = sizeof(visible);
  return SUCCEEDED(m_clipper->GetClipList(&wanted, reinterpret_cast<RGNDATA*>(&visible), &size)) &&
         visible.header.nCount == 1 && EqualRect(&visible.only, &wanted);
}

HRESULT DDrawDevice::BlitToScreen(HWND window, IDirectDrawSurface7* picture, const PixelRect& part,
                                  const PixelRect& target) {
  const HRESULT hr = BindWindow(window);
  if (FAILED(hr)) return hr;
  RECT from = ToRect(part);
  RECT to = ToRect(target);
  return LogFailure("Present: Blt", m_primary->Blt(&to, picture, &from, DDBLT_WAIT, nullptr));
}

SurfaceLock::SurfaceLock(IDirectDrawSurface7* surface, DWORD flags) : m_surface(surface) {
  m_description.dwSize = sizeof(m_description);
  m_result =
      LogFailure("SurfaceLock: Lock", surface->Lock(nullptr, &m_description, DDLOCK_WAIT | flags, nullptr));
}

SurfaceLock::~SurfaceLock() {
  if (SUCCEEDED(m_result)) m_surface->Unlock(nullptr);
}

SurfaceDC::SurfaceDC(IDirectDrawSurface7* surface)
    : m_surface(surface), m_result(LogFailure("SurfaceDC: GetDC", surface->GetDC(&m_dc))) {
}

SurfaceDC::~SurfaceDC() {
  if (SUCCEEDED(m_result)) m_surface->ReleaseDC(m_dc);
}

}  // namespace libnivral
