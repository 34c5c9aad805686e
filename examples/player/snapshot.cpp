// SPDX-License-Identifier: MIT
#include "player/snapshot.h"

#include "display/base_displayer.h"

void SaveSnapshot(void* handle, Picture& picture, const char* path) {
  static_cast<BaseDisplayer*>(handle)->SaveFrameToFile(path, picture.y.data(), picture.width,
                                                       picture.u.data(), picture.strideUV, picture.v.data(),
                                                       picture.strideUV);
}
