// SPDX-License-Identifier: MIT
// How long records stay on the screen, against a clock of the test's own.
#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "display/shown_record.h"

namespace {

struct Frame {
  uint64_t now;
  int record;  ///< 0: the queue is empty
  int drawn;   ///< the record that is shown, 0 for none
};

/// The record is a plain number here; the rules do not look into it.
using Rule = bool (*)(ShownRecord<int>&, const std::optional<int>&, uint64_t);

void Play(Rule rule, const std::vector<Frame>& frames) {
  ShownRecord<int> last;
  for (const Frame& frame : frames) {
    const bool drawn = rule(last, frame.record ? std::optional(frame.record) : std::nullopt, frame.now);
    EXPECT_EQ(drawn ? last.record : 0, frame.drawn) << "at " << frame.now;
  }
}

TEST(OverlayTiming, FirstRecordsAreTimedFromTheClocksZeroAndEveryLaterOneStaysForASecond) {
  const Rule rule = &AdvanceOverlay<int>;
  Play(rule, {{100, 1, 1}, {999, 0, 1}, {1000, 0, 0}});
  Play(rule, {{5000, 0, 0}, {5040, 1, 1}, {5041, 0, 0}, {5042, 0, 0}});
  Play(rule,
       {{5000, 1, 1}, {5040, 2, 2}, {6030, 3, 3}, {7029, 0, 3}, {7030, 0, 0}, {9000, 4, 4}, {9999, 0, 4}});
}

TEST(BurnInTiming, ClockStartsAtTheFirstFrameWithoutARecordAndIsNeverRestarted) {
  const Rule rule = &AdvanceBurnIn<int>;
  Play(rule, {{5000, 0, 0}, {5040, 1, 1}, {7000, 0, 1}, {7999, 0, 1}, {8000, 0, 0}, {8040, 0, 0}});
  Play(rule,
       {{5500, 2, 2}, {6000, 0, 2}, {6900, 3, 3}, {6999, 0, 3}, {7000, 0, 0}, {7040, 4, 4}, {7041, 0, 0}});
}

}  // namespace
