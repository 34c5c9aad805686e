// SPDX-License-Identifier: MIT
// The plain form of every loop: the arithmetic as it is defined, on any processor.
#include <algorithm>

#include "colour/byte_map.h"
#include "colour/chroma_map.h"
#include "colour/conversion_tables.h"
#include "colour/kernels.h"

namespace libnivral {
namespace {

struct Rgb {
  uint8_t blue;
  uint8_t green;
  uint8_t red;
};

uint8_t Clamp(int32_t value) {
  return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

struct StoreBgr24 {
  static constexpr size_t kBytes = 3;
  static void Store(uint8_t* out, Rgb p) {
    out[0] = p.blue;
    out[1] = p.green;
    out[2] = p.red;
  }
};

struct StoreBgrx32 {
  static constexpr size_t kBytes = 4;
  static void Store(uint8_t* out, Rgb p) {
    StoreBgr24::Store(out, p);
    out[3] = 0;
  }
};

void StoreWord(uint8_t* out, int32_t word) {
  out[0] = static_cast<uint8_t>(word);
  out[1] = static_cast<uint8_t>(word >> 8);
}

struct StoreRgb565 {
  static constexpr size_t kBytes = 2;
  static void Store(uint8_t* out, Rgb p) {
    StoreWord(out, (p.red & 0xF8) << 8 | (p.green & 0xFC) << 3 | p.blue >> 3);
  }
};

struct StoreRgb555 {
  static constexpr size_t kBytes = 2;
  static void Store(uint8_t* out, Rgb p) {
    StoreWord(out, (p.red & 0xF8) << 7 | (p.green & 0xF8) << 2 | p.blue >> 3);
  }
};

template <class Format>
void YuvToPixels(const YuvRows& rows, int32_t width, const ConversionTables& t) {
  for (int32_t block = 0; block < width / 2; ++block) {
    const uint8_t u = rows.u[block];
    const uint8_t v = rows.v[block];
    const int32_t blue = t.blueFromU[u];
    const int32_t green = t.greenFromU[u] + t.greenFromV[v];
    const int32_t red = t.redFromV[v];
    for (int row = 0; row < 2; ++row) {
      for (size_t x = static_cast<size_t>(block) * 2, end = x + 2; x < end; ++x) {
        const int32_t luma = t.luma[rows.y[row][x]];
        Format::Store(rows.out[row] + x * Format::kBytes,
                      {Clamp((luma + blue) >> 16), Clamp((luma - green) >> 16), Clamp((luma + red) >> 16)});
      }
    }
  }
}

uint8_t Luma(const uint8_t* bgr) {
  return static_cast<uint8_t>(((66 * bgr[2] + 129 * bgr[1] + 25 * bgr[0]) >> 8) + 16);
}

void BgrToYuv(const RgbRows& rows, int32_t width) {
  for (int32_t block = 0; block < width / 2; ++block) {
    int32_t blue = 0, green = 0, red = 0;
    for (int row = 0; row < 2; ++row) {
      for (size_t x = static_cast<size_t>(block) * 2, end = x + 2; x < end; ++x) {
        const uint8_t* bgr = rows.bgr[row] + x * 3;
        rows.y[row][x] = Luma(bgr);
        blue += bgr[0];
        green += bgr[1];
        red += bgr[2];
      }
    }
    rows.u[block] = static_cast<uint8_t>(((112 * blue - 74 * green - 38 * red) >> 10) + 128);
    rows.v[block] = static_cast<uint8_t>(((112 * red - 94 * green - 18 * blue) >> 10) + 128);
  }
}

void YuvTo422(uint8_t* out, const uint8_t* y, const uint8_t* u, const uint8_t* v, int32_t width) {
  for (int32_t pair = 0; pair < width / 2; ++pair, out += 4) {
    out[0] = u[pair];
    out[1] = y[pair * 2];
    out[2] = v[pair];
    out[3] = y[pair * 2 + 1];
  }
}

void MapBytes(uint8_t* out, const uint8_t* in, size_t count, const ByteMap& map) {
  std::transform(in, in + count, out, [&](uint8_t value) { return map.table[value]; });
}

void CopyRowsReversed(const ReversedRows& r) {
  for (size_t at = 0; at < r.rowBytes * r.rows; at += r.rowBytes)
    std::reverse_copy(r.in + at, r.in + at + r.rowBytes, r.out + at);
}

void MapRowsReversed(const ReversedRows& r, const ByteMap& map) {
  CopyRowsReversed(r);
  MapBytes(r.out, r.out, r.rowBytes * r.rows, map);
}

int32_t Rotated(int32_t along, int32_t across, const ChromaMap& map) {
  return static_cast<int32_t>((int64_t{along} * map.cosine + int64_t{across} * map.sine) /
                              (int64_t{1} << ChromaMap::kFractionBits));
}

// Both lines add, and the second uses the new u: the clients' pictures are tuned to this form.
void MapPair(const PlanePair& p, size_t to, size_t from, const ChromaMap& map) {
  const int32_t v = p.inV[from] - 128;
  const int32_t newU = Rotated(p.inU[from] - 128, v, map);
  const int32_t newV = Rotated(v, newU, map);
  p.outU[to] = static_cast<uint8_t>(map.scaled[newU + ChromaMap::kMaxRotated]);
  p.outV[to] = static_cast<uint8_t>(map.scaled[newV + ChromaMap::kMaxRotated]);
}

void MapPairs(const PlanePair& p, size_t count, const ChromaMap& map) {
  for (size_t i = 0; i < count; ++i)
    MapPair(p, i, i, map);
}

void MapPairRowsReversed(const PlanePair& p, size_t rowBytes, size_t rows, const ChromaMap& map) {
  for (size_t at = 0; at < rowBytes * rows; at += rowBytes)
    for (size_t i = 0; i < rowBytes; ++i)
      MapPair(p, at + i, at + rowBytes - 1 - i, map);
}

void RepeatBytes(uint8_t* out, const uint8_t* in, size_t count, int32_t times) {
  for (size_t i = 0; i < count; ++i)
    out = std::fill_n(out, times, in[i]);
}

}  // namespace

const ColourKernels kScalarKernels = {
    .name = "scalar",
    .features = 0,
    .yuv = {.toPixels = {.bgr24 = YuvToPixels<StoreBgr24>,
                         .bgrx32 = YuvToPixels<StoreBgrx32>,
                         .rgb565 = YuvToPixels<StoreRgb565>,
                         .rgb555 = YuvToPixels<StoreRgb555>},
            .to422 = YuvTo422},
    .bgrToYuv = BgrToYuv,
    .mapBytes = MapBytes,
    .mapRowsReversed = MapRowsReversed,
    .copyRowsReversed = CopyRowsReversed,
    .mapPairs = MapPairs,
    .mapPairRowsReversed = MapPairRowsReversed,
    .repeatBytes = RepeatBytes,
};

}  // namespace libnivral
