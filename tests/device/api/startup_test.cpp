// SPDX-License-Identifier: MIT
// Start-up against the real registry, and the choice of backend.
#include <gmock/gmock.h>
#include <windows.h>

#include <vector>

#include "api/backend_table.h"
#include "api/direct3d_probe.h"
#include "backends/ddraw/ddraw_displayer.h"
#include "backends/sdl2/sdl_displayer.h"
#include "nivral/nivral.h"
#include "util/win_handles.h"

using namespace libnivral;

namespace {

constexpr wchar_t kDirectX[] = L"SOFTWARE\\Microsoft\\DirectX";
constexpr wchar_t kDrivers[] = L"SOFTWARE\\Microsoft\\Direct3D\\Drivers";

UniqueRegKey MakeKey(const wchar_t* path) {
  HKEY key = nullptr;
  RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
  return UniqueRegKey(key);
}

void SetVersion(const std::vector<uint8_t>& bytes) {
  RegSetValueExW(MakeKey(kDirectX).get(), L"InstalledVersion", 0, REG_BINARY, bytes.data(),
                 static_cast<DWORD>(bytes.size()));
}

void RemoveVersion() {
  RegDeleteValueW(MakeKey(kDirectX).get(), L"InstalledVersion");
}

void SetSoftwareOnly(DWORD value) {
  RegSetValueExW(MakeKey(kDrivers).get(), L"SoftwareOnly", 0, REG_DWORD,
                 reinterpret_cast<const BYTE*>(&value), sizeof(value));
}

class Startup : public testing::Test {
 protected:
  void SetUp() override { Restore(); }
  void TearDown() override { Restore(); }

  static void Restore() {
    g_library = {};
    SetVersion({0, 0, 0, 9, 0, 0, 0, 0});
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kDrivers);
  }
};

TEST_F(Startup, ReadsTheInstalledVersionUnlessThereIsSoftwareOnly) {
  using Answer = std::optional<uint32_t>;
  // A short value counts as followed by zeros, bytes from 0x80 on are negative, sums wrap, 600 bytes are too many.
  const std::pair<std::vector<uint8_t>, Answer> cases[] = {{{0, 0, 0, 8, 0, 0, 0, 1}, 0},
                                                           {{0, 0, 0, 8, 0, 0, 0, 0}, 1},
                                                           {{0, 0, 0, 9}, 0},
                                                           {{0, 0, 0, 0xF7, 0, 0, 0, 0}, 1},
                                                           {{0, 0, 1, 0, 0, 0, 0xFF, 8}, 1},
                                                           {{0, 1, 0, 0, 0, 0xFF, 0, 9}, 0},
                                                           {{0x7F, 0, 0, 0, 0x7F, 0, 0, 0}, 1},
                                                           {std::vector<uint8_t>(600, 9), {}}};
  for (const auto& [version, answer] : cases) {
    SetVersion(version);
    EXPECT_EQ(ProbeDirect3D(), answer) << testing::PrintToString(version);
  }
  RemoveVersion();
  EXPECT_EQ(ProbeDirect3D(), std::nullopt);
  Restore();
  for (const DWORD softwareOnly : {1, 0}) {
    SetSoftwareOnly(softwareOnly);
    EXPECT_EQ(ProbeDirect3D(), softwareOnly);
  }
}

TEST_F(Startup, AFailedReadKeepsTheLastAnswer) {
  RemoveVersion();
  g_library.bNoDirect3D = 1;
  EXPECT_EQ(NIVRAL_InitializeEx(0), 0u);
  EXPECT_EQ(g_library.bNoDirect3D, 1u);
  SetVersion({0, 0, 0, 9, 0, 0, 0, 0});
  EXPECT_EQ(NIVRAL_Initialize(), 0u);
  EXPECT_EQ(g_library.bNoDirect3D, 0u);
  EXPECT_EQ(NIVRAL_UnInitialize(), 1u);
}

template <class Displayer>
bool IsA(void* handle) {
  return dynamic_cast<Displayer*>(static_cast<BaseDisplayer*>(handle)) != nullptr;
}

TEST_F(Startup, SdlModeOpensSdlPanesAndKeepsTheProbesAnswer) {
  g_library.bNoDirect3D = 1;
  EXPECT_EQ(NIVRAL_InitializeEx(1), 0u);
  EXPECT_EQ(NIVRAL_InitializeEx(1), 0u);
  EXPECT_EQ(g_library.bNoDirect3D, 1u);
  void* pane = nullptr;
  EXPECT_EQ(NIVRAL_DWOpenDraw(&pane), 0u);
  EXPECT_TRUE(IsA<SDLDisplayer>(pane));
  NIVRAL_DWCloseDraw(pane);
  EXPECT_EQ(NIVRAL_UnInitialize(), 0u);
  EXPECT_EQ(g_library.bUseSDL, 1u) << "the flag outlives the shutdown";
  EXPECT_EQ(SDL_WasInit(0), 0u);
}

TEST_F(Startup, WithoutDirect3DAndForUnknownTypesPanesAreDirectDraw) {
  g_library.bNoDirect3D = 1;
  void* panes[2] = {};
  EXPECT_EQ(NIVRAL_DWOpenDraw(&panes[0]), 0u);
  EXPECT_EQ(NIVRAL_DWOpenDrawEx(&panes[1], 7), 0u);
  for (void* pane : panes) {
    EXPECT_TRUE(IsA<CDirectDraw>(pane));
    NIVRAL_DWCloseDraw(pane);
  }
}

}  // namespace
