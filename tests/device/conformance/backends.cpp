// SPDX-License-Identifier: MIT
#include "backends.h"

#include <SDL.h>

#include <cstdlib>
#include <ostream>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/sdl2/sdl_objects.h"
#include "fakes/loaded.h"

namespace {

constexpr int kWidth = 160, kHeight = 120;

void BareSdl(TestWindow& window) {
  TestFrame f = FlatFrame(kWidth, kHeight, 126, 128, 128);
  const SdlWindow sdlWindow(SDL_CreateWindowFrom(window.Handle()));
  const SdlRenderer renderer(SDL_CreateRenderer(sdlWindow.get(), -1, SDL_RENDERER_ACCELERATED));
  for (int i = 0; i < 2; ++i) {
    const SdlTexture texture(SDL_CreateTexture(renderer.get(), SDL_PIXELFORMAT_YV12,
                                               SDL_TEXTUREACCESS_STREAMING, kWidth, kHeight));
    SDL_UpdateYUVTexture(texture.get(), nullptr, f.y.data(), kWidth, f.u.data(), kWidth / 2, f.v.data(),
                         kWidth / 2);
    SDL_RenderClear(renderer.get());
    SDL_RenderCopy(renderer.get(), texture.get(), nullptr, nullptr);
    SDL_RenderPresent(renderer.get());
    Pump();
  }
}

/// A device with a font, used and reset twice.
void BareDirect3D(TestWindow& window) {
  ComPtr<IDirect3D9> direct3D(
      LoadedFunction<decltype(&Direct3DCreate9)>("d3d9.dll", "Direct3DCreate9")(D3D_SDK_VERSION));
  D3DPRESENT_PARAMETERS parameters{};
  parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
  parameters.Windowed = TRUE;
  parameters.BackBufferWidth = kWidth;
  parameters.BackBufferHeight = kHeight;
  ComPtr<IDirect3DDevice9> device;
  EXPECT_EQ(direct3D->CreateDevice(0, D3DDEVTYPE_HAL, window.Handle(), D3DCREATE_HARDWARE_VERTEXPROCESSING,
                                   &parameters, device.put()),
            D3D_OK);
  ComPtr<ID3DXFont> font;
  LoadD3dx()->createFont(device.get(), -6, 0, FW_NORMAL, D3DX_DEFAULT, FALSE, DEFAULT_CHARSET, 0, 0, 0,
                         "Tahoma", font.put());
  for (int i = 0; i < 2; ++i) {
    ComPtr<IDirect3DSurface9> surface, back;
    device->CreateOffscreenPlainSurface(kWidth, kHeight,
                                        static_cast<D3DFORMAT>(MAKEFOURCC('Y', 'V', '1', '2')),
                                        D3DPOOL_DEFAULT, surface.put(), nullptr);
    device->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, back.put());
    RECT place{4, 4, kWidth, kHeight};
    device->BeginScene();
    device->StretchRect(surface.get(), nullptr, back.get(), nullptr, D3DTEXF_NONE);
    font->DrawTextA(nullptr, "channel 1", -1, &place, DT_NOCLIP, 0xFFFFFFFF);
    device->EndScene();
    device->Present(nullptr, nullptr, nullptr, nullptr);
    surface.reset();
    back.reset();
    font->OnLostDevice();
    EXPECT_EQ(device->Reset(&parameters), D3D_OK);
    font->OnResetDevice();
  }
}

constexpr Rgb kGreen{0, 255, 0}, kOrange{255, 97, 0}, kBurntIn{0, 135, 0};

const Backend kBackends[] = {
    {.name = "sdl2",
     .type = 0,
     .notReady = 1,
     .badFrame = 1,
     .refusesHidden = true,
     .decodeCallback = true,
     .textInWindowPixels = true,
     .blueLetters = true,
     .person = kOrange,
     .other = kGreen,
     .bareCycle = &BareSdl},
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
     .bareCycle = &BareDirect3D},
    {.name = "ddraw",
     .type = 2,
     .decodeCallback = true,
     .boxesOutlive = true,
     .person = kBurntIn,
     .other = kBurntIn,
     .boxTolerance = 75},
};

}  // namespace

const auto kName = [](const testing::TestParamInfo<Backend>& backend) { return backend.param.name; };
INSTANTIATE_TEST_SUITE_P(Backends, Conformance, testing::ValuesIn(kBackends), kName);
INSTANTIATE_TEST_SUITE_P(Backends, Soak, testing::ValuesIn(kBackends), kName);

void PrintTo(const Backend& backend, std::ostream* out) {
  *out << backend.name;
}

Conformance::Conformance() {
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
