// SPDX-License-Identifier: MIT
#include "player/settings.h"

#include <algorithm>

#include "player/windows/text.h"

namespace {

constexpr wchar_t kKey[] = L"Software\\libnivral\\player";
constexpr size_t kMostRecent = 8;

template <class Value>
bool Load(const wchar_t* name, Value& value) {
  Value loaded{};
  DWORD size = sizeof(loaded);
  if (RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_ANY, nullptr, &loaded, &size) != ERROR_SUCCESS ||
      size != sizeof(loaded))
    return false;
  value = loaded;
  return true;
}

void Save(const wchar_t* name, DWORD type, const void* data, size_t size) {
  RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, type, data, static_cast<DWORD>(size));
}

}  // namespace

void Settings::AddRecent(const std::string& path) {
  recent.erase(std::remove(recent.begin(), recent.end(), path), recent.end());
  recent.insert(recent.begin(), path);
  recent.resize(std::min(recent.size(), kMostRecent));
}

Settings LoadSettings() {
  Settings settings;
  DWORD volume = static_cast<DWORD>(settings.volume), repeat = 0;
  Load(L"Volume", volume);
  Load(L"Repeat", repeat);
  settings.volume = static_cast<int>(std::min<DWORD>(volume, 100));
  settings.repeat = repeat != 0;
  WINDOWPLACEMENT placement{};
  if (Load(L"Window", placement) && placement.length == sizeof(placement)) settings.placement = placement;
  std::wstring paths(32'768, L'\0');
  auto size = static_cast<DWORD>(paths.size() * sizeof(wchar_t));
  if (RegGetValueW(HKEY_CURRENT_USER, kKey, L"Recent", RRF_RT_REG_MULTI_SZ, nullptr, paths.data(), &size) ==
      ERROR_SUCCESS)
    for (const wchar_t* path = paths.c_str(); *path; path += std::wstring_view(path).size() + 1)
      settings.recent.push_back(Utf8(path));
  return settings;
}

void SaveSettings(const Settings& settings) {
  const auto volume = static_cast<DWORD>(settings.volume);
  const DWORD repeat = settings.repeat;
  Save(L"Volume", REG_DWORD, &volume, sizeof(volume));
  Save(L"Repeat", REG_DWORD, &repeat, sizeof(repeat));
  if (settings.placement) Save(L"Window", REG_BINARY, &*settings.placement, sizeof(*settings.placement));
  std::wstring paths;
  for (const std::string& path : settings.recent)
    paths += Wide(path) + L'\0';
  paths += L'\0';
  Save(L"Recent", REG_MULTI_SZ, paths.data(), paths.size() * sizeof(wchar_t));
}
