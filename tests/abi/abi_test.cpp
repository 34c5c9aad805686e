// SPDX-License-Identifier: MIT
// The public header comes first: it must stand alone in C++ as well.
#include <nivral/nivral.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

/// Calls functions that take a handle with a null one and zeros for everything else; the others cannot be asked.
template <class... Rest>
uint32_t WithNullHandle(uint32_t (*function)(void*, Rest...)) {
  return function(nullptr, Rest{}...);
}
template <class... Rest>
uint32_t WithNullHandle(uint32_t (*)(Rest...)) {
  return 1;
}

TEST(Abi, HeaderFunctionsAreTheExportedOnesAndRefuseNullHandles) {
  const HMODULE library = GetModuleHandleW(L"libnivral.dll");
  ASSERT_TRUE(library);
#define EXPORT(function)                                                  \
  EXPECT_EQ(reinterpret_cast<void*>(&function),                           \
            reinterpret_cast<void*>(GetProcAddress(library, #function))); \
  EXPECT_EQ(WithNullHandle(&function), 1U) << #function;
#include "exports.inc"
}

TEST(Abi, NullPointersAreRefusedOrIgnored) {
  EXPECT_EQ(NIVRAL_DWOpenDraw(nullptr), 1U);
  for (const uint32_t type : {0U, 1U, 2U, 0xFFFFFFFFU})
    EXPECT_EQ(NIVRAL_DWOpenDrawEx(nullptr, type), 1U) << type;
  EXPECT_EQ(NIVRAL_WVOpenWave(nullptr), 1U);
  EXPECT_EQ(
      NIVRAL_GetColorParamsRange(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0U);
  EXPECT_EQ(NIVRAL_rgb24_to_yv12_c(nullptr, nullptr, nullptr, nullptr, 0, 0, 0), 0U);
  EXPECT_EQ(NIVRAL_yv12_to_rgb24_c(nullptr, 0, nullptr, nullptr, nullptr, 0, 0, 0, 0), 0U);
}

TEST(Abi, LibraryCarriesTheHeadersVersion) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(GetModuleHandleW(L"libnivral.dll"), path, MAX_PATH);
  std::vector<char> data(GetFileVersionInfoSizeW(path, nullptr));
  ASSERT_FALSE(data.empty());
  ASSERT_TRUE(GetFileVersionInfoW(path, 0, static_cast<DWORD>(data.size()), data.data()));
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueW(data.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
  EXPECT_EQ(HIWORD(fixed->dwFileVersionMS), NIVRAL_VERSION_MAJOR);
  EXPECT_EQ(LOWORD(fixed->dwFileVersionMS), NIVRAL_VERSION_MINOR);
  EXPECT_EQ(HIWORD(fixed->dwFileVersionLS), NIVRAL_VERSION_PATCH);
}

TEST(Abi, LogCarriesTheLibrarysNameAndWhyNothingShows) {
  namespace fs = std::filesystem;
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const fs::path folder = fs::path(path).parent_path() / "Log" / fs::path(path).stem();
  std::error_code ignored;
  fs::remove_all(folder, ignored);

  void* pane = nullptr;
  ASSERT_EQ(NIVRAL_DWOpenDrawEx(&pane, 0), 0U);
  EXPECT_EQ(NIVRAL_DWInitDraw(pane, 64, 36, 0), 0U);
  EXPECT_EQ(NIVRAL_DWCloseDraw(pane), 0U);
  std::string text;
  for (const auto& entry : fs::directory_iterator(folder)) {
    EXPECT_TRUE(entry.path().filename().wstring().starts_with(L"libnivral----")) << entry.path();
    std::ifstream file(entry.path(), std::ios::binary);
    text.append(std::istreambuf_iterator<char>(file), {});
  }
  EXPECT_NE(text.find("] NIVRAL_DWOpenDrawEx: new SDLDisplayer\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("] NIVRAL_DWInitDraw: the pane cannot draw, code 0x1\r\n"), std::string::npos) << text;
}

}  // namespace
