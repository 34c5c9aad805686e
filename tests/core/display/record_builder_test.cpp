// SPDX-License-Identifier: MIT
#include "display/record_builder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>
#include <vector>

namespace {

/// Client arrays of exactly `count` entries, all different, so that reading past an end is caught.
struct ClientArrays {
  explicit ClientArrays(int32_t count) : words(8), halves(4) {
    uint32_t next = std::bit_cast<uint32_t>(1.5f);
    for (auto& array : words) {
      array.resize(static_cast<size_t>(std::max(count, 0)));
      std::iota(array.begin(), array.end(), next);
      next += 100;
    }
    for (auto& array : halves) {
      array.resize(static_cast<size_t>(std::max(count, 0)));
      std::iota(array.begin(), array.end(), static_cast<uint16_t>(next += 100));
    }
  }

  EdgeArrays Edges(size_t from = 0) const {
    return {words[from].data(), words[from + 1].data(), words[from + 2].data(), words[from + 3].data()};
  }
  BoxValueArrays Values() const {
    return {halves[0].data(), halves[1].data(), halves[2].data(), halves[3].data()};
  }

  std::vector<std::vector<uint32_t>> words;
  std::vector<std::vector<uint16_t>> halves;
};

/// Bytes of a record at an offset against a client array, and zeros behind it up to `entries`.
template <class Record, class Value>
void ExpectAt(const Record& record, size_t offset, const std::vector<Value>& values, size_t entries) {
  std::vector<Value> seen(entries);
  std::memcpy(seen.data(), reinterpret_cast<const char*>(&record) + offset, entries * sizeof(Value));
  std::vector<Value> expected = values;
  expected.resize(entries);
  EXPECT_EQ(seen, expected) << "offset " << offset;
}

TEST(AlgRecord, LiesInMemoryAsClientsExpect) {
  for (const int32_t count : {1, 7, 12}) {
    const ClientArrays arrays(count);
    AlgRecord record;
    std::memset(&record, 0xEE, sizeof(record));
    ASSERT_TRUE(BuildAlgRecord(record, count, arrays.Edges(), arrays.Values(), 3));
    for (size_t i = 0; i < 4; ++i) {
      ExpectAt(record, i * 48, arrays.words[i], 12);
      ExpectAt(record, 192 + i * 24, arrays.halves[i], 12);
    }
    ExpectAt(record, 288, std::vector<uint16_t>{static_cast<uint16_t>(count), 3}, 2);
  }
}

TEST(AlgRecord, IgnoresOtherCountsAndMissingArrays) {
  const ClientArrays arrays(12);
  AlgRecord record{};
  record.count = 77;
  for (const int32_t count : {0, 13, -1, INT32_MIN, INT32_MAX})
    EXPECT_FALSE(BuildAlgRecord(record, count, arrays.Edges(), arrays.Values(), 1)) << count;
  EdgeArrays edges = arrays.Edges();
  edges.bottom = nullptr;
  EXPECT_FALSE(BuildAlgRecord(record, 1, edges, arrays.Values(), 1));
  BoxValueArrays values = arrays.Values();
  values.third = nullptr;
  EXPECT_FALSE(BuildAlgRecord(record, 1, arrays.Edges(), values, 1));
  EXPECT_EQ(record.count, 77);
}

TEST(DsmRecord, LiesInMemoryAsClientsExpect) {
  for (const int32_t points : {0, 1, 68}) {
    const ClientArrays landmarks(points);
    const ClientArrays boxes(12);
    DsmRecord record;
    std::memset(&record, 0xEE, sizeof(record));
    ASSERT_TRUE(BuildDsmRecord(record, points, landmarks.words[0].data(), landmarks.words[1].data(), 12,
                               boxes.Edges(4), 5));
    ExpectAt(record, 0, std::vector<uint16_t>{5, static_cast<uint16_t>(points)}, 2);
    ExpectAt(record, 4, landmarks.words[0], 68);
    ExpectAt(record, 276, landmarks.words[1], 68);
    ExpectAt(record, 548, std::vector<uint32_t>{12}, 1);
    for (size_t i = 0; i < 4; ++i)
      ExpectAt(record, 552 + i * 48, boxes.words[4 + i], 12);
  }
}

TEST(DsmRecord, IgnoresOtherCountsAndMissingArrays) {
  const ClientArrays arrays(68);
  const uint32_t* x = arrays.words[0].data();
  DsmRecord record{};
  for (const int32_t points : {-1, 69, INT32_MAX, INT32_MIN})
    EXPECT_FALSE(BuildDsmRecord(record, points, x, x, 1, arrays.Edges(), 1)) << points;
  EXPECT_FALSE(BuildDsmRecord(record, 1, x, x, 13, arrays.Edges(), 1));
  EXPECT_FALSE(BuildDsmRecord(record, 1, x, nullptr, 0, arrays.Edges(), 1));
  EXPECT_FALSE(BuildDsmRecord(record, 0, nullptr, nullptr, 1, {x, x, nullptr, x}, 1));
  EXPECT_TRUE(BuildDsmRecord(record, 0, nullptr, nullptr, -5, {}, 1));
  EXPECT_EQ(record.boxCount, -5);
}

}  // namespace
