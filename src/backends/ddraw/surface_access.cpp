// SPDX-License-Identifier: MIT
#include "backends/ddraw/surface_access.h"

#include "backends/ddraw/ddraw_error.h"

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
