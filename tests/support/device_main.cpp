// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "support/crash_report.h"

int main(int argc, char** argv) {
  InstallCrashReport();
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
