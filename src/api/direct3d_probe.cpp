// SPDX-License-Identifier: MIT
#include "api/direct3d_probe.h"

#include <windows.h>

#include <array>
#include <memory>
#include <new>

#include "backends/d3d9/d3d_displayer.h"
#include "util/log_file.h"
#include "util/win_handles.h"

namespace libnivral {
namespace {

constexpr int32_t kDirectX9 = 9;
constexpr uint32_t kTrialSize = 100;

UniqueRegKey OpenMachineKey(const wchar_t* path, REGSAM access) {
  HKEY key = nullptr;
  return UniqueRegKey(RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, access, &key) == ERROR_SUCCESS ? key
                                                                                                : nullptr);
}

/// A value shorter than eight bytes counts as followed by zeros.
std::optional<int32_t> ReadInstalledVersion() {
  const UniqueRegKey key = OpenMachineKey(L"SOFTWARE\\Microsoft\\DirectX", KEY_READ);
  if (!key) return std::nullopt;
  std::array<uint8_t, 512> value{};
  DWORD size = value.size();
  if (RegQueryValueExW(key.get(), L"InstalledVersion", nullptr, nullptr, value.data(), &size) !=
      ERROR_SUCCESS)
    return std::nullopt;
  return FoldInstalledVersion(std::span(value).first<8>());
}

bool IsSoftwareOnly() {
  const UniqueRegKey key =
      OpenMachineKey(L"SOFTWARE\\Microsoft\\Direct3D\\Drivers", KEY_READ | KEY_WOW64_64KEY);
  if (!key) return false;
  DWORD value = 0;
  DWORD size = sizeof(value);
  return RegQueryValueExW(key.get(), L"SoftwareOnly", nullptr, nullptr, reinterpret_cast<BYTE*>(&value),
                          &size) == ERROR_SUCCESS &&
         value != 0;
}

/// A hidden window for the trial device: run-times may refuse a windowed device without any window.
class TrialWindow {
 public:
  TrialWindow()
      : m_hwnd(CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, kTrialSize, kTrialSize, nullptr,
                               nullptr, GetModuleHandleW(nullptr), nullptr)) {}
  ~TrialWindow() {
    if (m_hwnd) DestroyWindow(m_hwnd);
  }
  TrialWindow(const TrialWindow&) = delete;
  TrialWindow& operator=(const TrialWindow&) = delete;

  HWND Handle() const { return m_hwnd; }

 private:
  HWND m_hwnd;
};

/// Whether a device could be made, or was not tried: a run-time that cannot be loaded does not count against
/// the machine, since opening a pane then falls back to SDL by itself.
bool TrialDeviceWorks() {
  CLogFile::GetInstance()->Write(2, L"NIVRAL_InitializeEx: new D3DDisplayer");
  const TrialWindow window;
  const std::unique_ptr<D3DDisplayer> trial(new (std::nothrow) D3DDisplayer);
  if (!trial || !trial->LoadDirect3D()) return true;
  trial->SetPlayWnd(window.Handle());
  const bool works = trial->Initialize(kTrialSize, kTrialSize) == kOk;
  trial->Uninitialize();
  return works;
}

}  // namespace

std::optional<uint32_t> ProbeDirect3D() {
  const std::optional<int32_t> version = ReadInstalledVersion();
  if (!version) return std::nullopt;
  const bool usable = *version >= kDirectX9 && !IsSoftwareOnly() && TrialDeviceWorks();
  return usable ? 0u : 1u;
}

}  // namespace libnivral
