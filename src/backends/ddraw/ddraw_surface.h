// SPDX-License-Identifier: MIT
#pragma once

#include "backends/ddraw/ddraw_device.h"
#include "picture/frame_padder.h"

namespace libnivral {

/// How frames get from their planes to the composition: the driver converts YV12 while it blits, or our own
/// kernels convert into the screen's format and the driver only stretches.
enum class UploadFormat { Automatic, Yv12, Rgb };

/// The surface that holds one frame in its own size.
class FrameSurface {
 public:
  /// Automatic takes YV12 when the driver lists it and a trial blit gives the right colour.
  HRESULT Create(const DDrawDevice& device, uint32_t width, uint32_t height, UploadFormat format);
  void Release() { m_surface.reset(); }

  /// The format in use, after Create.
  UploadFormat ActiveUploadFormat() const { return m_uploadFormat; }

  HRESULT Upload(const ConstFrameView& frame);

  /// Scales the whole frame over the whole target.
  HRESULT StretchTo(IDirectDrawSurface7* target) const;

  /// The same into an area of a window, all of which can be seen.
  HRESULT PresentTo(DDrawDevice& device, HWND window, const PixelRect& area) const;

 private:
  HRESULT CreateYv12(const DDrawDevice& device);
  HRESULT TryBlit(const DDrawDevice& device);
  HRESULT FillYv12(const ConstFrameView& frame);
  HRESULT FillRgb(const ConstFrameView& frame);

  DDrawSurface m_surface;
  FramePadder m_padder;
  UploadFormat m_uploadFormat = UploadFormat::Automatic;
  PixelFormat m_format = PixelFormat::Bgrx32;
  int32_t m_width = 0;
  int32_t m_height = 0;
};

}  // namespace libnivral
