// SPDX-License-Identifier: MIT
#include "support/import_patch.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

template <class T>
T* At(ULONG_PTR base, DWORD offset) {
  return reinterpret_cast<T*>(base + offset);
}

/// The slot of `name` in the thunks of one imported DLL, null when it is not among them.
ULONG_PTR* FindInDll(ULONG_PTR base, const IMAGE_IMPORT_DESCRIPTOR& import, const char* name) {
  auto* names = At<IMAGE_THUNK_DATA>(base, import.OriginalFirstThunk);
  auto* slots = At<ULONG_PTR>(base, import.FirstThunk);
  for (; names->u1.AddressOfData; ++names, ++slots) {
    if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
    const auto* entry = At<IMAGE_IMPORT_BY_NAME>(base, static_cast<DWORD>(names->u1.AddressOfData));
    if (!std::strcmp(reinterpret_cast<const char*>(entry->Name), name)) return slots;
  }
  return nullptr;
}

}  // namespace

ULONG_PTR* ImportSlot(const char* dll, const char* name, HMODULE importer) {
  const auto base = reinterpret_cast<ULONG_PTR>(importer);
  const auto* dos = At<IMAGE_DOS_HEADER>(base, 0);
  const auto* nt = At<IMAGE_NT_HEADERS>(base, static_cast<DWORD>(dos->e_lfanew));
  const auto& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(base, directory.VirtualAddress); import->Name; ++import) {
    if (_stricmp(At<char>(base, import->Name), dll) != 0) continue;
    if (ULONG_PTR* slot = FindInDll(base, *import, name)) return slot;
  }
  std::fprintf(stderr, "ImportPatch: the module does not import %s from %s\n", name, dll);
  std::exit(2);
}
