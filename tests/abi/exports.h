/* SPDX-License-Identifier: MIT */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef void (*AbiFunction)(void);

struct AbiExport {
  const char* name;
  AbiFunction function;
};

enum { kAbiExportCount = 44 };

/* Fills in every function that the public header declares, as a C program links it, and returns their number.
 */
size_t ListAbiExports(struct AbiExport list[kAbiExportCount]);

#ifdef __cplusplus
}
#endif
