// SPDX-License-Identifier: MIT
#include "player/figures.h"

#include <cstdio>

std::string Figures::Line() const {
  char text[128];
  const double each = shown > 0 ? millisecondsInAll / static_cast<double>(shown) : 0;
  std::snprintf(text, sizeof(text), "frames %lld, dropped %lld, %.2f ms per frame",
                static_cast<long long>(shown), static_cast<long long>(dropped), each);
  return text;
}
