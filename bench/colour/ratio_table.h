// SPDX-License-Identifier: MIT
// How many times as fast as others' ways ours are, as a table for docs/benchmarks.md.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

using Work = std::function<void()>;

/// `prepare` is not measured.
struct Way {
  Work prepare;
  Work work;
};
using Ways = std::map<std::string, Way>;
std::string WayName(const std::string& work, const std::string& size);

/// Of ratios that only tell how near a limit of the machine is.
constexpr double kNoBar = 0;

/// `ours` is to be at least `bar` times as fast as `peer`. Both are names of ways without the size.
struct Ratio {
  const char* work;
  const char* ours;
  const char* peer;
  double bar;
};

/// One line per ratio, one column per size. The two sides of a cell take turns of some milliseconds, and the
/// cell is the median over the rounds of how their turns compare: whatever else the machine does comes and
/// goes, but mostly slows both turns of a round. Cells of ways whose names do not have the part `wanted` stay
/// empty.
std::string RatioTable(const Ways& ways, const std::vector<Ratio>& ratios,
                       const std::vector<std::string>& sizes, int rounds, const std::string& wanted);
