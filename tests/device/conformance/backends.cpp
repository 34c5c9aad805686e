// SPDX-License-Identifier: MIT
#include "backends.h"

#include <cstdlib>
#include <ostream>

#include "backends/ddraw/ddraw_displayer.h"

namespace {

constexpr Rgb kGreen{0, 255, 0}, kOrange{255, 97, 0}, kBurntIn{0, 135, 0};

void TakeRgbRoad(void* pane) {
  static_cast<CDirectDraw*>(static_cast<BaseDisplayer*>(pane))->SetUploadFormat(UploadFormat::Rgb);
}

const auto kDirectDraw = [](const char* name, void (*opened)(void*)) -> Backend {
  return {.name = name,
          .type = 2,
          .opened = opened,
          .badSize = 0x2002,
          .decodeCallback = true,
          .boxesOutlive = true,
          .person = kBurntIn,
          .other = kBurntIn,
          .boxTolerance = 75};
};

const Backend kBackends[] = {
    {.name = "sdl2",
     .type = 0,
     .badSize = 0,
     .notReady = 1,
     .badFrame = 1,
     .refusesHidden = true,
     .decodeCallback = true,
     .textInWindowPixels = true,
     .blueLetters = true,
     .person = kOrange,
     .other = kGreen,
     .keptPerCycle = 700},
    {.name = "d3d9",
     .type = 1,
     .returnsAfterFree = true,
     .keepsPicture = true,
     .missesGoneWindow = true,
     .newLayoutDropsFrame = true,
     .strayTinyChroma = true,
     .everyLandmark = true,
     .blueLetters = true,
     .person = kOrange,
     .other = kGreen,
     .keptPerCycle = 450},
    kDirectDraw("ddraw", nullptr),
    kDirectDraw("ddraw_rgb", &TakeRgbRoad),
};

}  // namespace

const auto kName = [](const testing::TestParamInfo<Backend>& backend) { return backend.param.name; };
INSTANTIATE_TEST_SUITE_P(Backends, Conformance, testing::ValuesIn(kBackends), kName);
INSTANTIATE_TEST_SUITE_P(Backends, Soak, testing::ValuesIn(kBackends), kName);

void PrintTo(const Backend& backend, std::ostream* out) {
  *out << backend.name;
}

Conformance::Conformance() {
  Pane::opened = b.opened;
  if (b.type == 0) NIVRAL_InitializeEx(1);
}

Conformance::~Conformance() {
  if (b.type == 0) {
    EXPECT_EQ(NIVRAL_UnInitialize(), 0u);
  }
}

int Setting(const char* name, int usual) {
  const char* wanted = std::getenv(name);
  return wanted ? std::atoi(wanted) : usual;
}
