// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_slots.h"

#include <new>

#include "picture/frame_view.h"

namespace libnivral {
namespace {

/// Planes start on cache lines.
constexpr size_t AlignUp(size_t bytes) {
  return (bytes + 63) / 64 * 64;
}

}  // namespace

/// Rows follow each other without padding: what is burned into the planes counts on it.
bool FrameSlots::Open(uint32_t width, uint32_t height) {
  const size_t luma = AlignUp(size_t{width} * height);
  const size_t chroma = AlignUp(size_t{width / 2} * (height / 2));
  const auto strideUV = static_cast<int32_t>(width / 2);
  for (Slot& slot : m_slots) {
    slot.memory.reset(new (std::nothrow) uint8_t[luma + 2 * chroma]);
    uint8_t* const start = slot.memory.get();
    if (!start) return false;
    slot.planes = {start,    static_cast<int32_t>(width), start + luma,
                   strideUV, start + luma + chroma,       strideUV};
    slot.state = State::Free;
  }
  m_width = width;
  m_height = height;
  m_open = true;
  return true;
}

void FrameSlots::Close() {
  m_open = false;
}

void FrameSlots::Release() {
  for (Slot& slot : m_slots) {
    slot.memory.reset();
    slot.state = State::Free;
  }
}

FrameSlots::PutResult FrameSlots::Put(const ConstFrameView& frame, const FrameInfo& info,
                                      const FrameCopier* copier) {
  if (!m_open) return PutResult::Closed;
  if (!HoldsFrame(frame, m_width, m_height)) return PutResult::BadFrame;
  Slot& slot = Claim();
  const FrameView& planes = slot.planes;
  if (copier) {
    copier->CopyFrame(planes, frame, m_width, m_height);
  } else {
    CopyPlane(planes.y, planes.strideY, frame.y, frame.strideY, m_width, m_height);
    CopyPlane(planes.u, planes.strideU, frame.u, frame.strideU, m_width / 2, m_height / 2);
    CopyPlane(planes.v, planes.strideV, frame.v, frame.strideV, m_width / 2, m_height / 2);
  }
  slot.info = info;
  Publish(slot);
  return PutResult::Stored;
}

FrameSlots::Loan FrameSlots::Take() {
  for (size_t i = 0; i < m_slots.size(); ++i) {
    if (m_slots[i].Change(State::Ready, State::Taken)) return {this, i};
  }
  return {};
}

/// Prefers a free slot, so that a frame that waits stays available until the new one is whole. The drawing
/// thread has at most one slot at a time; one that it takes from under this search leaves the other free.
FrameSlots::Slot& FrameSlots::Claim() {
  for (;;) {
    for (const State wanted : {State::Free, State::Ready}) {
      for (Slot& slot : m_slots) {
        if (slot.Change(wanted, State::Writing)) return slot;
      }
    }
  }
}

void FrameSlots::Publish(Slot& slot) {
  for (Slot& other : m_slots)
    other.Change(State::Ready, State::Free);
  slot.state = State::Ready;
}

}  // namespace libnivral
