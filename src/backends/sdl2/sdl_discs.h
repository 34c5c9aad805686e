// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "backends/sdl2/sdl_atlas.h"
#include "display/overlay_list.h"

namespace libnivral {

/// Small discs as white pictures: landmarks come by the dozen and in one size, and each would be several
/// rectangles.
class SdlDiscs {
 public:
  /// Twice the radius wide and high, without the disc's outermost column at the left and row at the top.
  /// Without a texture where rectangles are to be painted instead: for large discs, and without room.
  SdlSprite Find(SdlAtlas& atlas, int32_t radius);

 private:
  static constexpr int32_t kMaxRadius = 8;

  SdlSprite Make(SdlAtlas& atlas, int32_t radius);

  std::array<SdlSprite, kMaxRadius + 1> m_sprites{};
  uint32_t m_generation = 0;  ///< of the atlas
  RectList m_parts;
};

}  // namespace libnivral
