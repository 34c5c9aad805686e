// SPDX-License-Identifier: MIT
#include "colour/kernels.h"

#include <cstdlib>

#include "colour/adjust_tables.h"
#include "core/colour/variants.h"

namespace {

TEST(Kernels, MaskChoosesTheForm) {
  for (const ColourKernels* kernels : RunnableKernels()) {
    const UseKernels use(*kernels);
    EXPECT_STREQ(kernels->name, ActiveKernels().name);
  }
  // AVX2 loops are not chosen without the set that they build on.
  SetCpuMask(kCpuAvx2);
  EXPECT_EQ(&kScalarKernels, &ActiveKernels());
  SetCpuMask(~uint32_t{0});
  EXPECT_EQ(RunnableKernels().back(), &ActiveKernels());
}

void SetEnvironment(char* assignment) {
#if defined(_WIN32)
  _putenv(assignment);
#else
  putenv(assignment);
#endif
}

TEST(KernelsDeathTest, EnvironmentMasks) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  static char mask[] = "NIVRAL_CPU_MASK=0x0";
  EXPECT_EXIT((SetEnvironment(mask), std::exit(CpuFeatures() == 0 ? 7 : 1)), testing::ExitedWithCode(7), "");
  static char word[] = "NIVRAL_CPU_MASK=1";
  const auto features = static_cast<int>(DetectedCpuFeatures() & 1);
  EXPECT_EXIT((SetEnvironment(word), std::exit(static_cast<int>(CpuFeatures()))),
              testing::ExitedWithCode(features), "");
}

/// Sixteen shuffles per vector are the slow way.
TEST(Kernels, NearlyAllSettingsNeedNoTable) {
  AdjustTables tables;
  const auto share = [](int32_t limit, auto isTable) {
    int32_t slow = 0, all = 0;
    for (int32_t value = -limit; value <= limit; value += 7)
      for (int32_t contrast = -kMaxContrast; contrast <= kMaxContrast; ++contrast, ++all)
        slow += isTable(value, contrast);
    return double(slow) / all;
  };
  const auto update = [&tables](const ColourValues& values) -> const AdjustTables& {
    tables.Update(values);
    return tables;
  };
  EXPECT_LT(share(kMaxBrightness,
                  [&](int32_t b, int32_t c) {
                    return update({b, c, 0, 0}).Luma().form == ByteMap::Form::Table;
                  }),
            0.08);
  EXPECT_LT(share(kMaxSaturation,
                  [&](int32_t s, int32_t c) {
                    return update({0, c, s, 0}).Chroma().form == ByteMap::Form::Table;
                  }),
            0.08);
  EXPECT_LT(share(kMaxSaturation,
                  [&](int32_t s, int32_t c) {
                    return update({0, c, s, 30}).Pairs()->scale == ChromaMap::Scale::Table;
                  }),
            0.08);
}

}  // namespace
