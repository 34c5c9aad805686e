// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include "colour/byte_map.h"
#include "display/frame_view.h"

/// Whether settings act on the picture: not all zero and each within its range.
bool IsAdjustActive(const ColorValues& values);

/// Brightness, contrast, saturation and hue as functions of the samples. Without hue the chroma planes do not
/// depend on each other and have one byte map; with hue they are mapped in pairs.
class AdjustTables {
 public:
  /// Makes the tables for active settings; does nothing when they are the same as last time. False when there
  /// is no memory.
  bool Update(const ColorValues& values);

  const ByteMap& Luma() const { return m_luma; }
  const ByteMap& Chroma() const { return m_chroma; }

  /// New (u, v) by old: entry u * 256 + v holds u in its low and v in its high byte. Null without hue.
  const uint16_t* Pairs() const { return m_built.hue ? m_pairs.get() : nullptr; }

 private:
  bool BuildPairs(const ColorValues& values);

  ColorValues m_built;
  ByteMap m_luma;
  ByteMap m_chroma;
  std::unique_ptr<uint16_t[]> m_pairs;
};
