// SPDX-License-Identifier: MIT
// Compares ways of doing the same work. The ways take turns, so that a busy machine slows all of them alike.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

struct Way {
  std::string name;
  std::function<void()> run;
};

/// Median milliseconds of each way over `rounds` turns, after one that is not counted.
inline std::vector<double> MedianMs(const std::vector<Way>& ways, int rounds) {
  std::vector<std::vector<double>> times(ways.size());
  for (int round = -1; round < rounds; ++round) {
    for (size_t i = 0; i < ways.size(); ++i) {
      const auto start = std::chrono::steady_clock::now();
      ways[i].run();
      const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
      if (round >= 0) times[i].push_back(taken.count());
    }
  }
  std::vector<double> medians;
  for (auto& t : times) {
    std::nth_element(t.begin(), t.begin() + static_cast<std::ptrdiff_t>(t.size() / 2), t.end());
    medians.push_back(t[t.size() / 2]);
  }
  return medians;
}

/// Prints the median of each way and how many times as fast as the first it is.
inline void Compare(const char* title, const std::vector<Way>& ways, int rounds) {
  const std::vector<double> medians = MedianMs(ways, rounds);
  std::printf("%s\n", title);
  for (size_t i = 0; i < ways.size(); ++i)
    std::printf("  %-34s %9.4f ms  %6.2f x\n", ways[i].name.c_str(), medians[i], medians[0] / medians[i]);
  std::fflush(stdout);
}
