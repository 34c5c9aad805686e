// SPDX-License-Identifier: MIT
#include "util/com_ptr.h"

#include <gtest/gtest.h>

using namespace libnivral;

namespace {

struct Counted {
  unsigned long Release() { return --references; }
  unsigned long references = 1;
};

TEST(ComPtr, EachReferenceIsReleasedOnce) {
  Counted first, second;
  {
    ComPtr<Counted> a;
    *a.put_void() = &first;
    ComPtr<Counted> b(std::move(a));
    EXPECT_TRUE(!a && b.get() == &first && first.references == 1);
    a = ComPtr<Counted>(&second);
    b = std::move(a);
    EXPECT_TRUE(first.references == 0 && second.references == 1 && b->references == 1);
    auto& self = b;
    b = std::move(self);
    EXPECT_TRUE(second.references == 1 && b.get() == &second);
    first.references = 1;
    b.reset(&first);
    EXPECT_EQ(second.references, 0u);
    EXPECT_TRUE(b.detach() == &first && !b);
    b = ComPtr<Counted>(&first);
  }
  EXPECT_EQ(first.references, 0u);
}

}  // namespace
