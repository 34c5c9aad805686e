// SPDX-License-Identifier: MIT
// Compiled for its own instruction set: includes nothing but intrinsics, plain declarations and the shared
// loops, and holds nothing that runs while the library is loaded.
#include "colour/vector_avx512.h"

#include "colour/yuv_loops.h"

const YuvKernels kAvx512YuvKernels = {
    {YuvToPixels<Bgr24Out, kAvx2Kernels>, YuvToPixels<Bgrx32Out, kAvx2Kernels>,
     YuvToPixels<Rgb565Out, kAvx2Kernels>, YuvToPixels<Rgb555Out, kAvx2Kernels>},
    YuvTo422<kAvx2Kernels>,
};
