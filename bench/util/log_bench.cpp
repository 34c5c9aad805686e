// SPDX-License-Identifier: MIT
// What a log call costs: below the level, where the frame path makes many, against the exact clock that such
// a call does without, and written.
#include <windows.h>

#include "alternate.h"
#include "util/log_file.h"
#include "util/log_system.h"

using namespace libnivral;

namespace {

constexpr int kCalls = 1000000;
constexpr int kLines = 2000;

template <class Call>
std::function<void()> Repeat(int count, Call call) {
  return [count, call] {
    for (int i = 0; i < count; ++i)
      call(i);
  };
}

void Print(const char* name, double medianMs, int count) {
  std::printf("%-34s %9.1f ns per call\n", name, medianMs * 1e6 / count);
}

}  // namespace

int main() {
  // The lines that are written also go to the standard output, which they would swamp.
  SetStdHandle(STD_OUTPUT_HANDLE, nullptr);
  const std::vector<Way> ways{
      {"below",
       Repeat(kCalls,
              [](int i) { CLogFile::GetInstance()->WriteA(1, "SDLDisplayer::DisplayFrame: %d", i); })},
      {"tick", Repeat(kCalls, [](int) { GetTickCount64(); })},
      {"clock", Repeat(kLines, [](int) { MillisecondsSinceBoot(); })},
      {"written",
       Repeat(kLines,
              [](int i) { CLogFile::GetInstance()->WriteA(2, "SDLDisplayer::DisplayFrame: %d", i); })},
  };
  const std::vector<double> medians = MedianMs(ways, 15);
  Print("call below the level", medians[0], kCalls);
  Print("of it, the coarse clock", medians[1], kCalls);
  Print("the exact clock", medians[2], kLines);
  Print("line written", medians[3], kLines);
  CLogFile::DestroyInstance();
}
