// SPDX-License-Identifier: MIT
#include "display/overlay_types.h"

#include <algorithm>

void RectCollector::Add(int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
  const int64_t left = std::max<int64_t>(std::min(x1, x2), 0);
  const int64_t top = std::max<int64_t>(std::min(y1, y2), 0);
  const int64_t right = std::min(std::max(x1, x2) + 1, m_width);
  const int64_t bottom = std::min(std::max(y1, y2) + 1, m_height);
  if (left >= right || top >= bottom) return;
  m_rects.push_back({static_cast<int32_t>(left), static_cast<int32_t>(top), static_cast<int32_t>(right),
                     static_cast<int32_t>(bottom)});
}
