// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "colour/byte_map.h"

namespace libnivral {

/// Both chroma samples of a pixel together. With u and v as distances to 128,
///   newU = trunc(u * cosine + v * sine), newV = trunc(v * cosine + newU * sine)
/// and each new value goes through one odd function that ends in a byte.
struct ChromaMap {
  /// In `cosine` and `sine`. Together with the least size of a factor that is not zero this is enough to
  /// truncate as doubles do, for every hue in whole degrees and every pair of samples.
  static constexpr int32_t kFractionBits = 30;
  /// No value leaves the rotation beyond this: |newU| <= 128 * sqrt(2), |newV| <= 128 + |newU|.
  static constexpr int32_t kMaxRotated = 320;
  enum class Scale { None, OddSymmetric, Table };

  int32_t cosine = 0;
  int32_t sine = 0;
  Scale scale = Scale::None;
  OddSymmetricMap odd;
  /// Bytes by value + kMaxRotated; one more word may be read and is dropped.
  uint16_t scaled[kMaxRotated * 2 + 2]{};

  /// `function` maps -kMaxRotated to kMaxRotated; its slope before rounding is the product of the two.
  template <class Function>
  void FillScale(Function function, double firstSlope, double secondSlope) {
    for (int32_t i = -kMaxRotated; i <= kMaxRotated; ++i)
      scaled[i + kMaxRotated] = function(i);
    ChooseScale(firstSlope, secondSlope);
  }

  void SetRotation(double newCosine, double newSine);

 private:
  void ChooseScale(double firstSlope, double secondSlope);
  bool EqualsOddSymmetric() const;
};

}  // namespace libnivral
