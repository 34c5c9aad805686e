// SPDX-License-Identifier: MIT
#include "display/record_builder.h"

#include <gmock/gmock.h>

#include <cstring>
#include <numeric>
#include <vector>

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

}  // namespace
