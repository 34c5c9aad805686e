// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "player/embed/overlay_switches.h"
#include "player/embed/pane.h"
#include "player/embed/records.h"
#include "player/media/frame.h"

/// What is laid over a pane's frames. Used on the drawing thread.
class Overlays {
 public:
  using FindRecord = std::function<Record(const Frame&)>;

  struct Content {
    std::string name;
    int64_t recordedAt = 0;  ///< seconds since 1970 of frame time 0; 0: the position is shown instead
    FindRecord find;         ///< null: no records
  };

  Overlays(Content content, const OverlaySwitches& switches);

  /// Before every frame.
  void SetTexts(Pane& pane, const Frame& frame);
  bool HasRecords() const { return m_content.find != nullptr; }
  /// Before every new frame, while there are records: the one that belongs to it, mirrored as the picture is.
  void SendRecord(Pane& pane, const Frame& frame);

 private:
  std::string TimeText(double seconds) const;

  Content m_content;
  const OverlaySwitches& m_switches;
  bool m_hasObjects = false;  ///< in the record sent last
};
