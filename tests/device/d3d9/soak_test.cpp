// SPDX-License-Identifier: MIT
// Panes opened, resized, zoomed and closed over and over, and four at once on threads of their own.
#include <atomic>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "fakes/loaded.h"
#include "nivral/nivral.h"
#include "pane.h"
#include "support/process_counts.h"

namespace {

/// From the environment, or the shorter run that every build makes.
int Setting(const char* name, int usual) {
  const char* wanted = std::getenv(name);
  return wanted ? std::atoi(wanted) : usual;
}

void Draw(void* pane, TestFrame& f) {
  EXPECT_EQ(NIVRAL_DWDrawYUV420(pane, f.y.data(), static_cast<uint32_t>(f.strideY), f.u.data(), f.v.data(),
                                static_cast<uint32_t>(f.strideUV), 0, 0),
            0u);
}

/// The overlay buffer makes the reset of the second InitDraw fail, so a cycle goes through both ways of
/// changing the size.
void Cycle(TestWindow& window, TestFrame& frame, TestFrame& smaller) {
  void* pane = nullptr;
  ASSERT_EQ(NIVRAL_DWOpenDrawEx(&pane, 1), 0u);
  NIVRAL_DWSetHwnd(pane, window.Handle());
  NIVRAL_DWSetOSDText(pane, 0, "channel 1", 4, 4, 0, 0xFFFFFF);
  ASSERT_EQ(NIVRAL_DWInitDraw(pane, kPaneWidth, kPaneHeight, 0), 0u);
  Draw(pane, frame);
  window.ResizeClient(kPaneWidth, kPaneHeight - 20);
  NIVRAL_DWInitDraw(pane, kPaneWidth, kPaneHeight / 2, 0);
  NIVRAL_DWSetZoom(pane, 300, 300, 4);
  Draw(pane, smaller);
  const uint32_t place = std::bit_cast<uint32_t>(20.0f);
  NIVRAL_DWSetDsmAlgInfo(pane, 1, &place, &place, 0, nullptr, nullptr, nullptr, nullptr, 2);
  Draw(pane, smaller);
  NIVRAL_DWInitDraw(pane, kPaneWidth, kPaneHeight, 0);
  Draw(pane, frame);
  window.ResizeClient(kPaneWidth, kPaneHeight);
  NIVRAL_DWCloseDraw(pane);
}

/// A device and what a pane makes on it, on Direct3D alone.
class BareDevice {
 public:
  explicit BareDevice(HWND window)
      : m_direct3D(
            LoadedFunction<decltype(&Direct3DCreate9)>("d3d9.dll", "Direct3DCreate9")(D3D_SDK_VERSION)) {
    m_parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    m_parameters.Windowed = TRUE;
    m_parameters.BackBufferWidth = kPaneWidth;
    m_parameters.BackBufferHeight = kPaneHeight;
    EXPECT_EQ(m_direct3D->CreateDevice(0, D3DDEVTYPE_HAL, window, D3DCREATE_HARDWARE_VERTEXPROCESSING,
                                       &m_parameters, m_device.put()),
              D3D_OK);
    LoadD3dx()->createFont(m_device.get(), -6, 0, FW_NORMAL, D3DX_DEFAULT, FALSE, DEFAULT_CHARSET, 0, 0, 0,
                           "Tahoma", m_font.put());
  }

  void Draw() {
    ComPtr<IDirect3DSurface9> surface;
    m_device->CreateOffscreenPlainSurface(kPaneWidth, kPaneHeight,
                                          static_cast<D3DFORMAT>(MAKEFOURCC('Y', 'V', '1', '2')),
                                          D3DPOOL_DEFAULT, surface.put(), nullptr);
    ComPtr<IDirect3DSurface9> backBuffer;
    m_device->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, backBuffer.put());
    RECT place{4, 4, kPaneWidth, kPaneHeight};
    m_device->BeginScene();
    m_device->StretchRect(surface.get(), nullptr, backBuffer.get(), nullptr, D3DTEXF_NONE);
    m_font->DrawTextA(nullptr, "channel 1", -1, &place, DT_NOCLIP, 0xFFFFFFFF);
    m_device->EndScene();
    m_device->Present(nullptr, nullptr, nullptr, nullptr);
  }

