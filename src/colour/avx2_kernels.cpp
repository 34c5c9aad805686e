// SPDX-License-Identifier: MIT
// Compiled for its own instruction set: includes nothing but intrinsics, plain declarations and the shared
// loops.
#include "colour/vector_avx2.h"

#include "colour/bgr_loops.h"
#include "colour/frame_loops.h"
#include "colour/yuv_loops.h"
#include "util/cpu.h"

const ColourKernels kAvx2Kernels = {
    {{YuvToPixels<Bgr24Out, kScalarKernels>, YuvToPixels<Bgrx32Out, kScalarKernels>,
      YuvToPixels<Rgb565Out, kScalarKernels>, YuvToPixels<Rgb555Out, kScalarKernels>},
     YuvTo422<kScalarKernels>},
    "avx2",
    kCpuSsse3 | kCpuAvx2,
    BgrToYuv,
    MapBytes,
    MapRowsReversed,
    CopyRowsReversed,
    MapPairs,
    MapPairRowsReversed,
    RepeatBytes,
};
