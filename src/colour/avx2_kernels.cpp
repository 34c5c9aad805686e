// SPDX-License-Identifier: MIT
// Compiled for its own instruction set: includes nothing but intrinsics, plain declarations and the shared
// loops.
#include "colour/vector_avx2.h"

#include "colour/bgr_loops.h"
#include "colour/frame_loops.h"
#include "colour/pair_loops.h"
#include "colour/yuv_loops.h"
#include "util/cpu.h"

namespace libnivral {

const ColourKernels kAvx2Kernels = {
    .name = "avx2",
    .features = kCpuSsse3 | kCpuAvx2,
    .yuv = kYuvKernels<kScalarKernels>,
    .bgrToYuv = BgrToYuv,
    .mapBytes = MapBytes,
    .mapRowsReversed = MapRowsReversed,
    .copyRowsReversed = CopyRowsReversed<kScalarKernels>,
    .mapPairs = MapPairs,
    .mapPairRowsReversed = MapPairRowsReversed,
    .repeatBytes = RepeatBytes,
};

}  // namespace libnivral
