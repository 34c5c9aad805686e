// SPDX-License-Identifier: MIT
// The inner loops of this folder, once per instruction set. All forms of a loop give the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace libnivral {

struct ByteMap;
struct ChromaMap;
struct ConversionTables;

/// Two rows of luma, the chroma row that they share, and the two rows of packed pixels made of them.
struct YuvRows {
  uint8_t* out[2];
  const uint8_t* y[2];
  const uint8_t* u;
  const uint8_t* v;
};

/// The reverse: two rows of packed pixels (24-bit, blue first) and the planes' rows made of them.
struct RgbRows {
  uint8_t* y[2];
  uint8_t* u;
  uint8_t* v;
  const uint8_t* bgr[2];
};

/// Packed pixels that planes are converted to. The 16-bit ones are words with red in the high bits.
enum class PixelFormat { Bgr24, Bgrx32, Rgb565, Rgb555 };
constexpr size_t kPixelFormatCount = 4;

/// Converts the first width & ~1 pixels of both rows; chroma has half as many samples.
using YuvRowsKernel = void (*)(const YuvRows& rows, int32_t width, const ConversionTables& tables);
using RgbRowsKernel = void (*)(const RgbRows& rows, int32_t width);
/// One row to U, Y0, V, Y1 per pixel pair.
using Yuv422RowKernel = void (*)(uint8_t* out, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                                 int32_t width);

/// out[i] = map[in[i]]; `out` does not overlap `in`.
using MapBytesKernel = void (*)(uint8_t* out, const uint8_t* in, size_t count, const ByteMap& map);

/// Rows without gaps between them, each of which is copied from its end to its beginning.
struct ReversedRows {
  uint8_t* out;
  const uint8_t* in;
  size_t rowBytes;
  size_t rows;
};
using MapRowsReversedKernel = void (*)(const ReversedRows& rows, const ByteMap& map);
using CopyRowsReversedKernel = void (*)(const ReversedRows& rows);

/// Two planes mapped together.
struct PlanePair {
  uint8_t* outU;
  uint8_t* outV;
  const uint8_t* inU;
  const uint8_t* inV;
};
using MapPairsKernel = void (*)(const PlanePair& planes, size_t count, const ChromaMap& map);
using MapPairRowsReversedKernel = void (*)(const PlanePair& planes, size_t rowBytes, size_t rows,
                                           const ChromaMap& map);

/// Writes each of `count` bytes `times` times, 1 to kMaxRepeat.
using RepeatBytesKernel = void (*)(uint8_t* out, const uint8_t* in, size_t count, int32_t times);
constexpr int32_t kMaxRepeat = 8;

/// One kernel per PixelFormat.
struct PixelKernels {
  YuvRowsKernel bgr24;
  YuvRowsKernel bgrx32;
  YuvRowsKernel rgb565;
  YuvRowsKernel rgb555;
};

/// One form of the conversions of planes.
struct YuvKernels {
  PixelKernels toPixels;
  Yuv422RowKernel to422;
};

/// One form of every loop.
struct ColourKernels {
  const char* name;
  /// What the processor must have (kCpu... of util/cpu.h).
  uint32_t features;
  YuvKernels yuv;
  RgbRowsKernel bgrToYuv;
  MapBytesKernel mapBytes;
  MapRowsReversedKernel mapRowsReversed;
  CopyRowsReversedKernel copyRowsReversed;
  MapPairsKernel mapPairs;
  MapPairRowsReversedKernel mapPairRowsReversed;
  RepeatBytesKernel repeatBytes;
};

extern const ColourKernels kScalarKernels;
extern const ColourKernels kSsse3Kernels;
extern const ColourKernels kAvx2Kernels;
/// What gains from the newer set; the rest is that of kAvx2Kernels.
extern const YuvKernels kAvx512YuvKernels;
extern const CopyRowsReversedKernel kAvx512CopyRowsReversed;

YuvRowsKernel ToPixels(const ColourKernels& kernels, PixelFormat format);

struct KernelList {
  const ColourKernels* const* first;
  size_t count;
  const ColourKernels* const* begin() const { return first; }
  const ColourKernels* const* end() const { return first + count; }
};

/// Every form this library was built with: plain code first, each later one for newer processors.
KernelList AllKernels();

/// The fastest form that the processor and the mask allow.
const ColourKernels& ActiveKernels();

}  // namespace libnivral
