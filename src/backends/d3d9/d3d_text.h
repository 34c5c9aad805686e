// SPDX-License-Identifier: MIT
#pragma once

#include <d3dx9.h>

#include <array>
#include <memory>

#include "backends/d3d9/d3d_text_batch.h"
#include "backends/d3d9/d3d_text_rasteriser.h"
#include "display/text_layout.h"

namespace libnivral {

/// The font a text painter starts with.
struct TextFont {
  ID3DXFont* d3dx;  ///< may be null; else it outlives its use
  int32_t height;   ///< as for D3DXCreateFont
  const char* face;
  int32_t frameHeight;  ///< of the picture that the texts lie over
};

/// Draws texts in one font. What a text looks like is found out once and kept while it is in use, for the
/// last kCapacity different ones: by D3DX, or by GDI where D3DX has no font or fails.
class TextPainter {
 public:
  static constexpr size_t kCapacity = 64;

  TextPainter();
  ~TextPainter();

  bool Started() const { return m_rasteriser != nullptr; }
  void Start(IDirect3DDevice9* device, const TextFont& font);
  void Stop();

  /// Lets go of all textures, before the device is reset.
  void Forget();

  /// Draws lines that are broken between words. Nothing where there is no width for them.
  void Draw(TextBatch& batch, const char* text, const OsdPlace& place, uint32_t colour);

 private:
  struct Entry;

  const Entry* Find(const char* text, int32_t room);
  const Entry* Make(const char* text, int32_t room);
  bool Rasterise(const char* text, int32_t room, Entry& entry);
  void FallBackToGdi();

  IDirect3DDevice9* m_device = nullptr;
  TextFont m_font{};
  bool m_byD3dx = false;
  std::unique_ptr<TextRasteriser> m_rasteriser;
  uint64_t m_uses = 0;
  std::array<std::unique_ptr<Entry>, kCapacity> m_cache;
};

}  // namespace libnivral
