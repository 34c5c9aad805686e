// SPDX-License-Identifier: MIT
// What a round of frames costs through the exports, one frame to each of 1, 4, 9 and 16 panes, against as
// many bare programs in the same process, as rows of a Markdown table:
//   roads_bench [sdl|direct3d|ddraw]... [panes=N]... [turns=N]
// Run it with WINE_D3D_CONFIG=csmt=0, or Wine moves the work to threads of its own. Bare and library take
// turns of several rounds. A cell is the median over the turns of the wall time against that of the bare turn
// before, and in brackets the process time of all turns against that of all bare ones. The process time is
// what is held against the bar: other work on the machine hardly changes it. DirectDraw draws behind the
// caller's back, so its rounds come at a fixed rate, and only the process time tells.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "nivral/nivral.h"
#include "roads/bench_pane.h"
#include "roads/process_clock.h"

void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

namespace {

constexpr double kTurnMs = 250;
constexpr double kPacedTurnMs = 1000;  ///< mostly idle, and process times come in steps of 10 ms
constexpr double kNoBar = 0;

struct Road {
  const char* name;
  const char* title;
  uint32_t backend;
  PanePointer (*makeBare)(int place);
  bool paced;
  double plainBar;
  double allBar;
};

constexpr Road kRoads[] = {{"sdl", "SDL2", 0, &MakeBareSdl, false, kNoBar, 1.5},
                           {"direct3d", "Direct3D 9", 1, &MakeBareDirect3D, false, kNoBar, 1.6},
                           {"ddraw", "DirectDraw", 2, &MakeBareDirectDraw, true, 1.3, 1.9}};

void PumpMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    DispatchMessageW(&message);
}

/// So many panes of one kind.
class PaneGroup {
 public:
  template <class Make>
  PaneGroup(int count, int firstPlace, Make make) {
    for (int i = 0; i < count; ++i)
      m_panes.push_back(make(firstPlace + i));
    PumpMessages();
  }

  /// So many rounds, each not before `paceMs` after the last one.
  Spent Run(TestFrame& frame, int rounds, double paceMs) {
    const ProcessClock clock;
    for (int i = 0; i < rounds; ++i) {
      for (const PanePointer& pane : m_panes)
        pane->Draw(frame);
      const double left = paceMs * (i + 1) - clock.Elapsed().wall;
      if (left > 0) Sleep(static_cast<DWORD>(left));
    }
    const Spent spent = clock.Elapsed();
    PumpMessages();
    return spent;
  }

 private:
  std::vector<PanePointer> m_panes;
};

struct Cell {
  double wallRatio;
  double processRatio;
  double bareMs;
};

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

template <class Make>
Cell Measure(const Road& road, int panes, int turns, Make make) {
  TestFrame frame = GradientFrame(kFrameWidth, kFrameHeight);
  PaneGroup bare(panes, 0, road.makeBare);
  PaneGroup ours(panes, panes, make);
  for (PaneGroup* group : {&bare, &ours})
    group->Run(frame, 5, 0);
  const double roundMs = bare.Run(frame, 10, 0).wall / 10;
  const double paceMs = road.paced ? std::max(20.0, 6 * roundMs) : 0;
  const double turnMs = road.paced ? kPacedTurnMs : kTurnMs;
  const int rounds = std::max(3, static_cast<int>(turnMs / std::max(roundMs, paceMs)));

  Spent bareAll, oursAll;
  std::vector<double> ratios, bareMs;
  for (int turn = 0; turn < turns; ++turn) {
    const Spent b = bare.Run(frame, rounds, paceMs);
    const Spent o = ours.Run(frame, rounds, paceMs);
    bareAll.process += b.process;
    oursAll.process += o.process;
    ratios.push_back(o.wall / b.wall);
    bareMs.push_back((road.paced ? b.process : b.wall) / rounds);
  }
  return {Median(ratios), oursAll.process / bareAll.process, Median(bareMs)};
}

void PrintCell(const Road& road, const Cell& cell, double bar) {
  const bool missed = bar != kNoBar && cell.processRatio > bar;
  if (missed)
    std::printf(" **");
  else
    std::printf(" ");
  if (!road.paced) std::printf("%.2f ", cell.wallRatio);
  std::printf("(%.2f)", cell.processRatio);
  if (missed) std::printf(" misses %.1f**", bar);
  std::printf(" |");
}

void PrintRow(const Road& road, int panes, int turns) {
  const Cell plain =
      Measure(road, panes, turns, [&](int place) { return MakePlainPane(place, road.backend); });
  const Cell all = Measure(road, panes, turns, [&](int place) { return MakeFullPane(place, road.backend); });
  std::printf("| %s | %d | %.1f |", road.title, panes, plain.bareMs);
  PrintCell(road, plain, road.plainBar);
  PrintCell(road, all, road.allBar);
  std::printf("\n");
  std::fflush(stdout);
}

struct Options {
  std::vector<const Road*> roads;
  std::vector<int> panes;
  int turns = 15;
};

Options Read(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word.starts_with("panes=")) options.panes.push_back(std::atoi(argv[i] + 6));
    if (word.starts_with("turns=")) options.turns = std::atoi(argv[i] + 6);
    for (const Road& road : kRoads)
      if (word == road.name) options.roads.push_back(&road);
  }
  if (options.roads.empty())
    for (const Road& road : kRoads)
      options.roads.push_back(&road);
  if (options.panes.empty()) options.panes = {1, 4, 9, 16};
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = Read(argc, argv);
  NIVRAL_InitializeEx(1);
  std::printf(
      "| backend | panes | bare ms per round | plain, times bare | all, times bare "
      "|\n|---|---|---|---|---|\n");
  for (const Road* road : options.roads)
    for (const int panes : options.panes)
      PrintRow(*road, panes, options.turns);
  NIVRAL_UnInitialize();
}
