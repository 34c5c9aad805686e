// SPDX-License-Identifier: MIT
#include "colour/ratio_table.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

std::string Fixed(int decimals, double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.*f", decimals, value);
  return text;
}

std::string Row(const std::vector<std::string>& cells) {
  std::string line = "|";
  for (const std::string& cell : cells)
    line.append(" ").append(cell).append(" |");
  return line.append("\n");
}

/// Microseconds of process time that a call takes, over enough calls to last, after one that is not counted.
double TurnUs(const Way& way) {
  constexpr std::clock_t kTurn = CLOCKS_PER_SEC / 500;
  way.prepare();
  way.work();
  const std::clock_t start = std::clock();
  std::clock_t taken = 0;
  int calls = 0;
  for (; taken < kTurn; taken = std::clock() - start, ++calls)
    way.work();
  return 1e6 * static_cast<double>(taken) / CLOCKS_PER_SEC / calls;
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// How many times as fast as the peer we are, marked where that misses the bar.
std::string Cell(const Way& ours, const Way& peer, double bar, int rounds) {
  std::vector<double> times;
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    times.push_back(TurnUs(ours));
    ratios.push_back(TurnUs(peer) / times.back());
  }
  const double ratio = Median(ratios);
  const std::string cell = Fixed(2, ratio).append(" (").append(Fixed(0, Median(times))).append(" us)");
  return ratio < bar ? std::string("**").append(cell).append(" misses**") : cell;
}

}  // namespace

std::string WayName(const std::string& work, const std::string& size) {
  return work + "/" + size;
}

std::string RatioTable(const Ways& ways, const std::vector<Ratio>& ratios,
                       const std::vector<std::string>& sizes, int rounds, const std::string& wanted) {
  std::vector<std::string> head = {"work", "against", "at least"};
  head.insert(head.end(), sizes.begin(), sizes.end());
  std::string table = Row(head) + Row(std::vector<std::string>(head.size(), "---"));
  for (const Ratio& r : ratios) {
    std::vector<std::string> cells = {r.work, r.peer, r.bar == kNoBar ? "-" : Fixed(2, r.bar)};
    for (const std::string& size : sizes) {
      const std::string name = WayName(r.ours, size);
      const bool isWanted = name.find(wanted) != std::string::npos;
      cells.push_back(isWanted ? Cell(ways.at(name), ways.at(WayName(r.peer, size)), r.bar, rounds)
                               : std::string());
    }
    table += Row(cells);
  }
  return table;
}
