// SPDX-License-Identifier: MIT
// D3DDisplayer: the colour path on the device's shaders. Nothing leads here with effect, and the shader is
// not part of the library; the pieces are kept ready for a client build that brings one.
#include <cstring>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/d3d_hsl_matrix.h"
#include "backends/d3d9/d3d_unreleased.h"

namespace libnivral {
namespace {

constexpr char kShaderFile[] = "F:\\directxps_hsl\\directxps_hsl\\hslps.txt";
constexpr UINT kQuadBufferBytes = 1000 * sizeof(HslVertex);
constexpr DWORD kGrey = 0xFF808080;
constexpr uint32_t kNoSize = 16;  ///< like 0, a size that is none

constexpr D3DVERTEXELEMENT9 kQuadElements[] = {
    {0, 0, D3DDECLTYPE_FLOAT4, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITIONT, 0},
    {0, 16, D3DDECLTYPE_D3DCOLOR, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_COLOR, 0},
    {0, 20, D3DDECLTYPE_FLOAT2, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_TEXCOORD, 0},
    D3DDECL_END()};

bool IsSize(uint32_t extent) {
  return extent != 0 && extent != kNoSize;
}

D3DXMATRIX ToD3dx(const Matrix4& matrix) {
  D3DXMATRIX converted;
  std::memcpy(&converted.m, &matrix.m, sizeof(matrix.m));
  return converted;
}

Matrix4 FromD3dx(const D3DXMATRIX& matrix) {
  Matrix4 converted;
  std::memcpy(&converted.m, &matrix.m, sizeof(converted.m));
  return converted;
}

}  // namespace

int32_t D3DDisplayer::SetupHslShader(uint32_t width, uint32_t height) {
  if (!IsSize(width) || !IsSize(height) || (width == m_dwWidth && height == m_dwHeight)) return 0;
  m_dwWidth = width;
  m_dwHeight = height;
  // They have the earlier size and belong to the earlier device.
  ReleaseDeviceObjects();
  bool ok = CreateHslDevice();
  if (ok) {
    ok = CreateHslObjects();
    ok = CreateHslShader() && ok;
    if (ok && m_pConstantTable) m_hTex0S = m_pConstantTable->GetConstantByName(nullptr, "Tex0S");
    SetHslState();
  }
  const HueMatrices hue = BuildHueMatrices();
  m_matHuePre = ToD3dx(hue.pre);
  m_matHuePost = ToD3dx(hue.post);
  return ok ? 0 : 1;
}

/// The new device takes the place of the displaying one, which is left unreleased.
bool D3DDisplayer::CreateHslDevice() {
  LeaveUnreleased(m_pD3D9);
  if (m_pfnDirect3DCreate9) m_pD3D9.reset(m_pfnDirect3DCreate9(D3D_SDK_VERSION));
  if (!m_pD3D9) return false;
  D3DPRESENT_PARAMETERS parameters{};
  parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
  parameters.BackBufferFormat = D3DFMT_UNKNOWN;
  parameters.Windowed = TRUE;
  parameters.EnableAutoDepthStencil = TRUE;
  parameters.AutoDepthStencilFormat = D3DFMT_D16;
  LeaveUnreleased(m_pd3dDevice);
  return SUCCEEDED(m_pD3D9->CreateDevice(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, m_hPlayWnd,
                                         D3DCREATE_SOFTWARE_VERTEXPROCESSING, &parameters,
                                         m_pd3dDevice.put()));
}

bool D3DDisplayer::CreateHslObjects() {
  LeaveUnreleased(m_pQuadBuffer);
  LeaveUnreleased(m_pQuadDecl);
  const bool buffer =
      SUCCEEDED(m_pd3dDevice->CreateVertexBuffer(kQuadBufferBytes, D3DUSAGE_DYNAMIC | D3DUSAGE_WRITEONLY, 0,
                                                 D3DPOOL_DEFAULT, m_pQuadBuffer.put(), nullptr));
  const bool declaration = SUCCEEDED(m_pd3dDevice->CreateVertexDeclaration(kQuadElements, m_pQuadDecl.put()));
  return buffer && declaration;
}

bool D3DDisplayer::CreateHslShader() {
  LeaveUnreleased(m_pConstantTable);
  LeaveUnreleased(m_pHslShader);
  m_hTex0S = nullptr;
  if (!m_pD3dx) return false;
  ComPtr<ID3DXBuffer> code;
  const HRESULT compiled = m_pD3dx->compileShaderFromFile(kShaderFile, nullptr, nullptr, "hslMain", "ps_2_0",
                                                          0, code.put(), nullptr, m_pConstantTable.put());
  if (FAILED(compiled) || !code) return false;
  return SUCCEEDED(m_pd3dDevice->CreatePixelShader(static_cast<const DWORD*>(code->GetBufferPointer()),
                                                   m_pHslShader.put()));
}

void D3DDisplayer::SetHslState() {
  IDirect3DDevice9* device = m_pd3dDevice.get();
  device->SetRenderState(D3DRS_FILLMODE, D3DFILL_SOLID);
  device->SetRenderState(D3DRS_ALPHATESTENABLE, FALSE);
  device->SetRenderState(D3DRS_ZWRITEENABLE, FALSE);
  device->SetRenderState(D3DRS_FOGENABLE, FALSE);
  device->SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
  device->SetSamplerState(0, D3DSAMP_ADDRESSU, D3DTADDRESS_CLAMP);
  device->SetSamplerState(0, D3DSAMP_ADDRESSV, D3DTADDRESS_CLAMP);
  device->SetTextureStageState(0, D3DTSS_COLORARG1, D3DTA_TEXTURE);
  device->SetTextureStageState(0, D3DTSS_COLORARG2, D3DTA_DIFFUSE);
  device->SetTextureStageState(0, D3DTSS_COLOROP, D3DTOP_MODULATE);
  device->SetTextureStageState(0, D3DTSS_ALPHAARG1, D3DTA_TEXTURE);
  device->SetTextureStageState(0, D3DTSS_ALPHAARG2, D3DTA_DIFFUSE);
  device->SetTextureStageState(0, D3DTSS_ALPHAOP, D3DTOP_MODULATE);
  device->SetSamplerState(0, D3DSAMP_MINFILTER, D3DTEXF_LINEAR);
  device->SetSamplerState(0, D3DSAMP_MAGFILTER, D3DTEXF_LINEAR);
  device->SetSamplerState(0, D3DSAMP_MIPFILTER, D3DTEXF_LINEAR);
  device->SetTextureStageState(1, D3DTSS_COLOROP, D3DTOP_DISABLE);
  device->SetTextureStageState(1, D3DTSS_ALPHAOP, D3DTOP_DISABLE);
  device->SetRenderState(D3DRS_ALPHABLENDENABLE, TRUE);
  device->SetRenderState(D3DRS_SRCBLEND, D3DBLEND_SRCALPHA);
  device->SetRenderState(D3DRS_DESTBLEND, D3DBLEND_INVSRCALPHA);
}

int32_t D3DDisplayer::RenderHsl(int32_t bright, int32_t contrast, int32_t saturation, int32_t hue) {
  if (!m_pd3dDevice) return 0;
  BindHsl();
  SetHslConstants(bright, contrast, saturation, hue);
  DrawHslQuad();
  m_pd3dDevice->EndScene();
  m_pd3dDevice->Present(nullptr, nullptr, nullptr, nullptr);
  return 0;
}

void D3DDisplayer::BindHsl() {
  IDirect3DDevice9* device = m_pd3dDevice.get();
  device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, kGrey, 1.0f, 0);
  device->BeginScene();
  device->SetVertexShader(nullptr);
  device->SetPixelShader(m_pHslShader.get());
  device->SetTexture(1, nullptr);
  device->SetTexture(0, nullptr);
  device->SetVertexDeclaration(m_pQuadDecl.get());
  device->SetStreamSource(0, m_pQuadBuffer.get(), 0, sizeof(HslVertex));
}

void D3DDisplayer::SetHslConstants(int32_t bright, int32_t contrast, int32_t saturation, int32_t hue) {
  m_matColour = ToD3dx(ColourMatrix(saturation, hue, {FromD3dx(m_matHuePre), FromD3dx(m_matHuePost)}));
  if (!m_pConstantTable) return;
  m_pConstantTable->SetMatrix(m_pd3dDevice.get(), "colorMatrix", &m_matColour);
  m_pConstantTable->SetInt(m_pd3dDevice.get(), "nContrast", contrast);
  m_pConstantTable->SetInt(m_pd3dDevice.get(), "nBright", bright);
}

void D3DDisplayer::DrawHslQuad() {
  const auto quad = FrameQuad(m_dwWidth, m_dwHeight);
  void* memory = nullptr;
  if (m_pQuadBuffer && SUCCEEDED(m_pQuadBuffer->Lock(0, 0, &memory, D3DLOCK_DISCARD))) {
    std::memcpy(memory, quad.data(), sizeof(quad));
    m_pQuadBuffer->Unlock();
  }
  m_pd3dDevice->DrawPrimitive(D3DPT_TRIANGLELIST, 0, 2);
}

}  // namespace libnivral
