/* SPDX-License-Identifier: MIT
 * A C99 program's use of the public header, which comes first so that it must stand alone. */
#include <nivral/nivral.h>

#include "abi/exports.h"

/* In an initialiser the address would be that of a stub in this program. */
#define HANDLE(function) Add(list, &count, #function, (AbiFunction)function);
#define OTHER HANDLE

static void Add(struct AbiExport list[kAbiExportCount], size_t* count, const char* name,
                AbiFunction function) {
  if (*count < kAbiExportCount) {
    list[*count].name = name;
    list[*count].function = function;
  }
  ++*count;
}

size_t ListAbiExports(struct AbiExport list[kAbiExportCount]) {
  size_t count = 0;
#include "abi/exports.inc"
  return count;
}
