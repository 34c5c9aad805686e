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

/// The share of some settings for which a map needs sixteen shuffles.
template <class Form>
double TableShare(int32_t firstLimit, Form form) {
  int32_t tables = 0;
  int32_t all = 0;
  for (int32_t first = -firstLimit; first <= firstLimit; first += 7) {
    for (int32_t contrast = -kMaxContrast; contrast <= kMaxContrast; ++contrast, ++all)
      tables += form(first, contrast) == ByteMap::Form::Table;
  }
  return double(tables) / all;
}

TEST(Kernels, NearlyAllSettingsNeedNoTable) {
  AdjustTables tables;
  EXPECT_LT(TableShare(kMaxBrightness,
                       [&](int32_t brightness, int32_t contrast) {
                         tables.Update({brightness, contrast, 0, 0});
                         return tables.Luma().form;
                       }),
            0.08);
  EXPECT_LT(TableShare(kMaxSaturation,
                       [&](int32_t saturation, int32_t contrast) {
                         tables.Update({0, contrast, saturation, 0});
                         return tables.Chroma().form;
                       }),
            0.08);
  EXPECT_LT(TableShare(kMaxSaturation,
                       [&](int32_t saturation, int32_t contrast) {
                         tables.Update({0, contrast, saturation, 30});
                         return tables.Pairs()->scale == ChromaMap::Scale::Table ? ByteMap::Form::Table
                                                                                 : ByteMap::Form::Odd;
                       }),
            0.08);
}

}  // namespace
