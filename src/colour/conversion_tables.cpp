// SPDX-License-Identifier: MIT
#include "colour/conversion_tables.h"

namespace libnivral {
namespace {

constexpr ConversionTables MakeTables(const YuvCoefficients& c) {
  ConversionTables t;
  t.coefficients = c;
  for (int32_t i = 0; i < 256; ++i) {
    t.luma[i] = (i - 16) * c.luma;
    t.blueFromU[i] = (i - 128) * c.blueFromU;
    t.greenFromU[i] = (i - 128) * c.greenFromU;
    t.greenFromV[i] = (i - 128) * c.greenFromV;
    t.redFromV[i] = (i - 128) * c.redFromV;
  }
  return t;
}

}  // namespace

constexpr ConversionTables kConverterTables =
    MakeTables({9535 * 8, 16531 * 8, 3203 * 8, 6660 * 8, 13074 * 8});
constexpr ConversionTables kSnapshotTables = MakeTables({76309, 132201, 25675, 53279, 104597});

}  // namespace libnivral
