// SPDX-License-Identifier: MIT
// Ratios of benchmarks that ran interleaved, as a table for docs/benchmarks.md.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Keeps the median time of every benchmark and prints one line for each.
class MedianReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Microseconds; 0 for a benchmark that did not run.
  double Median(const std::string& name) const;

 private:
  std::map<std::string, double> m_medians;
};

/// `ours` is to be at least `bar` times as fast as `peer`. Both are names of benchmarks without the size.
struct Ratio {
  const char* work;
  const char* ours;
  const char* peer;
  double bar;
};

/// One line per ratio, one column per size; sizes end the benchmarks' names.
std::string RatioTable(const MedianReporter& medians, const std::vector<Ratio>& ratios,
                       const std::vector<std::string>& sizes);
