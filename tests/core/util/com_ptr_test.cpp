// SPDX-License-Identifier: MIT
#include "util/com_ptr.h"

#include <gtest/gtest.h>

namespace {

struct Counted {
  virtual ~Counted() = default;
  virtual unsigned long AddRef() { return ++references; }
  virtual unsigned long Release() { return --references; }
  int Value() const { return 7; }
  unsigned long references = 1;
};

unsigned long Create(Counted& object, void** out) {
  *out = &object;
  return 0;
}

TEST(ComPtr, ReleasesOnceAtTheEndOfTheScope) {
  Counted object;
  {
    ComPtr<Counted> owner;
    EXPECT_FALSE(owner);
    Create(object, owner.put_void());
    ASSERT_TRUE(owner);
    EXPECT_EQ(owner.get(), &object);
    EXPECT_EQ(owner->Value(), 7);
    EXPECT_EQ(object.references, 1u);
  }
  EXPECT_EQ(object.references, 0u);
}

TEST(ComPtr, MovesTheReferenceAndEmptiesTheSource) {
  Counted first;
  Counted second;
  ComPtr<Counted> a(&first);
  ComPtr<Counted> b(std::move(a));
  EXPECT_FALSE(a);
  EXPECT_EQ(first.references, 1u);

  a = ComPtr<Counted>(&second);
  b = std::move(a);
  EXPECT_EQ(first.references, 0u);
  EXPECT_EQ(second.references, 1u);
  EXPECT_EQ(b.get(), &second);

  auto& self = b;
  b = std::move(self);
  EXPECT_EQ(second.references, 1u);
  EXPECT_EQ(b.get(), &second);
}

TEST(ComPtr, ResetAdoptsAndDetachHandsOver) {
  Counted first;
  Counted second;
  ComPtr<Counted> owner(&first);
  owner.reset(&second);
  EXPECT_EQ(first.references, 0u);
  EXPECT_EQ(second.references, 1u);
  EXPECT_EQ(owner.detach(), &second);
  EXPECT_FALSE(owner);
  EXPECT_EQ(second.references, 1u);
  owner.reset();
  EXPECT_EQ(second.references, 1u);
}

#ifndef NDEBUG
TEST(ComPtrDeathTest, PutIntoAFullOwnerAsserts) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  Counted object;
  ComPtr<Counted> owner(&object);
  EXPECT_DEATH(owner.put(), "");
}
#endif

}  // namespace
