// SPDX-License-Identifier: MIT
#pragma once

/// What was spent, in milliseconds; of the process all its threads.
struct Spent {
  double wall = 0;
  double process = 0;
};

/// Runs from its construction.
class ProcessClock {
 public:
  ProcessClock() : m_start(Now()) {}
  Spent Elapsed() const;

 private:
  static Spent Now();
  Spent m_start;
};
