// SPDX-License-Identifier: MIT
#include "display/font_choice.h"

std::string ChooseFontFile(const std::string& folder, bool (*exists)(const char* path)) {
  for (const char* name : {"\\Microsoft YaHei UI.ttf", "\\simfang.ttf", "\\simhei.ttf"}) {
    std::string path = folder + name;
    if (exists(path.c_str())) return path;
  }
  return folder + "\\simkai.ttf";
}
