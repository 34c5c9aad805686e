// SPDX-License-Identifier: MIT
#include "display/font_choice.h"

std::string ChooseFontFile(const std::string& folder, bool (*exists)(const char* path)) {
  for (const char* name : {"\\Microsoft YaHei UI.ttf", "\\simfang.ttf", "\\simhei.ttf"}) {
    std::string path = folder + name;
    if (exists(path.c_str())) return path;
  }
  return folder + "\\simkai.ttf";
}

std::vector<std::string> FallbackFontFiles(const std::string& path) {
  const std::string folder = path.substr(0, path.rfind('\\') + 1);
  std::vector<std::string> files;
  for (const char* name :
       {"msyh.ttc", "msyh.ttf", "simsun.ttc", "segoeui.ttf", "tahoma.ttf", "arial.ttf", "micross.ttf"})
    files.push_back(folder + name);
  return files;
}
