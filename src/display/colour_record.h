// SPDX-License-Identifier: MIT
#pragma once

#include "colour/adjust_tables.h"
#include "util/mutex_lock.h"

namespace libnivral {

/// Picture settings behind their own lock, so that a frame never sees half a change. Any values are kept;
/// ranges only decide whether they act on the picture.
class ColourRecord {
 public:
  void Set(const ColourValues& values) {
    CAutoLock guard(&m_lock);
    m_nHue = values.hue;
    m_nContrast = values.contrast;
    m_nSaturation = values.saturation;
    m_nBrightness = values.brightness;
  }

  ColourValues Get() {
    CAutoLock guard(&m_lock);
    return {.brightness = m_nBrightness, .contrast = m_nContrast, .saturation = m_nSaturation, .hue = m_nHue};
  }

 private:
  int32_t m_nHue = 0;
  int32_t m_nContrast = 0;
  int32_t m_nSaturation = 0;
  int32_t m_nBrightness = 0;
  CMutexLock m_lock;
};

}  // namespace libnivral
