// SPDX-License-Identifier: MIT
// Compiled for its own instruction set: includes nothing but intrinsics, plain declarations and the shared
// loops, and holds nothing that runs while the library is loaded.
#include "colour/vector_avx512.h"

#include "colour/row_loops.h"
#include "colour/yuv_loops.h"

namespace libnivral {

const YuvKernels kAvx512YuvKernels = kYuvKernels<kAvx2Kernels>;
const CopyRowsReversedKernel kAvx512CopyRowsReversed = CopyRowsReversed<kAvx2Kernels>;

}  // namespace libnivral
