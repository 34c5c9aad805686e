// SPDX-License-Identifier: MIT
#include "display/fonts.h"

#include <cstdio>
#include <cstring>
#include <iterator>

namespace libnivral {

void ChooseFontFile(FontFile& file, const char* folder, bool (*exists)(const char* path)) {
  for (const char* name : {"Microsoft YaHei UI.ttf", "simfang.ttf", "simhei.ttf"}) {
    std::snprintf(file, sizeof(file), "%s\\%s", folder, name);
    if (exists(file)) return;
  }
  std::snprintf(file, sizeof(file), "%s\\simkai.ttf", folder);
}

bool FallbackFontFile(FontFile& file, const char* path, size_t index) {
  constexpr const char* kNames[] = {"msyh.ttc",   "msyh.ttf",  "simsun.ttc", "segoeui.ttf",
                                    "tahoma.ttf", "arial.ttf", "micross.ttf"};
  if (index >= std::size(kNames)) return false;
  const char* const slash = std::strrchr(path, '\\');
  const int folder = slash ? static_cast<int>(slash - path) + 1 : 0;
  std::snprintf(file, sizeof(file), "%.*s%s", folder, path, kNames[index]);
  return true;
}

}  // namespace libnivral