  void Reset() {
    m_font->OnLostDevice();
    EXPECT_EQ(m_device->Reset(&m_parameters), D3D_OK);
    m_font->OnResetDevice();
  }

 private:
  D3DPRESENT_PARAMETERS m_parameters{};
  ComPtr<IDirect3D9> m_direct3D;
  ComPtr<IDirect3DDevice9> m_device;
  ComPtr<ID3DXFont> m_font;
};

/// What a cycle asks of Direct3D, to know what that and the driver keep: one device that is reset and
/// another.
void BareCycle(TestWindow& window) {
  {
    BareDevice device(window.Handle());
    device.Draw();
    window.ResizeClient(kPaneWidth, kPaneHeight - 20);
    device.Reset();
    device.Draw();
  }
  BareDevice device(window.Handle());
  device.Draw();
  window.ResizeClient(kPaneWidth, kPaneHeight);
}

/// What `rounds` rounds added, after some to warm up.
template <class Round>
ProcessCounts Growth(int rounds, Round&& round) {
  for (int i = 0; i < 3; ++i)
    round();
  const ProcessCounts before = CountSettledProcess();
  for (int i = 0; i < rounds; ++i)
    round();
  const ProcessCounts after = CountSettledProcess();
  return {after.threads - before.threads, after.handles - before.handles, after.heapBytes - before.heapBytes,
          after.gdiObjects - before.gdiObjects, after.windows - before.windows};
}

TEST(D3dSoak, OpeningResizingAndClosingKeepsNoMoreThanDirect3DDoes) {
  TestWindow window(kPaneWidth, kPaneHeight, 40, 60, WS_POPUP);
  TestFrame frame = FlatFrame(kPaneWidth, kPaneHeight, 90, 128, 128);
  TestFrame smaller = FlatFrame(kPaneWidth, kPaneHeight / 2, 90, 128, 128);
  const int cycles = Setting("NIVRAL_SOAK_CYCLES", 4);
  const ProcessCounts bare = Growth(cycles, [&] { BareCycle(window); });
  const ProcessCounts ours = Growth(cycles, [&] { Cycle(window, frame, smaller); });
  std::printf("bare: %s\nours: %s\n", testing::PrintToString(bare).c_str(),
              testing::PrintToString(ours).c_str());
  ExpectNoGrowth(bare, ours, 1024);
}

/// Draws on a pane from a thread of its own, flat out.
class Feeder {
 public:
  explicit Feeder(int x) : m_pane(kPaneWidth, kPaneHeight, x, 400) {
    m_thread = std::thread([this] {
      while (!m_stop) {
        if (m_pane.Draw(m_frame) == 0) ++m_shown;
        Sleep(3);
      }
    });
  }
  ~Feeder() { Stop(); }

  void Stop() {
    m_stop = true;
    if (m_thread.joinable()) m_thread.join();
  }
  D3DPane& Pane() { return m_pane; }
  TestFrame& Frame() { return m_frame; }
  int Shown() const { return m_shown; }

 private:
  D3DPane m_pane;
  TestFrame m_frame = FlatFrame(kPaneWidth, kPaneHeight, 90, 128, 128);
  std::atomic<bool> m_stop{false};
  std::atomic<int> m_shown{0};
  std::thread m_thread;
};

TEST(D3dSoak, FourPanesSurviveTheirWindowsBeingResized) {
  std::vector<std::unique_ptr<Feeder>> feeders;
  for (int i = 0; i < 4; ++i)
    feeders.push_back(std::make_unique<Feeder>(40 + i * 320));
  std::mt19937 random(20);
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(Setting("NIVRAL_SOAK_SECONDS", 10)) * 1000;
  while (GetTickCount64() < end) {
    feeders[random() % feeders.size()]->Pane().window.ResizeClient(static_cast<int>(20 + random() % 280),
                                                                   static_cast<int>(20 + random() % 200));
    Pump(random() % 20);
  }
  for (auto& feeder : feeders) {
    feeder->Stop();
    EXPECT_GT(feeder->Shown(), 20);
    feeder->Pane().window.ResizeClient(kPaneWidth, kPaneHeight);
    EXPECT_EQ(feeder->Pane().DrawTwice(feeder->Frame()), 0);
    EXPECT_PIXEL(feeder->Pane().window.Handle(), 80, 60, {90, 90, 90});
  }
}

}  // namespace
