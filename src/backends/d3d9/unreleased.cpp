// SPDX-License-Identifier: MIT
#include "backends/d3d9/unreleased.h"

#include <vector>

#include "util/mutex_lock.h"

namespace {

struct Kept {
  CMutexLock lock;
  std::vector<ComPtr<IUnknown>> objects;
};

/// Never destroyed: at the end of the process the objects' own code may be gone before this module's.
Kept& TheKept() {
  static Kept& kept = *new Kept;
  return kept;
}

}  // namespace

void KeepUnreleased(ComPtr<IUnknown> object) {
  Kept& kept = TheKept();
  CAutoLock guard(&kept.lock);
  kept.objects.push_back(std::move(object));
}

size_t UnreleasedCount() {
  Kept& kept = TheKept();
  CAutoLock guard(&kept.lock);
  return kept.objects.size();
}

void ReleaseUnreleased() {
  Kept& kept = TheKept();
  CAutoLock guard(&kept.lock);
  kept.objects.clear();
}
