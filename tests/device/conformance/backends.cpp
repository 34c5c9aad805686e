// SPDX-License-Identifier: MIT
#include "backends.h"

#include <cstdlib>
#include <ostream>

#include "backends/ddraw/ddraw_displayer.h"
#include "backends/sdl2/sdl_objects.h"
#include "device/d3d9/d3d_test.h"

namespace {

constexpr Rgb kGreen{0, 255, 0}, kOrange{255, 97, 0}, kBurntIn{0, 135, 0};

/// A renderer for each of the three sizes of video, and a window that changes its size after each frame.
void BareSdl(TestWindow& window) {
  const SdlWindow bound(SDL_CreateWindowFrom(window.Handle()));
  for (int i = 0; i < 3; ++i) {
    const SdlRenderer renderer(SDL_CreateRenderer(bound.get(), -1, SDL_RENDERER_ACCELERATED));
    const SdlTexture texture(
        SDL_CreateTexture(renderer.get(), SDL_PIXELFORMAT_YV12, SDL_TEXTUREACCESS_STREAMING, 160, 120));
    SDL_RenderCopy(renderer.get(), texture.get(), nullptr, nullptr);
    SDL_RenderPresent(renderer.get());
    window.ResizeClient(160, 110 + 10 * (i % 2));
    Pump(10);
  }
}

/// Two devices, as the resets that fail make them; each one's first text leaves something.
void BareDevices(TestWindow& window) {
  for (int i = 0; i < 2; ++i) {
    const BareDirect3D bare(window.Handle());
    RECT place{4, 4, 160, 120};
    bare.device->BeginScene();
    bare.font->DrawTextA(nullptr, "channel 1", -1, &place, DT_NOCLIP, 0xFFFFFFFF);
    bare.device->EndScene();
    bare.device->Present(nullptr, nullptr, nullptr, nullptr);
  }
}

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
     .bare = &BareSdl},
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
     .bare = &BareDevices},
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
