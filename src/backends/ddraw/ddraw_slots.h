// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "display/frame_copier.h"
#include "display/records.h"
#include "picture/frame_view.h"

namespace libnivral {

/// What travels with a frame: the client's value for it and the records that are shown with it.
struct FrameInfo {
  int64_t param2 = 0;
  FrameRecords records;
};

/// Hands frames from the threads that bring them to the one thread that draws them. Two slots: one is with
/// the drawing thread, the other takes new frames, and a newer frame replaces one that was not drawn yet.
/// Neither side ever waits for the other. Of the threads that bring frames, open or close, one at a time may
/// call: whoever owns the slots serialises them.
class FrameSlots {
 public:
  /// A frame on loan to the drawing thread, which may write to the planes. The slot is free again when this
  /// goes.
  class Loan {
   public:
    Loan() = default;
    Loan(FrameSlots* owner, size_t index) : m_owner(owner), m_index(index) {}
    Loan(Loan&& other) noexcept : m_owner(other.m_owner), m_index(other.m_index) { other.m_owner = nullptr; }
    Loan& operator=(Loan&&) = delete;
    ~Loan() {
      if (m_owner) m_owner->GiveBack(m_index);
    }

    explicit operator bool() const { return m_owner != nullptr; }
    const FrameView& Planes() const { return m_owner->m_slots[m_index].planes; }
    const FrameInfo& Info() const { return m_owner->m_slots[m_index].info; }

   private:
    FrameSlots* m_owner = nullptr;
    size_t m_index = 0;
  };

  /// Makes slots for frames of this size, which must not be 0, and lets frames in. False without the memory.
  /// Only while closed and with no loan out.
  bool Open(uint32_t width, uint32_t height);

  /// Refuses frames from now on. A loan stays valid.
  void Close();

  /// Frees the slots. Only while closed and with no loan out.
  void Release();

  enum class PutResult { Stored, Closed, BadFrame };

  /// Copies the frame, by `copier` when it is to be changed on the way, which wants chroma of one stride.
  /// BadFrame for planes that do not hold a frame of the slots' size.
  PutResult Put(const ConstFrameView& frame, const FrameInfo& info, const FrameCopier* copier = nullptr);

  /// The newest frame not taken yet; empty when there is none or when a newer one is just being written,
  /// whose Put is then still to return.
  Loan Take();

 private:
  enum class State { Free, Writing, Ready, Taken };

  struct Slot {
    std::unique_ptr<uint8_t[]> memory;
    FrameView planes;
    FrameInfo info;
    std::atomic<State> state{State::Free};

    /// Whether it was in the one state and is now in the other.
    bool Change(State from, State to) { return state.compare_exchange_strong(from, to); }
  };

  Slot& Claim();
  void Publish(Slot& slot);
  void GiveBack(size_t index) { m_slots[index].state = State::Free; }

  std::array<Slot, 2> m_slots;
  uint32_t m_width = 0;
  uint32_t m_height = 0;
  bool m_open = false;
};

}  // namespace libnivral
