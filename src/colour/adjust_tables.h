// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "colour/byte_map.h"
#include "colour/chroma_map.h"

namespace libnivral {

/// Largest magnitudes that colour settings may have; a value beyond its limit switches the adjustment off.
constexpr int32_t kMaxBrightness = 127;
constexpr int32_t kMaxContrast = 100;
constexpr int32_t kMaxSaturation = 100;
constexpr int32_t kMaxHue = 180;

/// Picture settings as the client gives them.
struct ColourValues {
  int32_t brightness = 0;
  int32_t contrast = 0;
  int32_t saturation = 0;
  int32_t hue = 0;

  bool operator==(const ColourValues&) const = default;
};

/// Whether settings act on the picture: not all zero and each within its range.
bool IsAdjustActive(const ColourValues& values);

/// Brightness, contrast, saturation and hue as functions of the samples. Without hue the chroma planes do not
/// depend on each other and have one byte map; with hue they are mapped in pairs.
class AdjustTables {
 public:
  /// Makes the tables for active settings; does nothing when they are the same as last time.
  void Update(const ColourValues& values);

  const ByteMap& Luma() const { return m_luma; }
  const ByteMap& Chroma() const { return m_chroma; }

  /// Null without hue.
  const ChromaMap* Pairs() const { return m_built.hue ? &m_pairs : nullptr; }

 private:
  ColourValues m_built;
  ByteMap m_luma;
  ByteMap m_chroma;
  ChromaMap m_pairs;
};

}  // namespace libnivral
