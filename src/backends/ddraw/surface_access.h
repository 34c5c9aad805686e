// SPDX-License-Identifier: MIT
// Scopes in which the pixels of a surface are in reach.
#pragma once

#include <windows.h>
// Keeps the order: ddraw.h needs windows.h.
#include <ddraw.h>

#include <cstdint>

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
