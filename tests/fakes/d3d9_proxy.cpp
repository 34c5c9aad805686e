// SPDX-License-Identifier: MIT
// A d3d9.dll that stands before the system's: it fails what a test asks it to fail and counts live objects.
#include <d3d9.h>

#include <set>
#include <string>

#include "d3d9_faults.h"
#include "vtable_slot.h"

namespace {

D3D9Faults g_faults{};
std::set<void*> g_alive;

ULONG WINAPI ReleaseDirect3D(IDirect3D9* self);
ULONG WINAPI ReleaseDevice(IDirect3DDevice9* self);
HRESULT WINAPI CreateDevice(IDirect3D9* self, UINT adapter, D3DDEVTYPE type, HWND focus, DWORD flags,
                            D3DPRESENT_PARAMETERS* parameters, IDirect3DDevice9** device);
HRESULT WINAPI TestCooperativeLevel(IDirect3DDevice9* self);
HRESULT WINAPI Reset(IDirect3DDevice9* self, D3DPRESENT_PARAMETERS* parameters);
HRESULT WINAPI Present(IDirect3DDevice9* self, const RECT* from, const RECT* to, HWND window,
                       const RGNDATA* dirty);
HRESULT WINAPI CreateTexture(IDirect3DDevice9* self, UINT width, UINT height, UINT levels, DWORD usage,
                             D3DFORMAT format, D3DPOOL pool, IDirect3DTexture9** texture, HANDLE* shared);
HRESULT WINAPI CreateOffscreenPlainSurface(IDirect3DDevice9* self, UINT width, UINT height, D3DFORMAT format,
                                           D3DPOOL pool, IDirect3DSurface9** surface, HANDLE* shared);

VtableSlot g_releaseDirect3D(2, &ReleaseDirect3D);
VtableSlot g_createDevice(16, &CreateDevice);
VtableSlot g_releaseDevice(2, &ReleaseDevice);
VtableSlot g_testCooperativeLevel(3, &TestCooperativeLevel);
VtableSlot g_reset(16, &Reset);
VtableSlot g_present(17, &Present);
VtableSlot g_createTexture(23, &CreateTexture);
VtableSlot g_createSurface(36, &CreateOffscreenPlainSurface);

ULONG WINAPI ReleaseDirect3D(IDirect3D9* self) {
  const ULONG references = g_releaseDirect3D.Forward(self);
  if (references == 0 && g_alive.erase(self)) --g_faults.direct3DsAlive;
  return references;
}

ULONG WINAPI ReleaseDevice(IDirect3DDevice9* self) {
  const ULONG references = g_releaseDevice.Forward(self);
  if (references == 0 && g_alive.erase(self)) --g_faults.devicesAlive;
  return references;
}

void Adopt(IDirect3DDevice9* device) {
  g_alive.insert(device);
  ++g_faults.devicesMade;
  ++g_faults.devicesAlive;
  if (g_faults.mostDevicesAlive < g_faults.devicesAlive) g_faults.mostDevicesAlive = g_faults.devicesAlive;
  g_releaseDevice.Patch(device);
  g_testCooperativeLevel.Patch(device);
  g_reset.Patch(device);
  g_present.Patch(device);
  g_createTexture.Patch(device);
  g_createSurface.Patch(device);
}

HRESULT WINAPI CreateDevice(IDirect3D9* self, UINT adapter, D3DDEVTYPE type, HWND focus, DWORD flags,
                            D3DPRESENT_PARAMETERS* parameters, IDirect3DDevice9** device) {
  g_faults.lastWindow = focus;
  g_faults.lastWindowExisted = IsWindow(focus);
  if (g_faults.createDevice) return g_faults.createDevice;
  const HRESULT result = g_createDevice.Forward(self, adapter, type, focus, flags, parameters, device);
  if (SUCCEEDED(result)) Adopt(*device);
  return result;
}

HRESULT WINAPI TestCooperativeLevel(IDirect3DDevice9* self) {
  return g_faults.cooperativeLevel ? g_faults.cooperativeLevel : g_testCooperativeLevel.Forward(self);
}

HRESULT WINAPI Reset(IDirect3DDevice9* self, D3DPRESENT_PARAMETERS* parameters) {
  ++g_faults.resets;
  return g_faults.reset ? g_faults.reset : g_reset.Forward(self, parameters);
}

HRESULT WINAPI Present(IDirect3DDevice9* self, const RECT* from, const RECT* to, HWND window,
                       const RGNDATA* dirty) {
  ++g_faults.presents;
  return g_present.Forward(self, from, to, window, dirty);
}

HRESULT WINAPI CreateOffscreenPlainSurface(IDirect3DDevice9* self, UINT width, UINT height, D3DFORMAT format,
                                           D3DPOOL pool, IDirect3DSurface9** surface, HANDLE* shared) {
  if (g_faults.createSurface) return g_faults.createSurface;
  return g_createSurface.Forward(self, width, height, format, pool, surface, shared);
}

HRESULT WINAPI CreateTexture(IDirect3DDevice9* self, UINT width, UINT height, UINT levels, DWORD usage,
                             D3DFORMAT format, D3DPOOL pool, IDirect3DTexture9** texture, HANDLE* shared) {
  if (g_faults.createTexture) return g_faults.createTexture;
  return g_createTexture.Forward(self, width, height, levels, usage, format, pool, texture, shared);
}

HMODULE SystemDirect3D() {
  char folder[MAX_PATH];
  GetSystemDirectoryA(folder, sizeof(folder));
  return LoadLibraryA((std::string(folder) + "\\d3d9.dll").c_str());
}

}  // namespace

extern "C" {

IDirect3D9* WINAPI ProxyDirect3DCreate9(UINT version) {
  if (g_faults.noDirect3D) return nullptr;
  const auto create = reinterpret_cast<decltype(&Direct3DCreate9)>(
      reinterpret_cast<void*>(GetProcAddress(SystemDirect3D(), "Direct3DCreate9")));
  IDirect3D9* direct3D = create ? create(version) : nullptr;
  if (!direct3D) return nullptr;
  g_alive.insert(direct3D);
  ++g_faults.direct3DsAlive;
  g_releaseDirect3D.Patch(direct3D);
  g_createDevice.Patch(direct3D);
  return direct3D;
}

D3D9Faults* GetD3D9Faults() {
  return &g_faults;
}
}
