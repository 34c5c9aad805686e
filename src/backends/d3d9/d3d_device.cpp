// SPDX-License-Identifier: MIT
// D3DDisplayer: the device and its surfaces, from loading the run-time to releasing everything.
#include <new>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/d3d_error.h"
#include "util/log_file.h"

namespace libnivral {

int32_t D3DDisplayer::LoadDirect3D() {
  if (!m_hD3D9Module) m_hD3D9Module = LoadLibraryA("d3d9.dll");
  if (!m_hD3D9Module) return 0;
  m_pD3dx = LoadD3dx();
  const FARPROC create = GetProcAddress(m_hD3D9Module, "Direct3DCreate9");
  m_pfnDirect3DCreate9 = reinterpret_cast<decltype(m_pfnDirect3DCreate9)>(reinterpret_cast<void*>(create));
  return m_pfnDirect3DCreate9 ? 1 : 0;
}

int32_t D3DDisplayer::Initialize(uint32_t width, uint32_t height) {
  if (static_cast<int32_t>(width) < 1 || static_cast<int32_t>(height) < 1) return kBadSize;
  m_bInitialized = false;
  m_dwWidth = width;
  m_dwHeight = height;
  m_pScratch.reset();
  m_pScratch.reset(new (std::nothrow) uint8_t[size_t{width} * height * 3]);
  if (!m_pScratch) return kNoMemory;
  if (const int32_t result = CreateDevice(); result != kOk) return result;
  if (!InitSurface()) return kFailed;
  m_bInitialized = true;
  return kOk;
}

int32_t D3DDisplayer::CreateDevice() {
  if (!m_pfnDirect3DCreate9 || !IsWindow(m_hPlayWnd)) return kNoDevice;
  m_pD3D9.reset(m_pfnDirect3DCreate9(D3D_SDK_VERSION));
  if (!m_pD3D9) return kNoDevice;
  const DWORD behaviour = VertexProcessing() | D3DCREATE_FPU_PRESERVE;
  FillPresentParameters();
  ComPtr<IDirect3DDevice9> device;
  if (m_pD3D9->CreateDevice(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, m_hPlayWnd, behaviour, &m_d3dpp,
                            device.put()) != D3D_OK) {
    return kNoDevice;
  }
  // After a failed start the device of that try is still here. What belongs to it is no use to the new one.
  ReleaseDeviceObjects();
  m_pd3dDevice = std::move(device);
  return kOk;
}

DWORD D3DDisplayer::VertexProcessing() const {
  D3DCAPS9 caps{};
  const bool known = m_pD3D9->GetDeviceCaps(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, &caps) == D3D_OK;
  return !known || (caps.DevCaps & D3DDEVCAPS_HWTRANSFORMANDLIGHT) ? D3DCREATE_HARDWARE_VERTEXPROCESSING
                                                                   : D3DCREATE_SOFTWARE_VERTEXPROCESSING;
}

void D3DDisplayer::FillPresentParameters() {
  D3DDISPLAYMODE mode{};
  const bool known = SUCCEEDED(m_pD3D9->GetAdapterDisplayMode(D3DADAPTER_DEFAULT, &mode));
  m_d3dpp = {};
  m_d3dpp.BackBufferWidth = m_dwWidth;
  m_d3dpp.BackBufferHeight = m_dwHeight;
  m_d3dpp.BackBufferFormat = known ? mode.Format : D3DFMT_UNKNOWN;
  m_d3dpp.BackBufferCount = 1;
  m_d3dpp.SwapEffect = D3DSWAPEFFECT_DISCARD;
  m_d3dpp.hDeviceWindow = m_hPlayWnd;
  m_d3dpp.Windowed = TRUE;
  m_d3dpp.Flags = D3DPRESENTFLAG_LOCKABLE_BACKBUFFER | D3DPRESENTFLAG_VIDEO;
  m_d3dpp.PresentationInterval = D3DPRESENT_INTERVAL_DEFAULT;
}

bool D3DDisplayer::InitSurface() {
  LogStep(L"D3DDisplayer::InitSurface");
  if (m_pd3dDevice && !m_pd3dSurface &&
      FAILED(m_pd3dDevice->CreateOffscreenPlainSurface(m_dwWidth, m_dwHeight, kYv12, D3DPOOL_DEFAULT,
                                                       m_pd3dSurface.put(), nullptr))) {
    g_d3dErrors.Failed("InitSurface: m_pd3dDevice->CreateOffscreenPlainSurface");
  }
  if (m_pd3dDevice && !m_pBackBuffer)
    m_pd3dDevice->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, m_pBackBuffer.put());
  const bool complete = m_pd3dSurface && m_pBackBuffer;
  if (complete) {
    LogStep(L"D3DDisplayer::InitSurface ok");
  } else {
    g_d3dErrors.Failed("InitSurface");
  }
  return complete;
}

// The kept parameters let the back buffer keep its size, whatever the frame's is now. The label font, the
// line and the vertex buffer are not told; where the vertex buffer makes Reset fail, everything is made anew.
bool D3DDisplayer::ResetDevice() {
  LogStep(L"D3DDisplayer::ResetDevice");
  if (!m_pd3dDevice) return false;
  m_osdPainter.Forget();
  m_labelPainter.Forget();
  if (m_pOSDFont && FAILED(m_pOSDFont->OnLostDevice()))
    g_d3dErrors.Failed("ResetDevice: m_pOSDFont->OnLostDevice");
  m_pd3dSurface.reset();
  m_pFrameTarget.reset();
  m_pBackBuffer.reset();
  // Some run-times crash over a window that is gone.
  if (!IsWindow(m_d3dpp.hDeviceWindow) || FAILED(m_pd3dDevice->Reset(&m_d3dpp))) {
    g_d3dErrors.Failed("ResetDevice: m_pd3dDevice->Reset");
    return false;
  }
  if (m_pOSDFont) m_pOSDFont->OnResetDevice();
  return InitSurface();
}

void D3DDisplayer::ResetDisplay() {
  LogStep(L"D3DDisplayer::ResetDisplay");
  if (ResetDevice()) return;
  Uninitialize();
  LogStep(L"D3DDisplayer::ResetDisplay: Initialize");
  if (Initialize(m_dwWidth, m_dwHeight) != kOk) g_d3dErrors.Failed("ResetDisplay: Initialize");
}

void D3DDisplayer::ReleaseDeviceObjects() {
  m_osdPainter.Stop();
  m_labelPainter.Stop();
  m_outlines.reset();
  m_pOSDFont.reset();
  m_pLabelFont.reset();
  m_pLineBuffer.reset();
  m_pLine.reset();
  m_pVertexBuffer.reset();
  m_pFrameTarget.reset();
  m_stretch = Stretch::Unknown;
  m_pd3dSurface.reset();
  m_pBackBuffer.reset();
}

int32_t D3DDisplayer::Uninitialize() {
  m_bInitialized = false;
  ReleaseDeviceObjects();
  m_pd3dDevice.reset();
  m_pD3D9.reset();
  m_pScratch.reset();
  return 0;
}

}  // namespace libnivral
