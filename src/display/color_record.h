// SPDX-License-Identifier: MIT
#pragma once

#include "display/frame_view.h"
#include "util/mutex_lock.h"

/// Picture settings behind their own lock, so that a frame never sees half a change. Any values are kept;
/// ranges only decide whether they act on the picture.
class ColorRecord {
 public:
  void Set(const ColorValues& values) {
    CAutoLock guard(&m_lock);
    m_values = values;
  }

  ColorValues Get() {
    CAutoLock guard(&m_lock);
    return m_values;
  }

 private:
  ColorValues m_values;
  CMutexLock m_lock;
};
