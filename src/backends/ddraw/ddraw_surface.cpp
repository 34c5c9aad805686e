// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_surface.h"

#include <algorithm>

#include "backends/ddraw/ddraw_device.h"
#include "backends/ddraw/ddraw_error.h"
#include "colour/convert.h"
#include "picture/frame_view.h"

namespace libnivral {
namespace {

constexpr DWORD kYv12 = MAKEFOURCC('Y', 'V', '1', '2');
constexpr uint32_t kTrialSide = 16;

/// Saturated red: far from black, from grey and from what swapped chroma planes would give, in either range
/// that drivers take YUV in.
constexpr uint8_t kTrialY = 81;
constexpr uint8_t kTrialU = 90;
constexpr uint8_t kTrialV = 240;

/// A YV12 surface in one piece: luma rows of `pitch` bytes, then V and U rows of half the pitch.
FrameView PlanesOf(const SurfaceLock& lock, int32_t height) {
  const auto luma = static_cast<ptrdiff_t>(lock.Pitch()) * height;
  const int32_t half = lock.Pitch() / 2;
  uint8_t* const v = lock.Pixels() + luma;
  return {lock.Pixels(), lock.Pitch(), v + luma / 4, half, v, half};
}

}  // namespace

HRESULT FrameSurface::Create(const DDrawDevice& device, uint32_t width, uint32_t height,
                             UploadFormat format) {
  Release();
  m_width = static_cast<int32_t>(width);
  m_height = static_cast<int32_t>(height);
  m_format = device.Format();
  if (format != UploadFormat::Rgb) {
    const HRESULT hr = CreateYv12(device);
    if (SUCCEEDED(hr) || format == UploadFormat::Yv12) return hr;
  }
  m_uploadFormat = UploadFormat::Rgb;
  return device.CreateScreenCompatible(width + width % 2, height + height % 2, m_surface);
}

HRESULT FrameSurface::CreateYv12(const DDrawDevice& device) {
  if (!device.ListsFourCC(kYv12)) return DDERR_UNSUPPORTED;
  const auto width = static_cast<uint32_t>(m_width + m_width % 2);
  const auto height = static_cast<uint32_t>(m_height + m_height % 2);
  HRESULT hr = device.CreateFourCC(kYv12, width, height, m_surface);
  if (SUCCEEDED(hr)) hr = TryBlit(device);
  m_uploadFormat = UploadFormat::Yv12;
  return hr;
}

HRESULT FrameSurface::TryBlit(const DDrawDevice& device) {
  DDrawSurface target;
  HRESULT hr = device.CreateScreenCompatible(kTrialSide, kTrialSide, target);
  if (FAILED(hr)) return hr;
  {
    const SurfaceLock lock(m_surface.get(), DDLOCK_WRITEONLY);
    if (FAILED(lock.Result())) return lock.Result();
    const FrameView planes = PlanesOf(lock, m_height + m_height % 2);
    const auto luma = static_cast<size_t>(planes.v - planes.y);
    std::fill_n(planes.y, luma, kTrialY);
    std::fill_n(planes.v, luma / 4, kTrialV);
    std::fill_n(planes.u, luma / 4, kTrialU);
  }
  hr = StretchTo(target.get());
  if (FAILED(hr)) return hr;
  const SurfaceLock lock(target.get(), DDLOCK_READONLY);
  if (FAILED(lock.Result())) return lock.Result();
  const uint8_t* centre = lock.Pixels() + static_cast<ptrdiff_t>(kTrialSide / 2) * lock.Pitch() +
                          ptrdiff_t{kTrialSide} / 2 * BytesPerPixel(m_format);
  return IsRed(centre, m_format) ? DD_OK : DDERR_UNSUPPORTED;
}

HRESULT FrameSurface::Upload(const ConstFrameView& frame) {
  const auto even = m_padder.PadAll(frame, m_width, m_height);
  if (!even) return DDERR_OUTOFMEMORY;
  return m_uploadFormat == UploadFormat::Yv12 ? FillYv12(*even) : FillRgb(*even);
}

HRESULT FrameSurface::FillYv12(const ConstFrameView& frame) {
  const SurfaceLock lock(m_surface.get(), DDLOCK_WRITEONLY);
  if (FAILED(lock.Result())) return lock.Result();
  const int32_t evenWidth = m_width + m_width % 2;
  const int32_t evenHeight = m_height + m_height % 2;
  const auto width = static_cast<size_t>(evenWidth);
  const auto height = static_cast<size_t>(evenHeight);
  const FrameView planes = PlanesOf(lock, evenHeight);
  CopyPlane(planes.y, planes.strideY, frame.y, frame.strideY, width, height);
  CopyPlane(planes.v, planes.strideV, frame.v, frame.strideV, width / 2, height / 2);
  CopyPlane(planes.u, planes.strideU, frame.u, frame.strideU, width / 2, height / 2);
  return DD_OK;
}

HRESULT FrameSurface::FillRgb(const ConstFrameView& frame) {
  const SurfaceLock lock(m_surface.get(), DDLOCK_WRITEONLY);
  if (FAILED(lock.Result())) return lock.Result();
  ConvertToPixels(m_format, lock.Pixels(), lock.Pitch(), frame, m_width + m_width % 2,
                  m_height + m_height % 2);
  return DD_OK;
}

HRESULT FrameSurface::StretchTo(IDirectDrawSurface7* target) const {
  RECT source{0, 0, m_width, m_height};
  return LogFailure("StretchTo: Blt", target->Blt(nullptr, m_surface.get(), &source, DDBLT_WAIT, nullptr));
}

HRESULT FrameSurface::PresentTo(DDrawDevice& device, HWND window, const PixelRect& area) const {
  return device.PresentScaled(window, m_surface.get(), {0, 0, m_width, m_height}, area);
}

}  // namespace libnivral
