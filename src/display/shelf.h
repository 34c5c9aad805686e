// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace libnivral {

struct ShelfPlace {
  int32_t x;
  int32_t y;
};

/// Hands out places in a square, from left to right in rows as high as their highest piece.
class Shelf {
 public:
  explicit Shelf(int32_t side) : m_side(side) {}

  /// Nothing when the piece does not fit into what is left.
  std::optional<ShelfPlace> Place(int32_t width, int32_t height) {
    if (width > m_side - m_x) {
      m_y += m_rowHeight;
      m_x = m_rowHeight = 0;
    }
    if (width > m_side || height > m_side - m_y) return std::nullopt;
    const ShelfPlace place{m_x, m_y};
    m_x += width;
    m_rowHeight = std::max(m_rowHeight, height);
    return place;
  }

 private:
  int32_t m_side;
  int32_t m_x = 0;
  int32_t m_y = 0;
  int32_t m_rowHeight = 0;
};

}  // namespace libnivral
