// SPDX-License-Identifier: MIT
// Compiled for its own instruction set: includes nothing but intrinsics, plain declarations and the shared
// loops, and holds nothing that runs while the library is loaded. Vectors stay 256 bits wide: what pays is
// choosing bytes by a mask register, which takes a third of the operations on most processors that can.
#include "colour/vector_avx2.h"

#include "colour/yuv_loops.h"

const YuvKernels kAvx512YuvKernels = {
    {YuvToPixels<Bgr24Out>, YuvToPixels<Bgrx32Out>, YuvToPixels<Rgb565Out>, YuvToPixels<Rgb555Out>},
    YuvTo422,
};
