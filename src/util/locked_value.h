// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include "util/spin_lock.h"

namespace libnivral {

/// A value that threads read and change as a whole. The lock is held while plain memory is copied or changed
/// and for nothing else, so nobody waits for another's work behind it and no order of locks can be violated.
template <class Value>
class LockedValue {
 public:
  LockedValue() = default;
  LockedValue(const LockedValue&) = delete;
  LockedValue& operator=(const LockedValue&) = delete;

  Value Copy() const {
    const std::lock_guard guard(m_lock);
    return m_value;
  }

  template <class Member>
  Member Get(Member Value::*member) const {
    const std::lock_guard guard(m_lock);
    return m_value.*member;
  }

  template <class Member>
  void Set(Member Value::*member, const Member& to) {
    const std::lock_guard guard(m_lock);
    m_value.*member = to;
  }

  /// `change` takes the value by reference and calls neither the system nor anybody's callback.
  template <class Change>
  void Update(const Change& change) {
    const std::lock_guard guard(m_lock);
    change(m_value);
  }

 private:
  mutable SpinLock m_lock;
  Value m_value{};
};

}  // namespace libnivral
