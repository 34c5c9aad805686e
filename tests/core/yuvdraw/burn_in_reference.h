// SPDX-License-Identifier: MIT
// What burning a record into planes must write, worked out anew: the picture is a list of sample positions,
// made from plain loops over straight lines.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "display/records.h"

using namespace libnivral;

struct ReferencePlanes {
  ReferencePlanes(uint32_t w, uint32_t h, const std::vector<uint8_t>& luma, const std::vector<uint8_t>& blue,
                  const std::vector<uint8_t>& red)
      : width(w), height(h), y(luma), u(blue), v(red) {}

  void Dot(uint32_t px, uint32_t py) {
    const uint64_t at = uint64_t{py} * width + px;
    if (at < uint64_t{width} * height) y[at] = 0;
    const uint64_t half = uint64_t{py / 2} * width / 2 + px / 2;
    if (half < uint64_t{width / 2} * (height / 2)) u[half] = v[half] = 0;
  }

  static uint32_t Half(long long value) { return static_cast<uint32_t>(value & 0xFFFF); }

  void Straight(long long x1, long long y1, long long x2, long long y2) {
    uint32_t ax = Half(x1), ay = Half(y1), bx = Half(x2), by = Half(y2);
    if (ax >= width) --ax;
    if (bx >= width) --bx;
    if (ay >= height) --ay;
    if (by >= height) --by;
    if (ay == by) {
      for (uint32_t x = std::min(ax, bx); x <= std::max(ax, bx); ++x)
        Dot(x, ay);
    } else {
      for (uint32_t row = std::min(ay, by); row <= std::max(ay, by); ++row)
        Dot(ax, row);
    }
  }

  void Area(long long x, long long top, long long characters) {
    if (x < 0) x = 0;
    if (top < 0) top = 0;
    for (long long row = Half(top); row < Half(top + 10); ++row)
      Straight(x, row, x + characters * 6, row);
  }

  void Draw(const AlgRecord& r) {
    if (y.empty() || width == 0 || height == 0) return;
    static const char* const names[] = {"unknown", "Person",  "car",     "bus",
                                        "truck",   "minibus", "vehicle", "non-vehicle"};
    for (int i = 0; i < r.count && i < 12; ++i) {
      const long long left = Whole(r.left[i] < 0 ? 0 : r.left[i]);
      const long long top = Whole(r.top[i] < 0 ? 0 : r.top[i]);
      const auto w = static_cast<float>(width), h = static_cast<float>(height);
      const long long right = Whole(r.right[i] <= w ? r.right[i] : w);  // no number is beyond
      const long long bottom = Whole(r.bottom[i] <= h ? r.bottom[i] : h);
      Straight(left, top, right, top);
      Straight(left, top, left, bottom);
      Straight(left, bottom, right, bottom);
      Straight(right, top, right, bottom);
      if (r.classId[i] != 0) {
        const std::string name = r.classId[i] <= 7 ? names[r.classId[i]] : "Unk";
        Area(left, top - 11, static_cast<long long>(name.size()));
      }
      if (r.distance[i] == 0) continue;
      const auto characters = static_cast<long long>(std::to_string(r.distance[i]).size()) + 1;
      const bool inside = right - left > characters * 6 && bottom - top > 30;
      if (top > height || left > width) continue;
      Area(inside ? left + (right - left) / 2 - characters * 3 : left, inside ? bottom - 10 : bottom + 2,
           characters);
    }
  }

  /// Toward zero; the lowest 32-bit integer for what does not fit.
  static long long Whole(float value) {
    const double d = std::trunc(static_cast<double>(value));
    return d >= -2147483648.0 && d <= 2147483647.0 ? static_cast<long long>(d) : -2147483648LL;
  }

  uint32_t width;
  uint32_t height;
  std::vector<uint8_t> y;
  std::vector<uint8_t> u;
  std::vector<uint8_t> v;
};
