// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>
// Keeps the order: ddraw.h needs windows.h.
#include <ddraw.h>

#include <cstdint>

#include "backends/ddraw/ddraw_layout.h"
#include "picture/pixel_rect.h"
#include "util/com_ptr.h"

namespace libnivral {

using DDrawSurface = ComPtr<IDirectDrawSurface7>;

/// A DirectDraw object with the screen as its primary surface. Used by one thread at a time.
class DDrawDevice {
 public:
  /// Makes the object and the primary surface. Needs no window.
  HRESULT Create();
  void Release();
  explicit operator bool() const { return static_cast<bool>(m_primary); }

  /// How the screen packs its pixels.
  PixelFormat Format() const { return m_format; }

  /// Makes a surface outside the screen, in the screen's format.
  HRESULT CreateScreenCompatible(uint32_t width, uint32_t height, DDrawSurface& surface) const;
  HRESULT CreateFourCC(DWORD fourCC, uint32_t width, uint32_t height, DDrawSurface& surface) const;
  bool ListsFourCC(DWORD fourCC) const;

  /// Copies a picture into the part of the screen that `area` of the window's client area covers, where the
  /// window can be seen. The picture has the size of the area.
  HRESULT Present(HWND window, IDirectDrawSurface7* picture, const PixelRect& area);

  /// The same for a part of a picture of any size and format, which is stretched over the area. Only for an
  /// area that can be seen as a whole: a scaled picture cannot be cut without its pixels moving.
  HRESULT PresentScaled(HWND window, IDirectDrawSurface7* picture, const PixelRect& part,
                        const PixelRect& area);

  /// Whether all of an area of a window's client area is on the desktop and covered by no other window.
  bool IsFullyVisible(HWND window, const PixelRect& area);

  /// Gives every surface of this object its memory back; contents are undefined afterwards.
  HRESULT Restore() { return m_directDraw->RestoreAllSurfaces(); }

 private:
  HRESULT CreatePrimary();
  HRESULT BindWindow(HWND window);
  HRESULT BlitToScreen(HWND window, IDirectDrawSurface7* picture, const PixelRect& part,
                       const PixelRect& target);
  HRESULT CreateOffscreen(const DDPIXELFORMAT& format, uint32_t width, uint32_t height,
                          DDrawSurface& surface) const;

  ComPtr<IDirectDraw7> m_directDraw;
  DDrawSurface m_primary;
  ComPtr<IDirectDrawClipper> m_clipper;
  DDPIXELFORMAT m_screenFormat{};
  PixelFormat m_format = PixelFormat::Bgrx32;
  HWND m_clippedWindow = nullptr;
};

// Scopes in which the pixels of a surface are in reach.

/// Holds a surface locked for reading and writing.
class SurfaceLock {
 public:
  explicit SurfaceLock(IDirectDrawSurface7* surface, DWORD flags = 0);
  ~SurfaceLock();
  SurfaceLock(const SurfaceLock&) = delete;
  SurfaceLock& operator=(const SurfaceLock&) = delete;

  HRESULT Result() const { return m_result; }
  uint8_t* Pixels() const { return static_cast<uint8_t*>(m_description.lpSurface); }
  int32_t Pitch() const { return m_description.lPitch; }

 private:
  IDirectDrawSurface7* m_surface;
  DDSURFACEDESC2 m_description{};
  HRESULT m_result;
};

/// Holds a GDI device context of a surface.
class SurfaceDC {
 public:
  explicit SurfaceDC(IDirectDrawSurface7* surface);
  ~SurfaceDC();
  SurfaceDC(const SurfaceDC&) = delete;
  SurfaceDC& operator=(const SurfaceDC&) = delete;

  HRESULT Result() const { return m_result; }
  HDC Get() const { return m_dc; }

 private:
  IDirectDrawSurface7* m_surface;
  HDC m_dc = nullptr;
  HRESULT m_result;
};

/// Brings a device context back to the state it had, whatever is done to it in the scope.
class SavedDC {
 public:
  explicit SavedDC(HDC dc) : m_dc(dc), m_state(SaveDC(dc)) {}
  ~SavedDC() { RestoreDC(m_dc, m_state); }
  SavedDC(const SavedDC&) = delete;
  SavedDC& operator=(const SavedDC&) = delete;

 private:
  HDC m_dc;
  int m_state;
};

}  // namespace libnivral
