// SPDX-License-Identifier: MIT
#include "colour/kernels.h"

#include <cstdlib>

#include "colour/adjust_tables.h"
#include "support/kernel_forms.h"

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
  int32_t slow[3] = {}, all = 0;
  for (int32_t value = -kMaxSaturation; value <= kMaxSaturation; value += 7)
    for (int32_t contrast = -kMaxContrast; contrast <= kMaxContrast; ++contrast, ++all) {
      tables.Update({value, contrast, value, 0});
      slow[0] += tables.Luma().form == ByteMap::Form::Table;
      slow[1] += tables.Chroma().form == ByteMap::Form::Table;
      tables.Update({0, contrast, value, 30});
      slow[2] += tables.Pairs()->scale == ChromaMap::Scale::Table;
    }
  for (const int32_t count : slow)
    EXPECT_LT(count, all * 8 / 100);
}

}  // namespace
