// SPDX-License-Identifier: MIT
#include <ddraw.h>

#include <cstring>

#include "roads/bench_pane.h"
#include "util/com_ptr.h"

namespace {

void Check(HRESULT result, const char* what) {
  if (FAILED(result)) Fail(what);
}

/// Fills a YV12 surface and stretches it straight into the window.
class BareDirectDraw : public BenchPane {
 public:
  explicit BareDirectDraw(int place) : m_window(place) {
    Check(DirectDrawCreateEx(nullptr, m_ddraw.put_void(), IID_IDirectDraw7, nullptr), "DirectDrawCreateEx");
    Check(m_ddraw->SetCooperativeLevel(nullptr, DDSCL_NORMAL), "SetCooperativeLevel");
    DDSURFACEDESC2 d{};
    d.dwSize = sizeof(d);
    d.dwFlags = DDSD_CAPS;
    d.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
    Check(m_ddraw->CreateSurface(&d, m_primary.put(), nullptr), "primary surface");
    Check(m_ddraw->CreateClipper(0, m_clipper.put(), nullptr), "CreateClipper");
    Check(m_clipper->SetHWnd(0, m_window.Handle()), "SetHWnd");
    Check(m_primary->SetClipper(m_clipper.get()), "SetClipper");
    d.dwFlags = DDSD_CAPS | DDSD_WIDTH | DDSD_HEIGHT | DDSD_PIXELFORMAT;
    d.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN;
    d.dwWidth = kFrameWidth;
    d.dwHeight = kFrameHeight;
    d.ddpfPixelFormat.dwSize = sizeof(d.ddpfPixelFormat);
    d.ddpfPixelFormat.dwFlags = DDPF_FOURCC;
    d.ddpfPixelFormat.dwFourCC = MAKEFOURCC('Y', 'V', '1', '2');
    Check(m_ddraw->CreateSurface(&d, m_frame.put(), nullptr), "frame surface");
  }

  void Draw(TestFrame& frame) override {
    Upload(frame);
    POINT at{0, 0};
    ClientToScreen(m_window.Handle(), &at);
    RECT target{at.x, at.y, at.x + kPaneWidth, at.y + kPaneHeight};
    Check(m_primary->Blt(&target, m_frame.get(), nullptr, DDBLT_WAIT, nullptr), "Blt");
  }

 private:
  /// The pitch of this size is the width, and so are the frame's strides.
  void Upload(const TestFrame& f) {
    DDSURFACEDESC2 locked{};
    locked.dwSize = sizeof(locked);
    Check(m_frame->Lock(nullptr, &locked, DDLOCK_WAIT | DDLOCK_WRITEONLY, nullptr), "Lock");
    auto* to = static_cast<uint8_t*>(locked.lpSurface);
    for (const auto* plane : {&f.y, &f.v, &f.u}) {
      std::memcpy(to, plane->data(), plane->size());
      to += plane->size();
    }
    m_frame->Unlock(nullptr);
  }

  BenchWindow m_window;
  ComPtr<IDirectDraw7> m_ddraw;
  ComPtr<IDirectDrawClipper> m_clipper;
  ComPtr<IDirectDrawSurface7> m_primary;
  ComPtr<IDirectDrawSurface7> m_frame;
};

}  // namespace

PanePointer MakeBareDirectDraw(int place) {
  return std::make_unique<BareDirectDraw>(place);
}
