// SPDX-License-Identifier: MIT
#include "player/library.h"

#include <string>

NivralFunctions nivral;

namespace {

HMODULE Load(const char* name) {
  HMODULE module = LoadLibraryA(name);
  if (!module) throw MissingLibrary(std::string(name) + " is missing or cannot be loaded");
  return module;
}

template <class Function>
void Find(HMODULE module, const char* name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  if (!function) throw MissingLibrary(std::string("libnivral.dll has no function ") + name);
}

}  // namespace

// What libnivral.dll needs comes first, so that the message names the file that is missing.
void LoadNivral() {
  Load("SDL2.dll");
  Load("SDL2_ttf.dll");
  HMODULE module = Load("libnivral.dll");
#define PLAYER_FIND(name) Find(module, "NIVRAL_" #name, nivral.name);
  PLAYER_FUNCTIONS(PLAYER_FIND)
#undef PLAYER_FIND
}
