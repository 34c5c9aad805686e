// SPDX-License-Identifier: MIT
// nivral.hpp against the DLL: every object as a client uses it. Prints what failed and returns the number of
// failures. The wrapper comes first: it must stand alone.
#include <nivral/nivral.hpp>

#include <atomic>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

using namespace nivral;

int g_failures = 0;

#define CHECK(condition)                                          \
  do {                                                            \
    if (!(condition)) {                                           \
      std::printf("%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      ++g_failures;                                               \
    }                                                             \
  } while (false)

constexpr int kWidth = 320;
constexpr int kHeight = 240;
constexpr DWORD kPatienceMs = 3000;

HWND OpenWindow() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.lpszClassName = "consumer";
  RegisterClassA(&windowClass);
  RECT area{0, 0, kWidth, kHeight};
  AdjustWindowRect(&area, WS_OVERLAPPEDWINDOW, FALSE);
  return CreateWindowA("consumer", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, area.right - area.left,
                       area.bottom - area.top, nullptr, nullptr, nullptr, nullptr);
}

/// Handles messages until `done` or patience ends.
template <class Condition>
bool WaitUntil(Condition done) {
  const ULONGLONG end = GetTickCount64() + kPatienceMs;
  while (!done()) {
    if (GetTickCount64() > end) return false;
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
      DispatchMessageA(&message);
    Sleep(5);
  }
  return true;
}

/// A flat grey picture.
struct Planes {
  explicit Planes(uint8_t luma) : y(kWidth * kHeight, luma), u(kWidth * kHeight / 4, 128), v(u) {}
  Frame AsFrame(uint32_t param1 = 0, int64_t param2 = 0) const {
    return {y.data(), kWidth, u.data(), v.data(), kWidth / 2, param1, param2};
  }
  std::vector<uint8_t> y, u, v;
};

const Planes kBlack(16);
const Planes kWhite(235);

/// The client area as it is on the screen.
std::vector<uint32_t> Screen(HWND window) {
  std::vector<uint32_t> pixels(kWidth * kHeight);
  POINT corner{0, 0};
  ClientToScreen(window, &corner);
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, kWidth, kHeight);
  HGDIOBJ previous = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, kWidth, kHeight, screen, corner.x, corner.y, SRCCOPY);
  SelectObject(memory, previous);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = kWidth;
  info.bmiHeader.biHeight = -kHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  GetDIBits(screen, bitmap, 0, kHeight, pixels.data(), &info, DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  for (uint32_t& pixel : pixels)
    pixel &= 0xFFFFFF;
  return pixels;
}

void DrawUntilSeen(Display& display, HWND window, const Planes& planes, uint32_t corner) {
  CHECK(display.Draw(planes.AsFrame()));
  CHECK(WaitUntil([&] { return Screen(window).back() == corner; }));
}

/// What a black frame looks like under the overlays that `set` sets on a new display.
template <class Set>
std::vector<uint32_t> Shown(HWND window, Set set) {
  Display display;
  CHECK(display.Open(Backend::kSdl2));
  CHECK(display.SetWindow(window) && display.Init(kWidth, kHeight));
  DrawUntilSeen(display, window, kWhite, 0xFFFFFF);
  set(display);
  DrawUntilSeen(display, window, kBlack, 0);
  return Screen(window);
}

/// The bits of a float, as the C interface takes edges.
uint32_t Word(float value) {
  uint32_t word;
  memcpy(&word, &value, sizeof(word));
  return word;
}

void SetOverlaysInC(void* pane) {
  NIVRAL_DWSetOSDText(pane, 2, "Camera 1", 10, 60, 1, 0x0000FFFF);

  const uint32_t left[] = {Word(40.5F), Word(200)}, top[] = {Word(60), Word(150.25F)};
  const uint32_t right[] = {Word(120), Word(290)}, bottom[] = {Word(110), Word(210)};
  const uint16_t classes[] = {1, 4}, distances[] = {123, 45}, zeros[] = {0, 0};
  NIVRAL_DWSetAlgInfo(pane, 2, left, top, right, bottom, classes, distances, zeros, zeros, 3);

  const uint32_t x[] = {Word(30), Word(60), Word(90)}, y[] = {Word(220), Word(225), Word(215)};
  const uint32_t face[] = {Word(140), Word(30), Word(180), Word(100)};
  NIVRAL_DWSetDsmAlgInfo(pane, 3, x, y, 1, face, face + 1, face + 2, face + 3, 4);

  // A text under the mosaic makes blocks of it, so place and level of the mosaic are seen.
  const RECT area{210, 30, 300, 80};
  NIVRAL_DWSetOSDText(pane, 0, "MMMMMM", 215, 40, 0, 0xFFFFFF);
  NIVRAL_DWSetMosaics(pane, reinterpret_cast<const uint8_t*>(&area));
  NIVRAL_DWSetMosaicLevel(pane, 2);
  NIVRAL_DWSetMosaicFlag(pane, 1);
}

void SetOverlays(Display& display) {
  CHECK(display.SetText(2, "Camera 1", 10, 60, 0x0000FFFF, Anchor::kBottom));

  const LabelledBox objects[] = {{{40.5F, 60, 120, 110}, ObjectClass::kPerson, 123},
                                 {{200, 150.25F, 290, 210}, ObjectClass::kTruck, 45}};
  CHECK(display.SetAssistance(objects, 2, 3));

  const Landmark landmarks[] = {{30, 220}, {60, 225}, {90, 215}};
  const Box face{140, 30, 180, 100};
  CHECK(display.SetMonitoring(landmarks, 3, &face, 1, 4));

  CHECK(display.SetText(1, "gone", 5, 5, 0xFFFFFF) && display.RemoveText(1));
  CHECK(display.SetText(0, "MMMMMM", 215, 40, 0xFFFFFF));
  CHECK(display.SetMosaicRect({210, 30, 300, 80}) && display.SetMosaicLevel(2) && display.ShowMosaic(true));
}

bool AnyLit(const std::vector<uint32_t>& pixels, const RECT& area) {
  for (LONG y = area.top; y < area.bottom; ++y)
    for (LONG x = area.left; x < area.right; ++x)
      if (pixels[static_cast<size_t>(y * kWidth + x)] != 0) return true;
  return false;
}

/// What the wrapper sets has to look like what the C interface sets; and each overlay has to be there.
void TestOverlays(HWND window) {
  const std::vector<uint32_t> wanted =
      Shown(window, [](Display& display) { SetOverlaysInC(display.Handle()); });
  const RECT text{10, 180, 90, 200}, object{39, 80, 42, 100}, landmark{26, 216, 34, 224};
  const RECT face{130, 20, 150, 40}, mosaic{210, 40, 300, 65};
  for (const RECT& overlay : {text, object, landmark, face, mosaic})
    CHECK(AnyLit(wanted, overlay));
  CHECK(Shown(window, SetOverlays) == wanted);
}

void TestFrameCallbacks(HWND window) {
  const auto token = std::make_shared<int>(0);
  Frame seen{};
  DecodedFrame decoded{};
  Display first;
  CHECK(first.Open());
  CHECK(first.OnFrame([&seen, token](const Frame& frame) { seen = frame; }));
  CHECK(first.OnDecode([&decoded, token](const DecodedFrame& frame) { decoded = frame; }));
  Display display(std::move(first));
  CHECK(!first && first.SetPause(true).code == 1 && first.OnFrame([](const Frame&) {}).code == 1);
  CHECK(first.Draw(kBlack.AsFrame()).code == 1 && !first.Color());

  CHECK(display.SetWindow(window) && display.Init(kWidth, kHeight));
  CHECK(display.Draw(kBlack.AsFrame(7, -8)));
  CHECK(seen.y == kBlack.y.data() && seen.strideY == kWidth && seen.u == kBlack.u.data());
  CHECK(seen.v == kBlack.v.data() && seen.strideUV == kWidth / 2 && seen.param1 == 7 && seen.param2 == -8);
  CHECK(decoded.y == kBlack.y.data() && decoded.strideY == kWidth && decoded.width == kWidth);
  CHECK(decoded.height == kHeight && decoded.param2 == -8 && decoded.format == 3);

  seen = {};
  CHECK(display.OnFrame(nullptr) && display.OnDecode([](const DecodedFrame&) {}));
  CHECK(display.Draw(kBlack.AsFrame()));
  CHECK(seen.y == nullptr && token.use_count() == 3);
  display = Display();
  CHECK(token.use_count() == 1);
}

void TestExposure(HWND window) {
  RECT seen{};
  Display display;
  CHECK(display.Open());
  CHECK(display.OnExposed([&](HWND exposed, int32_t width, int32_t height) {
    if (exposed == window) seen = {0, 0, width, height};
  }));
  CHECK(display.SetWindow(window) && display.Init(kWidth, kHeight));
  DrawUntilSeen(display, window, kBlack, 0);
  InvalidateRect(window, nullptr, FALSE);
  CHECK(WaitUntil([&] { return seen.right == kWidth && seen.bottom == kHeight; }));
}

void TestComposedFrames(HWND window) {
  ComposedFrame seen{};
  std::atomic<bool> called{false};
  {
    Display display;
    CHECK(display.Open(Backend::kDirectDraw));
    CHECK(display.SetIndex(5) && display.SetMirror(Mirror::kFlip));
    CHECK(display.OnDisplay([&](const ComposedFrame& frame) {
      seen = frame;
      called = true;
    }));
    CHECK(display.SetWindow(window) && display.Init(kWidth, kHeight));
    CHECK(display.Draw(kBlack.AsFrame(1, 2)));
    CHECK(WaitUntil([&] { return called.load(); }));
  }
  CHECK(seen.index == 5 && seen.dc && seen.width == kWidth && seen.height == kHeight && seen.param2 == 2);
  CHECK(seen.clientWidth == kWidth && seen.clientHeight == kHeight && seen.mirror == Mirror::kFlip);
}

void TestColor() {
  Display display;
  CHECK(display.Open());
  CHECK(display.SetColor({1, 2, 3, 4}) && display.SetColor({-1, -2, -3, -4}, 1));
  const ColorParams picture = display.Color().value_or(ColorParams{});
  const ColorParams stored = display.Color(1).value_or(ColorParams{});
  CHECK(picture.brightness == 1 && picture.contrast == 2 && picture.saturation == 3 && picture.hue == 4);
  CHECK(stored.brightness == -1 && stored.contrast == -2 && stored.saturation == -3 && stored.hue == -4);
  const ColorRange limits = Display::ColorLimits();
  CHECK(limits.lowest.brightness == -127 && limits.highest.brightness == 127);
  CHECK(limits.lowest.contrast == -100 && limits.highest.contrast == 100);
  CHECK(limits.lowest.saturation == -100 && limits.highest.saturation == 100);
  CHECK(limits.lowest.hue == -180 && limits.highest.hue == 180);
}

void TestWavePlayer() {
  const auto token = std::make_shared<int>(0);
  std::atomic<int> size{0};
  std::atomic<bool> replaced{false};
  WavePlayer first;
  CHECK(first.Play().code == 1);
  CHECK(first.Open());
  const WAVEFORMATEX format{WAVE_FORMAT_PCM, 1, 8000, 16000, 2, 16, 0};
  CHECK(first.SetFormat(format, 800));
  CHECK(first.OnWrite([&size, token](uint8_t* buffer, int bytes) {
    memset(buffer, 0, static_cast<size_t>(bytes));
    size = bytes;
    return bytes;
  }));
  WavePlayer player(std::move(first));
  CHECK(player.Play());
  CHECK(WaitUntil([&] { return size.load() == 800; }));
  CHECK(player.SetVolume(50));
  CHECK(player.OnWrite([&replaced](uint8_t*, int bytes) {
    replaced = true;
    return bytes;
  }));
  CHECK(WaitUntil([&] { return replaced.load(); }));
  CHECK(token.use_count() == 2);
  CHECK(player.Stop());
  player.Close();
  CHECK(token.use_count() == 1 && player.Stop().code == 1);
}

}  // namespace

int main() {
  HWND window = OpenWindow();
  {
    const Library library(Start::kSdl2);
    TestOverlays(window);
    TestFrameCallbacks(window);
    TestExposure(window);
    TestComposedFrames(window);
    TestColor();
    TestWavePlayer();
  }
  DestroyWindow(window);
  std::printf("%d failures\n", g_failures);
  return g_failures;
}
