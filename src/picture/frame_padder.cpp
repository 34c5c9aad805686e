// SPDX-License-Identifier: MIT
#include "picture/frame_padder.h"

#include <algorithm>

namespace libnivral {
namespace {

constexpr uint8_t kGrey = 128;

struct PlaneSize {
  int32_t columns;
  int32_t rows;
};

PlaneSize RoundedUp(const PlaneSize& size) {
  return {size.columns + size.columns % 2, size.rows + size.rows % 2};
}

/// Has `plane` and `stride` name a copy without padding. False without the memory.
bool CopyPadded(NothrowList<uint8_t>& copy, const uint8_t*& plane, int32_t& stride, const PlaneSize& from,
                const PlaneSize& to) {
  if (!copy.resize(static_cast<size_t>(to.columns) * static_cast<size_t>(to.rows))) return false;
  if (from.columns == 0 || from.rows == 0) {
    std::fill_n(copy.data(), copy.size(), kGrey);
  } else {
    uint8_t* out = copy.data();
    for (int32_t row = 0; row < to.rows; ++row) {
      const uint8_t* const in = plane + ptrdiff_t{std::min(row, from.rows - 1)} * stride;
      out = std::copy_n(in, from.columns, out);
      out = std::fill_n(out, to.columns - from.columns, in[from.columns - 1]);
    }
  }
  plane = copy.data();
  stride = to.columns;
  return true;
}

}  // namespace

std::optional<ConstFrameView> FramePadder::PadChroma(const ConstFrameView& frame, int32_t width,
                                                     int32_t height) {
  if (!HoldsFrame(frame, width, height)) return std::nullopt;
  const PlaneSize luma{width, height};
  const PlaneSize chroma{width / 2, height / 2};
  const PlaneSize wanted{width - width / 2, height - height / 2};
  const bool odd = width % 2 != 0 || height % 2 != 0;
  ConstFrameView padded = frame;
  const bool complete =
      (padded.strideY > 0 || CopyPadded(m_y, padded.y, padded.strideY, luma, luma)) &&
      ((padded.strideU > 0 && !odd) || CopyPadded(m_u, padded.u, padded.strideU, chroma, wanted)) &&
      ((padded.strideV > 0 && !odd) || CopyPadded(m_v, padded.v, padded.strideV, chroma, wanted));
  if (!complete) return std::nullopt;
  return padded;
}

std::optional<ConstFrameView> FramePadder::PadAll(const ConstFrameView& frame, int32_t width,
                                                  int32_t height) {
  std::optional<ConstFrameView> padded = PadChroma(frame, width, height);
  if (!padded || (width % 2 == 0 && height % 2 == 0)) return padded;
  const PlaneSize luma{width, height};
  padded->y = frame.y;
  padded->strideY = frame.strideY;
  if (!CopyPadded(m_y, padded->y, padded->strideY, luma, RoundedUp(luma))) return std::nullopt;
  return padded;
}

}  // namespace libnivral
