/* SPDX-License-Identifier: MIT
 * A C99 program's use of the public header, which comes first so that it must stand alone. */
#include <nivral/nivral.h>

#include "abi/exports.h"

#define HANDLE(function) {#function, (AbiFunction)function},
#define OTHER HANDLE

size_t ListAbiExports(struct AbiExport list[kAbiExportCount]) {
  const struct AbiExport all[] = {
#include "abi/exports.inc"
  };
  const size_t count = sizeof(all) / sizeof(all[0]);
  for (size_t i = 0; i < count && i < kAbiExportCount; ++i)
    list[i] = all[i];
  return count;
}
