// SPDX-License-Identifier: MIT
#include "util/cpu.h"

#include <atomic>
#include <cstdlib>

#if defined(_MSC_VER)
#include <immintrin.h>
#include <intrin.h>
#else
#include <cpuid.h>
#endif

namespace libnivral {
namespace {

struct CpuidResult {
  uint32_t a = 0;
  uint32_t b = 0;
  uint32_t c = 0;
};

CpuidResult Cpuid(uint32_t leaf) {
  CpuidResult r;
#if defined(_MSC_VER)
  int regs[4];
  __cpuid(regs, 0);
  if (static_cast<uint32_t>(regs[0]) < leaf) return r;
  __cpuidex(regs, static_cast<int>(leaf), 0);
  r = {static_cast<uint32_t>(regs[0]), static_cast<uint32_t>(regs[1]), static_cast<uint32_t>(regs[2])};
#else
  uint32_t d = 0;
  __get_cpuid_count(leaf, 0, &r.a, &r.b, &r.c, &d);
#endif
  return r;
}

/// The register states that the operating system saves on a thread switch.
uint32_t SavedStates() {
#if defined(_MSC_VER)
  return static_cast<uint32_t>(_xgetbv(0));
#else
  uint32_t low = 0;
  uint32_t high = 0;
  __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return low;
#endif
}

constexpr bool HasAll(uint32_t value, uint32_t bits) {
  return (value & bits) == bits;
}

// Bit numbers as in the processor makers' manuals for CPUID leaves 1 and 7 and for XCR0.
uint32_t Detect() {
  constexpr uint32_t kOsXsave = 1u << 27, kYmmStates = 0x06, kZmmStates = 0xE6;
  constexpr uint32_t kF = 1u << 16, kBw = 1u << 30, kVl = 1u << 31, kVbmi = 1u << 1;
  const CpuidResult basic = Cpuid(1);
  const CpuidResult extended = Cpuid(7);
  uint32_t features = 0;
  if (basic.c & (1u << 9)) features |= kCpuSsse3;
  const uint32_t saved = (basic.c & kOsXsave) ? SavedStates() : 0;
  if (!features || !HasAll(saved, kYmmStates) || !(extended.b & (1u << 5))) return features;
  features |= kCpuAvx2;
  if (HasAll(saved, kZmmStates) && HasAll(extended.b, kF | kBw | kVl) && (extended.c & kVbmi))
    features |= kCpuAvx512;
  return features;
}

uint32_t MaskFromEnvironment() {
  const char* text = std::getenv("NIVRAL_CPU_MASK");
  return text && *text ? static_cast<uint32_t>(std::strtoul(text, nullptr, 0)) : ~uint32_t{0};
}

constexpr uint64_t kUnknown = ~uint64_t{0};

/// A number that is found at its first use. Statics of functions would do, but their guards take memory,
/// which may be what a frame lacks; threads that come at the same time find the same.
class LazyValue {
 public:
  uint32_t Get(uint32_t (*find)()) {
    uint64_t value = m_value.load(std::memory_order_relaxed);
    if (value != kUnknown) return static_cast<uint32_t>(value);
    const uint64_t found = find();
    return static_cast<uint32_t>(m_value.compare_exchange_strong(value, found) ? found : value);
  }
  void Set(uint32_t value) { m_value.store(value, std::memory_order_relaxed); }

 private:
  std::atomic<uint64_t> m_value{kUnknown};
};

constinit LazyValue g_features;
constinit LazyValue g_mask;

}  // namespace

uint32_t DetectedCpuFeatures() {
  return g_features.Get(&Detect);
}

uint32_t CpuFeatures() {
  return DetectedCpuFeatures() & g_mask.Get(&MaskFromEnvironment);
}

void SetCpuMask(uint32_t mask) {
  g_mask.Set(mask);
}

}  // namespace libnivral
