// SPDX-License-Identifier: MIT
#include "display/frame_copier.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace libnivral {
namespace {

const ByteMap* UnlessIdentity(const ByteMap& map) {
  return map.form == ByteMap::Form::Identity ? nullptr : &map;
}

}  // namespace

FrameCopier::FrameCopier(uint32_t mirrorMode, const AdjustTables* tables)
    : m_horizontal(mirrorMode == static_cast<uint32_t>(MirrorMode::Horizontal)),
      m_halfTurn(mirrorMode == static_cast<uint32_t>(MirrorMode::HalfTurn)),
      m_luma(tables ? UnlessIdentity(tables->Luma()) : nullptr),
      m_chroma(tables ? UnlessIdentity(tables->Chroma()) : nullptr),
      m_pairs(tables ? tables->Pairs() : nullptr),
      m_kernels(ActiveKernels()) {
}

void FrameCopier::CopyFrame(const FrameView& to, const ConstFrameView& from, uint32_t width,
                            uint32_t height) const {
  const size_t half = width / 2;
  const size_t halfRows = half == 0 ? 0 : height / 2;
  if (from.strideY == to.strideY && from.strideU == to.strideU && from.strideV == to.strideV) {
    CopyLuma({to.y, from.y, size_t{width} * height}, width);
    CopyChroma({to.u, from.u, half * halfRows}, {to.v, from.v, half * halfRows}, half);
    return;
  }
  for (size_t row = 0; row < height; ++row)
    CopyLuma({to.y + row * width, RowBehind(from.y, from.strideY, width, height, row), width}, width);
  for (size_t row = 0; row < halfRows; ++row) {
    CopyChroma({to.u + row * half, RowBehind(from.u, from.strideU, half, halfRows, row), half},
               {to.v + row * half, RowBehind(from.v, from.strideV, half, halfRows, row), half}, half);
  }
}

/// The samples that a row of the copy is made of: mirrored rows begin with the end of a stride.
const uint8_t* FrameCopier::RowBehind(const uint8_t* plane, int32_t stride, size_t width, size_t rows,
                                      size_t row) const {
  const auto shown = static_cast<ptrdiff_t>(m_halfTurn ? rows - 1 - row : row);
  const size_t padding = static_cast<size_t>(std::abs(int64_t{stride})) - width;
  return plane + shown * stride + (IsMirrored() ? padding : 0);
}

void FrameCopier::CopyLuma(const PlaneCopy& plane, size_t stride) const {
  CopyPlane(plane, stride, m_luma);
}

void FrameCopier::CopyChroma(const PlaneCopy& u, const PlaneCopy& v, size_t stride) const {
  if (!m_pairs) {
    CopyPlane(u, stride, m_chroma);
    CopyPlane(v, stride, m_chroma);
  } else if (u.bytes != 0) {
    const PlanePair planes{u.out, v.out, u.in, v.in};
    const size_t row = RowLength(u.bytes, stride);
    if (IsMirrored()) return m_kernels.mapPairRowsReversed(planes, row, u.bytes / row, *m_pairs);
    m_kernels.mapPairs(planes, u.bytes, *m_pairs);
  }
}

void FrameCopier::CopyUnevenChroma(const PlaneCopy& u, const PlaneCopy& v, size_t strideV, size_t rows,
                                   size_t adjusted) const {
  const size_t both = std::min({adjusted, u.bytes, v.bytes});
  if (m_pairs && both != 0) m_kernels.mapPairs({u.out, v.out, u.in, v.in}, both, *m_pairs);
  for (const PlaneCopy* plane : {&u, &v}) {
    if (plane->bytes == 0) continue;
    if (!m_pairs) Copy(plane->out, plane->in, both, m_chroma);
    std::memcpy(plane->out + both, plane->in + both, plane->bytes - both);
    if (strideV != 0) MirrorInPlace(plane->out, std::min(rows, plane->bytes / strideV), strideV);
  }
}

void FrameCopier::CopyPlane(const PlaneCopy& plane, size_t stride, const ByteMap* map) const {
  if (plane.bytes == 0) return;
  if (!IsMirrored()) return Copy(plane.out, plane.in, plane.bytes, map);
  const size_t row = RowLength(plane.bytes, stride);
  const ReversedRows rows{plane.out, plane.in, row, plane.bytes / row};
  if (map) {
    m_kernels.mapRowsReversed(rows, *map);
  } else {
    m_kernels.copyRowsReversed(rows);
  }
}

void FrameCopier::Copy(uint8_t* out, const uint8_t* in, size_t count, const ByteMap* map) const {
  if (map) {
    m_kernels.mapBytes(out, in, count, *map);
  } else {
    std::memcpy(out, in, count);
  }
}

void FrameCopier::MirrorInPlace(uint8_t* plane, size_t rows, size_t rowBytes) const {
  if (m_halfTurn) std::reverse(plane, plane + rows * rowBytes);
  for (size_t row = 0; m_horizontal && row < rows; ++row)
    std::reverse(plane + row * rowBytes, plane + (row + 1) * rowBytes);
}

}  // namespace libnivral
