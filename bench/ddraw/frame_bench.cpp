// SPDX-License-Identifier: MIT
// Milliseconds per 1280x720 frame through the DirectDraw backend, against a program that makes the same blits
// with DirectDraw alone, and what Display itself takes against a plain copy of the planes. The two take
// turns. Run with WINE_D3D_CONFIG=csmt=0, or Wine moves the work to a thread of its own. NIVRAL_BENCH_FRAMES
// sets the number of frames.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "backends/ddraw/direct_draw.h"
#include "backends/ddraw/surface_access.h"
#include "colour/convert.h"
#include "support/frames.h"
#include "support/test_window.h"

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 720;

using Clock = std::chrono::steady_clock;

double MsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

void Check(HRESULT hr, const char* what) {
  if (SUCCEEDED(hr)) return;
  std::fprintf(stderr, "%s failed: 0x%08lx\n", what, static_cast<unsigned long>(hr));
  std::exit(1);
}

/// Fills a frame surface, stretches it outside the screen and copies the result into the window.
class BareDDraw {
 public:
  BareDDraw(FrameRoad road, int x, int y) : m_road(road), m_window(kWidth / 2, kHeight / 2, x, y) {
    void* object = nullptr;
    Check(DirectDrawCreateEx(nullptr, &object, IID_IDirectDraw7, nullptr), "DirectDrawCreateEx");
    m_ddraw.reset(static_cast<IDirectDraw7*>(object));
    Check(m_ddraw->SetCooperativeLevel(nullptr, DDSCL_NORMAL | DDSCL_MULTITHREADED), "SetCooperativeLevel");
    DDSURFACEDESC2 d{};
    d.dwSize = sizeof(d);
    d.dwFlags = DDSD_CAPS;
    d.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
    Check(m_ddraw->CreateSurface(&d, m_primary.put(), nullptr), "primary");
    Check(m_ddraw->CreateClipper(0, m_clipper.put(), nullptr), "CreateClipper");
    Check(m_clipper->SetHWnd(0, m_window.Handle()), "SetHWnd");
    Check(m_primary->SetClipper(m_clipper.get()), "SetClipper");
    d.dwFlags = DDSD_CAPS | DDSD_WIDTH | DDSD_HEIGHT | DDSD_PIXELFORMAT;
    d.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN;
    d.ddpfPixelFormat.dwSize = sizeof(d.ddpfPixelFormat);
    Check(m_primary->GetPixelFormat(&d.ddpfPixelFormat), "GetPixelFormat");
    d.dwWidth = kWidth / 2;
    d.dwHeight = kHeight / 2;
    Check(m_ddraw->CreateSurface(&d, m_composition.put(), nullptr), "composition");
    d.dwWidth = kWidth;
    d.dwHeight = kHeight;
    if (road == FrameRoad::Yv12) {
      d.ddpfPixelFormat.dwFlags = DDPF_FOURCC;
      d.ddpfPixelFormat.dwFourCC = MAKEFOURCC('Y', 'V', '1', '2');
    }
    Check(m_ddraw->CreateSurface(&d, m_frame.put(), nullptr), "frame");
  }

  void Draw(const TestFrame& f) {
    {
      const SurfaceLock lock(m_frame.get(), DDLOCK_WRITEONLY);
      Check(lock.Result(), "Lock");
      Fill(lock, f);
    }
    Check(m_composition->Blt(nullptr, m_frame.get(), nullptr, DDBLT_WAIT, nullptr), "stretch");
    POINT at{0, 0};
    ClientToScreen(m_window.Handle(), &at);
    RECT target{at.x, at.y, at.x + kWidth / 2, at.y + kHeight / 2};
    Check(m_primary->Blt(&target, m_composition.get(), nullptr, DDBLT_WAIT, nullptr), "present");
  }

 private:
  void Fill(const SurfaceLock& lock, const TestFrame& f) const {
    if (m_road == FrameRoad::Rgb) {
      ConvertToPixels(PixelFormat::Bgrx32, lock.Pixels(), lock.Pitch(),
                      {f.y.data(), f.u.data(), f.v.data(), f.strideY, f.strideUV, f.strideUV}, kWidth,
                      kHeight);
      return;
    }
    // The pitch of this size is the width.
    std::memcpy(lock.Pixels(), f.y.data(), f.y.size());
    std::memcpy(lock.Pixels() + f.y.size(), f.v.data(), f.v.size());
    std::memcpy(lock.Pixels() + f.y.size() + f.v.size(), f.u.data(), f.u.size());
  }

  FrameRoad m_road;
  TestWindow m_window;
  ComPtr<IDirectDraw7> m_ddraw;
  ComPtr<IDirectDrawClipper> m_clipper;
  DDrawSurface m_primary;
  DDrawSurface m_composition;
  DDrawSurface m_frame;
};

void WaitForFrame(const CDirectDraw& displayer, uint32_t before) {
  while (displayer.ShownCount() == before)
    Sleep(0);
}

void Measure(FrameRoad road, int frames) {
  TestFrame frame = GradientFrame(kWidth, kHeight);
  TestFrame copy(kWidth, kHeight);
  BareDDraw bare(road, 20, 40);
  const TestWindow window(kWidth / 2, kHeight / 2, 1000, 40);
  CDirectDraw displayer;
  displayer.SetRoad(road);
  displayer.SetPlayWnd(window.Handle());
  Check(displayer.InitDraw(kWidth, kHeight, 0) == 0 ? DD_OK : E_FAIL, "InitDraw");
  const FrameView f = frame.View();
  std::vector<double> bareMs, copyMs, displayMs, workerMs;
  for (int i = -3; i < frames; ++i) {
    auto start = Clock::now();
    bare.Draw(frame);
    const double drawn = MsSince(start);

    start = Clock::now();
    std::memcpy(copy.y.data(), frame.y.data(), frame.y.size());
    std::memcpy(copy.u.data(), frame.u.data(), frame.u.size());
    std::memcpy(copy.v.data(), frame.v.data(), frame.v.size());
    const double copied = MsSince(start);

    const uint32_t before = displayer.ShownCount();
    start = Clock::now();
    displayer.Display(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
    const double returned = MsSince(start);
    start = Clock::now();
    WaitForFrame(displayer, before);
    const double worked = MsSince(start);
    if (i < 0) continue;
    bareMs.push_back(drawn);
    copyMs.push_back(copied);
    displayMs.push_back(returned);
    workerMs.push_back(worked);
  }
  const double b = Median(bareMs), c = Median(copyMs), d = Median(displayMs), w = Median(workerMs);
  std::printf("%-4s  copy %.3f ms, Display %.3f ms (%.2f x)   bare %.3f ms, worker %.3f ms (%+.1f %%)\n",
              road == FrameRoad::Yv12 ? "YV12" : "RGB", c, d, d / c, b, w, (w / b - 1) * 100);
  std::fflush(stdout);
}

}  // namespace

int main() {
  const char* wanted = std::getenv("NIVRAL_BENCH_FRAMES");
  const int frames = wanted ? std::atoi(wanted) : 200;
  BuildConversionTables();
  for (int repeat = 0; repeat < 3; ++repeat) {
    Measure(FrameRoad::Yv12, frames);
    Measure(FrameRoad::Rgb, frames);
  }
}
