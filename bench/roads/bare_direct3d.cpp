// SPDX-License-Identifier: MIT
#include <d3d9.h>

#include <cstring>

#include "roads/bench_pane.h"
#include "util/com_ptr.h"

namespace {

constexpr auto kYv12 = static_cast<D3DFORMAT>(MAKEFOURCC('Y', 'V', '1', '2'));

void CopyRows(uint8_t* to, int pitch, const uint8_t* from, int stride, int width, int height) {
  for (int row = 0; row < height; ++row)
    std::memcpy(to + row * pitch, from + row * stride, static_cast<size_t>(width));
}

class BareDirect3D : public BenchPane {
 public:
  explicit BareDirect3D(int place) : m_window(place) {
    const auto create = reinterpret_cast<decltype(&Direct3DCreate9)>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("d3d9.dll"), "Direct3DCreate9")));
    m_direct3D.reset(create(D3D_SDK_VERSION));
    D3DPRESENT_PARAMETERS parameters{};
    parameters.BackBufferWidth = kFrameWidth;
    parameters.BackBufferHeight = kFrameHeight;
    parameters.BackBufferFormat = D3DFMT_X8R8G8B8;
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    parameters.Flags = D3DPRESENTFLAG_LOCKABLE_BACKBUFFER | D3DPRESENTFLAG_VIDEO;
    parameters.PresentationInterval = D3DPRESENT_INTERVAL_IMMEDIATE;
    // Wine stretches YV12 straight onto a back buffer only as far as its window reaches: a quarter, here. For
    // a whole picture it takes a render target between them.
    if (FAILED(m_direct3D->CreateDevice(0, D3DDEVTYPE_HAL, m_window.Handle(),
                                        D3DCREATE_HARDWARE_VERTEXPROCESSING | D3DCREATE_FPU_PRESERVE,
                                        &parameters, m_device.put())) ||
        FAILED(m_device->CreateOffscreenPlainSurface(kFrameWidth, kFrameHeight, kYv12, D3DPOOL_DEFAULT,
                                                     m_surface.put(), nullptr)) ||
        FAILED(m_device->CreateRenderTarget(kFrameWidth, kFrameHeight, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE,
                                            0, FALSE, m_wholeFrame.put(), nullptr)) ||
        FAILED(m_device->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, m_backBuffer.put()))) {
      Fail("Direct3D makes no device");
    }
  }

  void Draw(TestFrame& frame) override {
    Upload(frame.View());
    m_device->BeginScene();
    m_device->StretchRect(m_surface.get(), nullptr, m_wholeFrame.get(), nullptr, D3DTEXF_NONE);
    m_device->StretchRect(m_wholeFrame.get(), nullptr, m_backBuffer.get(), nullptr, D3DTEXF_NONE);
    m_device->EndScene();
    if (FAILED(m_device->Present(nullptr, nullptr, nullptr, nullptr))) Fail("Present failed");
  }

 private:
  void Upload(const FrameView& f) {
    D3DLOCKED_RECT locked{};
    m_surface->LockRect(&locked, nullptr, D3DLOCK_NOSYSLOCK | D3DLOCK_NO_DIRTY_UPDATE);
    auto* y = static_cast<uint8_t*>(locked.pBits);
    uint8_t* v = y + locked.Pitch * kFrameHeight;
    const int pitch = locked.Pitch / 2;
    CopyRows(y, locked.Pitch, f.y, f.strideY, kFrameWidth, kFrameHeight);
    CopyRows(v, pitch, f.v, f.strideV, kFrameWidth / 2, kFrameHeight / 2);
    CopyRows(v + pitch * kFrameHeight / 2, pitch, f.u, f.strideU, kFrameWidth / 2, kFrameHeight / 2);
    m_surface->UnlockRect();
  }

  BenchWindow m_window;
  ComPtr<IDirect3D9> m_direct3D;
  ComPtr<IDirect3DDevice9> m_device;
  ComPtr<IDirect3DSurface9> m_surface;
  ComPtr<IDirect3DSurface9> m_wholeFrame;
  ComPtr<IDirect3DSurface9> m_backBuffer;
};

}  // namespace

PanePointer MakeBareDirect3D(int place) {
  return std::make_unique<BareDirect3D>(place);
}
