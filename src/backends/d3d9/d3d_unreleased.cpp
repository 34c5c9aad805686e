// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_unreleased.h"

#include <vector>

#include "util/mutex_lock.h"

namespace libnivral {
namespace {

struct Unreleased {
  CMutexLock lock;
  std::vector<ComPtr<IUnknown>> objects;
};

/// Never destroyed: at the end of the process the objects' own code may be gone before this module's.
Unreleased& UnreleasedObjects() {
  static Unreleased& unreleased = *new Unreleased;
  return unreleased;
}

}  // namespace

void KeepUnreleased(ComPtr<IUnknown> object) {
  Unreleased& unreleased = UnreleasedObjects();
  CAutoLock guard(&unreleased.lock);
  unreleased.objects.push_back(std::move(object));
}

size_t UnreleasedCount() {
  Unreleased& unreleased = UnreleasedObjects();
  CAutoLock guard(&unreleased.lock);
  return unreleased.objects.size();
}

void ReleaseUnreleased() {
  Unreleased& unreleased = UnreleasedObjects();
  CAutoLock guard(&unreleased.lock);
  unreleased.objects.clear();
}

}  // namespace libnivral
