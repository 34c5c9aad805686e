// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "colour/adjust_tables.h"
#include "colour/kernels.h"
#include "picture/frame_view.h"

namespace libnivral {

/// A plane and the place it is copied to, which it does not overlap. A plane of no bytes is not touched.
struct PlaneCopy {
  uint8_t* out;
  const uint8_t* in;
  size_t bytes;
};

/// Copies planes, adjusting and mirroring on the way: each sample is read once and written where the mirror
/// wants it.
class FrameCopier {
 public:
  /// `tables` may be null: colours stay. Mirror modes other than MirrorMode's copy only.
  FrameCopier(uint32_t mirrorMode, const AdjustTables* tables);

  /// Copies a frame that its planes hold into planes without padding: what is seen of it when whole strides
  /// are mirrored.
  void CopyFrame(const FrameView& to, const ConstFrameView& from, uint32_t width, uint32_t height) const;

  void CopyLuma(const PlaneCopy& plane, size_t stride) const;

  /// For planes of one stride.
  void CopyChroma(const PlaneCopy& u, const PlaneCopy& v, size_t stride) const;

  /// For planes of different strides: the first `adjusted` samples of both planes, as far as both have them,
  /// are adjusted as if they were one row, then `rows` rows of `strideV` are mirrored in each, as far as it
  /// has them. Nothing outside either plane is read or written.
  void CopyUnevenChroma(const PlaneCopy& u, const PlaneCopy& v, size_t strideV, size_t rows,
                        size_t adjusted) const;

 private:
  const uint8_t* RowBehind(const uint8_t* plane, int32_t stride, size_t width, size_t rows, size_t row) const;
  void CopyPlane(const PlaneCopy& plane, size_t stride, const ByteMap* map) const;
  void Copy(uint8_t* out, const uint8_t* in, size_t count, const ByteMap* map) const;
  bool IsMirrored() const { return m_horizontal || m_halfTurn; }
  /// A half turn reverses the plane as if it were one row.
  size_t RowLength(size_t bytes, size_t stride) const { return m_horizontal ? stride : bytes; }
  void MirrorInPlace(uint8_t* plane, size_t rows, size_t rowBytes) const;

  bool m_horizontal;
  bool m_halfTurn;
  const ByteMap* m_luma;
  const ByteMap* m_chroma;
  const ChromaMap* m_pairs;
  const ColourKernels& m_kernels;
};

}  // namespace libnivral
