// SPDX-License-Identifier: MIT
#pragma once

#include "backends/d3d9/d3d_displayer.h"
#include "support/pane.h"
#include "support/vtable_patch.h"

using Device = IDirect3DDevice9;
using CreateDevice =
    Method<16, IDirect3D9, UINT, D3DDEVTYPE, HWND, DWORD, D3DPRESENT_PARAMETERS*, IDirect3DDevice9**>;
using ReleaseDevice = Method<2, Device>;
using Cooperate = Method<3, Device>;
using ResetDevice = Method<16, Device, D3DPRESENT_PARAMETERS*>;
using CreateTexture =
    Method<23, Device, UINT, UINT, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DTexture9**, HANDLE*>;
using CreateSurface = Method<36, Device, UINT, UINT, D3DFORMAT, D3DPOOL, IDirect3DSurface9**, HANDLE*>;
using DrawLine = Method<5, ID3DXLine, const D3DXVECTOR2*, DWORD, D3DCOLOR>;
using DrawLetters = Method<14, ID3DXFont, ID3DXSprite*, LPCSTR, INT, RECT*, DWORD, D3DCOLOR>;

/// A device with a font and a line object, made without the library's displayer.
struct BareDirect3D {
  explicit BareDirect3D(HWND window) {
    D3DPRESENT_PARAMETERS parameters{};
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    parameters.BackBufferWidth = parameters.BackBufferHeight = 16;
    const auto create = reinterpret_cast<decltype(&Direct3DCreate9)>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("d3d9.dll"), "Direct3DCreate9")));
    direct3D.reset(create(D3D_SDK_VERSION));
    EXPECT_EQ(direct3D->CreateDevice(0, D3DDEVTYPE_HAL, window, D3DCREATE_HARDWARE_VERTEXPROCESSING,
                                     &parameters, device.put()),
              D3D_OK);
    LoadD3dx()->createFont(device.get(), -6, 0, FW_NORMAL, D3DX_DEFAULT, FALSE, DEFAULT_CHARSET, 0, 0, 0,
                           "Tahoma", font.put());
    LoadD3dx()->createLine(device.get(), line.put());
  }
  ComPtr<IDirect3D9> direct3D;
  ComPtr<IDirect3DDevice9> device;
  ComPtr<ID3DXFont> font;
  ComPtr<ID3DXLine> line;
};

/// Watches what displayers ask of Direct3D and D3DX, and lets it fail.
class Direct3DFaults {
 public:
  Direct3DFaults() {
    CreateDevice::then = [this](HRESULT result, auto*, UINT, D3DDEVTYPE, HWND focus, auto...) {
      window = focus;
      windowExisted = IsWindow(focus);
      if (SUCCEEDED(result)) ++made, most = std::max(most, ++alive);
      return result;
    };
    ReleaseDevice::then = [this](HRESULT references, auto*) {
      if (references == 0) --alive;
      return references;
    };
  }
  ~Direct3DFaults() {
    D3dx() = functions;
    EXPECT_EQ(alive, 0) << "devices are left";
  }

  /// The functions that the library uses.
  static D3dxFunctions& D3dx() { return const_cast<D3dxFunctions&>(*LoadD3dx()); }

  int made = 0, alive = 0, most = 0;
  HWND window = nullptr;  ///< of the last device made
  bool windowExisted = false;

 private:
  const D3dxFunctions functions = D3dx();
  BareDirect3D m_bare{GetDesktopWindow()};
  CreateDevice m_createDevice{m_bare.direct3D.get()};
  ReleaseDevice m_release{m_bare.device.get()};
  Cooperate m_cooperate{m_bare.device.get()};
  ResetDevice m_reset{m_bare.device.get()};
  CreateTexture m_createTexture{m_bare.device.get()};
  CreateSurface m_createSurface{m_bare.device.get()};
  DrawLine m_drawLine{m_bare.line.get()};
  DrawLetters m_drawLetters{m_bare.font.get()};
};

class D3dTest : public testing::Test {
 protected:
  explicit D3dTest(int width = 160, int height = 120) : pane(1, width, height, 40, 60, WS_POPUP) {}

  Direct3DFaults faults;
  Pane pane;
  D3DDisplayer& displayer = pane.As<D3DDisplayer>();
};
