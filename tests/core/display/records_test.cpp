// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <cstring>
#include <numeric>
#include <optional>
#include <vector>

#include "display/records.h"
#include "display/shown_record.h"

using namespace libnivral;

namespace {

/// Client arrays of exactly `count` entries, all different, so that reading past an end is caught.
template <class Value>
struct ClientArrays {
  explicit ClientArrays(int32_t count, Value next = 7) {
    for (auto& array : arrays) {
      array.resize(static_cast<size_t>(count));
      std::iota(array.begin(), array.end(), next = static_cast<Value>(next + 100));
    }
  }
  const Value* operator[](size_t i) const { return arrays[i].data(); }
  std::vector<Value> arrays[4];
};

/// The arrays of a record, each against the client's bits, and zeros behind them.
template <class Value, class... Fields>
void ExpectCopied(const ClientArrays<Value>& client, const Fields&... fields) {
  const auto* expected = client.arrays;
  const auto check = [&](const auto& field) {
    std::vector<Value> seen(std::size(field)), want = *expected++;
    std::memcpy(seen.data(), field, sizeof(field));
    want.resize(seen.size());
    EXPECT_EQ(seen, want);
  };
  (check(fields), ...);
}

TEST(Records, HoldWhatTheClientGaveAndZerosBehind) {
  for (const int32_t count : {1, 7, 12}) {
    const ClientArrays<uint32_t> e(count);
    const ClientArrays<uint16_t> v(count);
    AlgRecord r;
    std::memset(&r, 0xEE, sizeof(r));
    ASSERT_TRUE(BuildAlgRecord(r, count, {e[0], e[1], e[2], e[3]}, {v[0], v[1], v[2], v[3]}, 3));
    ExpectCopied(e, r.left, r.top, r.right, r.bottom);
    ExpectCopied(v, r.classId, r.distance, r.third, r.fourth);
    EXPECT_TRUE(r.count == count && r.lineWidth == 3);
  }
  for (const int32_t points : {0, 1, 68}) {
    const ClientArrays<uint32_t> landmarks(points), e(12, 5000);
    DsmRecord r;
    std::memset(&r, 0xEE, sizeof(r));
    ASSERT_TRUE(BuildDsmRecord(r, points, landmarks[0], landmarks[1], 12, {e[0], e[1], e[2], e[3]}, 5));
    ExpectCopied(landmarks, r.x, r.y);
    ExpectCopied(e, r.left, r.top, r.right, r.bottom);
    EXPECT_TRUE(r.pointCount == points && r.boxCount == 12 && r.pointSize == 5);
  }
}

TEST(Records, OfOtherCountsOrMissingArraysAreIgnored) {
  const ClientArrays<uint32_t> e(68);
  const ClientArrays<uint16_t> v(12);
  const EdgeArrays edges{e[0], e[1], e[2], e[3]};
  const BoxValueArrays values{v[0], v[1], v[2], v[3]};
  AlgRecord alg{};
  alg.count = 77;
  for (const int32_t count : {0, 13, -1, INT32_MIN, INT32_MAX})
    EXPECT_FALSE(BuildAlgRecord(alg, count, edges, values, 1)) << count;
  EXPECT_FALSE(BuildAlgRecord(alg, 1, {e[0], e[1], e[2], nullptr}, values, 1));
  EXPECT_FALSE(BuildAlgRecord(alg, 1, edges, {v[0], v[1], nullptr, v[3]}, 1));
  EXPECT_EQ(alg.count, 77);
  DsmRecord dsm{};
  for (const int32_t points : {-1, 69, INT32_MAX, INT32_MIN})
    EXPECT_FALSE(BuildDsmRecord(dsm, points, e[0], e[0], 1, edges, 1)) << points;
  EXPECT_FALSE(BuildDsmRecord(dsm, 1, e[0], e[0], 13, edges, 1));
  EXPECT_FALSE(BuildDsmRecord(dsm, 1, e[0], nullptr, 0, edges, 1));
  EXPECT_FALSE(BuildDsmRecord(dsm, 0, nullptr, nullptr, 1, {e[0], e[0], nullptr, e[0]}, 1));
  EXPECT_TRUE(BuildDsmRecord(dsm, 0, nullptr, nullptr, -5, {}, 1));
  EXPECT_EQ(dsm.boxCount, -5);
}

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
