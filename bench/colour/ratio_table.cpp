// SPDX-License-Identifier: MIT
#include "colour/ratio_table.h"

#include <cstdio>

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

std::string Name(const char* work, const std::string& size) {
  return std::string(work).append("/").append(size);
}

/// How many times as fast as the peer we are, marked where that misses the bar.
std::string Cell(double ours, double peer, double bar) {
  if (ours <= 0 || peer <= 0) return "-";
  const double ratio = peer / ours;
  const std::string cell = Fixed(2, ratio).append(" (").append(Fixed(0, ours)).append(" us)");
  return ratio < bar ? std::string("**").append(cell).append(" misses**") : cell;
}

}  // namespace

void MedianReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
    const double us = run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e6;
    m_medians[run.run_name.function_name] = us;
    std::fprintf(stderr, "%-44s %10.1f us\n", run.run_name.function_name.c_str(), us);
  }
}

double MedianReporter::Median(const std::string& name) const {
  const auto found = m_medians.find(name);
  return found == m_medians.end() ? 0 : found->second;
}

std::string RatioTable(const MedianReporter& medians, const std::vector<Ratio>& ratios,
                       const std::vector<std::string>& sizes) {
  std::vector<std::string> head = {"work", "against", "at least"};
  head.insert(head.end(), sizes.begin(), sizes.end());
  std::string table = Row(head) + Row(std::vector<std::string>(head.size(), "---"));
  for (const Ratio& r : ratios) {
    std::vector<std::string> cells = {r.work, r.peer, Fixed(2, r.bar)};
    for (const std::string& size : sizes)
      cells.push_back(Cell(medians.Median(Name(r.ours, size)), medians.Median(Name(r.peer, size)), r.bar));
    table += Row(cells);
  }
  return table;
}
