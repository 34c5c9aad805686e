// SPDX-License-Identifier: MIT
// The DLL as a client loads and unloads it at run time.
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "support/process_counts.h"

namespace {

/// A player comes and goes in the DLL, which is loaded for it and freed again.
void UseOnce() {
  const HMODULE library = LoadLibraryW(L"libnivral.dll");
  ASSERT_TRUE(library);
  const auto find = [library](const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(library, name));
  };
  const auto open = reinterpret_cast<uint32_t (*)(void**)>(find("NIVRAL_WVOpenWave"));
  const auto close = reinterpret_cast<uint32_t (*)(void*)>(find("NIVRAL_WVCloseWave"));
  void* player = nullptr;
  EXPECT_EQ(open(&player), 0u);
  EXPECT_EQ(close(player), 0u);
  EXPECT_TRUE(FreeLibrary(library));
}

size_t FreeTlsSlots() {
  std::vector<DWORD> slots;
  for (DWORD slot = TlsAlloc(); slot != TLS_OUT_OF_INDEXES; slot = TlsAlloc())
    slots.push_back(slot);
  for (const DWORD slot : slots)
    TlsFree(slot);
  return slots.size();
}

TEST(Load, TwoThousandLoadsTakeNoMoreThanTheFirst) {
  UseOnce();
  FreeTlsSlots();  // what counting itself makes the system keep
  const size_t slots = FreeTlsSlots();
  const ProcessCounts before = CountSettledProcess();
  for (int i = 0; i < 2000 && !HasFatalFailure(); ++i)
    UseOnce();
  ExpectNoGrowth(before, 4096);
  EXPECT_EQ(FreeTlsSlots(), slots);
}

}  // namespace
