// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// A locked queue of bytes that one thread fills and the player empties. A packet must appear whole, its
/// header and data added under one lock: the player takes them in two steps and could not find the next
/// header otherwise.
class ByteQueue {
 public:
  virtual ~ByteQueue() = default;
  /// Moves up to `count` bytes to `to` and returns how many there were. Called on the player's refill thread.
  virtual size_t Take(uint8_t* to, size_t count) = 0;
};
