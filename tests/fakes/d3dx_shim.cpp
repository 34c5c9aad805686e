// SPDX-License-Identifier: MIT
// A d3dx9_43.dll whose lines are drawn: Wine's ID3DXLine does nothing. Everything else that the library uses
// goes to the identical d3dx9_42.dll, see the .def file; shaders from a file that the test may name.
#include <d3dx9.h>

#include <atomic>
#include <string>
#include <vector>

#include "d3dx_faults.h"
#include "loaded.h"
#include "vtable_slot.h"

// COM interfaces have no virtual destructor, and this compiler's warning looks at the base class.
#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

namespace {

D3dxFaults g_faults{};

class Line : public ID3DXLine {
 public:
  explicit Line(IDirect3DDevice9* device) : m_device(device) { device->AddRef(); }
  virtual ~Line() { m_device->Release(); }

  HRESULT WINAPI QueryInterface(REFIID, void** object) noexcept override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG WINAPI AddRef() noexcept override { return ++m_references; }
  ULONG WINAPI Release() noexcept override {
    const ULONG references = --m_references;
    if (references == 0) delete this;
    return references;
  }

  HRESULT WINAPI GetDevice(IDirect3DDevice9** device) noexcept override {
    m_device->AddRef();
    *device = m_device;
    return D3D_OK;
  }
  HRESULT WINAPI Begin() noexcept override {
    m_begun = true;
    return D3D_OK;
  }
  HRESULT WINAPI Draw(const D3DXVECTOR2* points, DWORD count, D3DCOLOR color) noexcept override;
  HRESULT WINAPI DrawTransform(const D3DXVECTOR3*, DWORD, const D3DXMATRIX*, D3DCOLOR) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI SetPattern(DWORD) noexcept override { return D3D_OK; }
  DWORD WINAPI GetPattern() noexcept override { return 0xFFFFFFFF; }
  HRESULT WINAPI SetPatternScale(FLOAT) noexcept override { return D3D_OK; }
  FLOAT WINAPI GetPatternScale() noexcept override { return 1; }
  HRESULT WINAPI SetWidth(FLOAT) noexcept override { return D3D_OK; }
  FLOAT WINAPI GetWidth() noexcept override { return 1; }
  HRESULT WINAPI SetAntialias(WINBOOL) noexcept override { return D3D_OK; }
  WINBOOL WINAPI GetAntialias() noexcept override { return FALSE; }
  HRESULT WINAPI SetGLLines(WINBOOL) noexcept override { return D3D_OK; }
  WINBOOL WINAPI GetGLLines() noexcept override { return FALSE; }
  HRESULT WINAPI End() noexcept override {
    m_begun = false;
    return D3D_OK;
  }
  HRESULT WINAPI OnLostDevice() noexcept override { return D3D_OK; }
  HRESULT WINAPI OnResetDevice() noexcept override { return D3D_OK; }

 private:
  std::atomic<ULONG> m_references{1};
  IDirect3DDevice9* m_device;
  bool m_begun = false;
};

struct Vertex {
  float x, y, z, rhw;
  D3DCOLOR color;
};

// What a caller set on the device is as it was afterwards, as with the real object.
HRESULT WINAPI Line::Draw(const D3DXVECTOR2* points, DWORD count, D3DCOLOR color) noexcept {
  if (!m_begun || count < 2) return D3DERR_INVALIDCALL;
  if (g_faults.drawLine) return g_faults.drawLine;
  IDirect3DStateBlock9* state = nullptr;
  if (FAILED(m_device->CreateStateBlock(D3DSBT_ALL, &state))) return E_FAIL;
  std::vector<Vertex> strip;
  for (DWORD i = 0; i < count; ++i)
    strip.push_back({points[i].x, points[i].y, 0, 1, color});
  m_device->SetTexture(0, nullptr);
  m_device->SetPixelShader(nullptr);
  m_device->SetFVF(D3DFVF_XYZRHW | D3DFVF_DIFFUSE);
  m_device->DrawPrimitiveUP(D3DPT_LINESTRIP, count - 1, strip.data(), sizeof(Vertex));
  state->Apply();
  state->Release();
  return D3D_OK;
}

INT WINAPI DrawTextOrFail(ID3DXFont* self, ID3DXSprite* sprite, LPCSTR text, INT length, RECT* rect,
                          DWORD format, D3DCOLOR color);
VtableSlot g_drawTextA(14, &DrawTextOrFail);

INT WINAPI DrawTextOrFail(ID3DXFont* self, ID3DXSprite* sprite, LPCSTR text, INT length, RECT* rect,
                          DWORD format, D3DCOLOR color) {
  if (g_faults.onDrawText) g_faults.onDrawText();
  if (g_faults.drawText) return 0;
  return g_drawTextA.Forward(self, sprite, text, length, rect, format, color);
}

std::string g_shaderFile;

}  // namespace

extern "C" {

HRESULT WINAPI ShimCreateLine(IDirect3DDevice9* device, ID3DXLine** line) {
  if (g_faults.createLine) return g_faults.createLine;
  *line = new Line(device);
  return D3D_OK;
}

HRESULT WINAPI ShimCreateFontA(IDirect3DDevice9* device, INT height, UINT width, UINT weight, UINT levels,
                               WINBOOL italic, DWORD charset, DWORD precision, DWORD quality, DWORD pitch,
                               LPCSTR face, ID3DXFont** font) {
  if (g_faults.createFont) return g_faults.createFont;
  const auto create = LoadedFunction<decltype(&D3DXCreateFontA)>("d3dx9_42.dll", "D3DXCreateFontA");
  const HRESULT result =
      create(device, height, width, weight, levels, italic, charset, precision, quality, pitch, face, font);
  if (SUCCEEDED(result)) g_drawTextA.Patch(*font);
  return result;
}

HRESULT WINAPI ShimCompileShaderFromFileA(const char* file, const D3DXMACRO* macros, ID3DXInclude* include,
                                          const char* entry, const char* profile, DWORD flags,
                                          ID3DXBuffer** code, ID3DXBuffer** errors,
                                          ID3DXConstantTable** constants) {
  const auto compile =
      LoadedFunction<decltype(&D3DXCompileShaderFromFileA)>("d3dx9_42.dll", "D3DXCompileShaderFromFileA");
  return compile(g_shaderFile.empty() ? file : g_shaderFile.c_str(), macros, include, entry, profile, flags,
                 code, errors, constants);
}

D3dxFaults* GetD3dxFaults() {
  return &g_faults;
}

/// The file to compile instead of the one asked for; empty for that one itself.
void SetShimShaderFile(const char* file) {
  g_shaderFile = file;
}
}
