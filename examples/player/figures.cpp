// SPDX-License-Identifier: MIT
#include "player/figures.h"

#include <cstdio>

Figures& Figures::operator+=(const Figures& other) {
  shown += other.shown;
  dropped += other.dropped;
  draws += other.draws;
  millisecondsInAll += other.millisecondsInAll;
  return *this;
}

Figures Figures::operator-(const Figures& earlier) const {
  return {shown - earlier.shown, dropped - earlier.dropped, draws - earlier.draws,
          millisecondsInAll - earlier.millisecondsInAll};
}

double Figures::MillisecondsPerFrame() const {
  return draws > 0 ? millisecondsInAll / static_cast<double>(draws) : 0;
}

std::string Figures::Line() const {
  char text[128];
  std::snprintf(text, sizeof(text), "frames %lld, dropped %lld, %.2f ms per frame",
                static_cast<long long>(shown), static_cast<long long>(dropped), MillisecondsPerFrame());
  return text;
}
