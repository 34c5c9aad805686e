// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

/// BT.601 limited-range coefficients in fixed point with 16 fraction bits.
struct YuvCoefficients {
  int32_t luma;
  int32_t blueFromU;
  int32_t greenFromU;
  int32_t greenFromV;
  int32_t redFromV;
};

/// The coefficients multiplied out for every sample value, (value - 16) for luma and (value - 128) for
/// chroma.
struct ConversionTables {
  YuvCoefficients coefficients{};
  int32_t luma[256]{};
  int32_t blueFromU[256]{};
  int32_t greenFromU[256]{};
  int32_t greenFromV[256]{};
  int32_t redFromV[256]{};
};

/// Of the converters and backends: stated with 13 fraction bits, times 8 here so that one set of loops serves
/// both; shifting eight times the sum by 16 bits gives what shifting the sum by 13 gives.
extern const ConversionTables kConverterTables;

/// Of snapshots.
extern const ConversionTables kSnapshotTables;

}  // namespace libnivral
