// SPDX-License-Identifier: MIT
// minimal.c in C++17: the same ramp, a line of text that counts the frames shown, nothing to close by hand.
#include <nivral/nivral.hpp>

#include <string>
#include <vector>

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 360;
constexpr int kFrames = 125;
constexpr DWORD kMillisecondsPerFrame = 40;

HWND OpenWindow() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.lpszClassName = "nivral_minimal_cpp";
  RegisterClassA(&windowClass);
  RECT area{0, 0, kWidth, kHeight};
  AdjustWindowRect(&area, WS_OVERLAPPEDWINDOW, FALSE);
  return CreateWindowA("nivral_minimal_cpp", "libnivral", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40,
                       area.right - area.left, area.bottom - area.top, nullptr, nullptr,
                       windowClass.hInstance, nullptr);
}

void HandleMessages() {
  for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
    DispatchMessageA(&message);
}

void PaintRamp(std::vector<uint8_t>& luma, int frame) {
  for (int i = 0; i < kWidth * kHeight; ++i)
    luma[static_cast<size_t>(i)] = static_cast<uint8_t>(16 + (i % kWidth + 4 * frame) % 220);
}

}  // namespace

int main() {
  std::vector<uint8_t> luma(kWidth * kHeight);
  const std::vector<uint8_t> chroma(kWidth * kHeight / 4, 128);
  HWND window = OpenWindow();
  const nivral::Library library(nivral::Start::kSdl2);
  nivral::Display display;
  if (!window || !display.Open()) return 1;
  display.SetWindow(window);
  display.Init(kWidth, kHeight);

  int drawn = 0;
  if (!display.OnFrame([&drawn](const nivral::Frame&) { ++drawn; })) return 1;
  for (int frame = 0; frame < kFrames; ++frame) {
    HandleMessages();
    PaintRamp(luma, frame);
    display.SetText(0, ("Frame " + std::to_string(drawn)).c_str(), 16, 12, 0x0000FFFF);
    if (!display.Draw({luma.data(), kWidth, chroma.data(), chroma.data(), kWidth / 2})) return 1;
    Sleep(kMillisecondsPerFrame);
  }
  return drawn == kFrames ? 0 : 1;
}
