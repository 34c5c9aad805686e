// SPDX-License-Identifier: MIT
// Milliseconds per frame through D3DDisplayer against a program that only locks, copies, stretches and
// presents, and, for texts, measures and draws them with a font it keeps. Run with WINE_D3D_CONFIG=csmt=0, or
// Wine moves the work to a thread of its own. NIVRAL_BENCH_FRAMES sets the number of frames.
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>

#include "alternate.h"
#include "backends/d3d9/d3d_displayer.h"
#include "display/system_face.h"
#include "support/frames.h"
#include "support/test_window.h"

namespace {

constexpr char kText[] = "2026-01-31 12:34:56 channel 1";

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

class BareDirect3D {
 public:
  BareDirect3D(int width, int height)
      : m_width(width), m_height(height), m_window(width / 2, height / 2, 20, 40) {
    const auto create = reinterpret_cast<decltype(&Direct3DCreate9)>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("d3d9.dll"), "Direct3DCreate9")));
    m_direct3D.reset(create(D3D_SDK_VERSION));
    D3DPRESENT_PARAMETERS parameters{};
    parameters.BackBufferWidth = static_cast<UINT>(width);
    parameters.BackBufferHeight = static_cast<UINT>(height);
    parameters.BackBufferFormat = D3DFMT_X8R8G8B8;
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    parameters.Flags = D3DPRESENTFLAG_LOCKABLE_BACKBUFFER | D3DPRESENTFLAG_VIDEO;
    if (FAILED(m_direct3D->CreateDevice(0, D3DDEVTYPE_HAL, m_window.Handle(),
                                        D3DCREATE_HARDWARE_VERTEXPROCESSING | D3DCREATE_FPU_PRESERVE,
                                        &parameters, m_device.put())) ||
        FAILED(m_device->CreateOffscreenPlainSurface(static_cast<UINT>(width), static_cast<UINT>(height),
                                                     static_cast<D3DFORMAT>(MAKEFOURCC('Y', 'V', '1', '2')),
                                                     D3DPOOL_DEFAULT, m_surface.put(), nullptr)) ||
        FAILED(m_device->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, m_backBuffer.put())) ||
        FAILED(LoadD3dx()->createFont(m_device.get(), -(height / 20), 0, FW_NORMAL, D3DX_DEFAULT, FALSE,
                                      DEFAULT_CHARSET, 0, 0, 0, IconTitleFace().c_str(), m_font.put()))) {
      Fail("no device");
    }
  }

  void Draw(const FrameView& f, int texts) {
    Upload(f);
    m_device->BeginScene();
    m_device->StretchRect(m_surface.get(), nullptr, m_backBuffer.get(), nullptr, D3DTEXF_NONE);
    for (int i = 0; i < texts; ++i) {
      RECT place{20, i * m_height / 8, m_width, m_height};
      const INT length = static_cast<INT>(std::strlen(kText));
      m_font->DrawTextA(nullptr, kText, length, &place, DT_CALCRECT | DT_NOCLIP | DT_WORDBREAK, 0xFFFFFFFF);
      m_font->DrawTextA(nullptr, kText, length, &place, DT_NOCLIP | DT_WORDBREAK, 0xFFFFFFFF);
    }
    m_device->EndScene();
    m_device->Present(nullptr, nullptr, nullptr, nullptr);
  }

 private:
  static void CopyRows(uint8_t* to, int pitch, const uint8_t* from, int stride, int width, int height) {
    for (int row = 0; row < height; ++row)
      std::memcpy(to + row * pitch, from + row * stride, static_cast<size_t>(width));
  }

  void Upload(const FrameView& f) {
    D3DLOCKED_RECT locked{};
    m_surface->LockRect(&locked, nullptr, D3DLOCK_NOSYSLOCK | D3DLOCK_NO_DIRTY_UPDATE);
    auto* y = static_cast<uint8_t*>(locked.pBits);
    uint8_t* v = y + locked.Pitch * m_height;
    CopyRows(y, locked.Pitch, f.y, f.strideY, m_width, m_height);
    CopyRows(v, locked.Pitch / 2, f.v, f.strideV, m_width / 2, m_height / 2);
    CopyRows(v + locked.Pitch * m_height / 4, locked.Pitch / 2, f.u, f.strideU, m_width / 2, m_height / 2);
    m_surface->UnlockRect();
  }

  int m_width;
  int m_height;
  TestWindow m_window;
  ComPtr<IDirect3D9> m_direct3D;
  ComPtr<IDirect3DDevice9> m_device;
  ComPtr<IDirect3DSurface9> m_surface;
  ComPtr<IDirect3DSurface9> m_backBuffer;
  ComPtr<ID3DXFont> m_font;
};

class Pane {
 public:
  Pane(int width, int height) : m_window(width / 2, height / 2, 1000, 40) {
    m_displayer.SetPlayWnd(m_window.Handle());
    if (!m_displayer.LoadDirect3D() ||
        m_displayer.InitDraw(static_cast<uint32_t>(width), static_cast<uint32_t>(height), 0) != 0) {
      Fail("no device");
    }
  }

  void AddTexts(int height) {
    for (int i = 0; i < 6; ++i)
      m_displayer.SetOSDText(i, kText, 20, static_cast<uint32_t>(i * height / 8), 0, 0xFFFFFF);
  }
  void AddMosaics() {
    for (const MilleRect& rect : {MilleRect{100, 100, 300, 300}, MilleRect{500, 500, 800, 900}}) {
      m_displayer.SetMosaicRect(&rect);
      m_displayer.UpdateMosaics(1);
    }
  }
  void QueueBoxes() {
    uint32_t left[12], top[12], right[12], bottom[12];
    uint16_t type[12], distance[12], unused[12]{};
    for (int i = 0; i < 12; ++i) {
      left[i] = std::bit_cast<uint32_t>(static_cast<float>(20 + i * 100));
      top[i] = std::bit_cast<uint32_t>(static_cast<float>(60 + i * 40));
      right[i] = std::bit_cast<uint32_t>(static_cast<float>(140 + i * 100));
      bottom[i] = std::bit_cast<uint32_t>(static_cast<float>(200 + i * 40));
      type[i] = static_cast<uint16_t>(1 + i % 7);
      distance[i] = static_cast<uint16_t>(100 + i);
    }
    m_displayer.SetAlgInfo(12, left, top, right, bottom, type, distance, unused, unused, 2);
  }
  void QueueLandmarks() {
    uint32_t x[68], y[68];
    for (int i = 0; i < 68; ++i) {
      x[i] = std::bit_cast<uint32_t>(static_cast<float>(300 + i * 9));
      y[i] = std::bit_cast<uint32_t>(static_cast<float>(300 + i % 9 * 20));
    }
    m_displayer.SetDsmAlgInfo(68, x, y, 0, nullptr, nullptr, nullptr, nullptr, 3);
  }
  void Draw(const FrameView& f) {
    if (m_displayer.DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0) != 0)
      Fail("a frame was dropped");
  }

 private:
  TestWindow m_window;
  D3DDisplayer m_displayer;
};

void Measure(int width, int height, int frames) {
  TestFrame picture = GradientFrame(width, height);
  const FrameView f = picture.View();
  // Both sides anew each time: which of two like devices is faster depends on where its memory lies. Between
  // two frames of the same pane must be one of the other only.
  const auto compare = [&](const char* what, int textCount) {
    BareDirect3D bare(width, height);
    Pane pane(width, height);
    if (textCount > 0) pane.AddTexts(height);
    const auto ms =
        MedianMs({{"bare", [&] { bare.Draw(f, textCount); }}, {"library", [&] { pane.Draw(f); }}}, frames);
    std::printf("%dx%d, %s: bare %.3f ms, library %.3f ms (%+.2f %%)\n", width, height, what, ms[0], ms[1],
                (ms[1] / ms[0] - 1) * 100);
  };
  compare("plain", 0);
  compare("six texts", 6);
  Pane plain(width, height), texts(width, height), mosaics(width, height), boxes(width, height),
      landmarks(width, height);
  texts.AddTexts(height);
  mosaics.AddMosaics();
  const auto added = [&](const char* what, const std::function<void()>& draw) {
    const auto ms = MedianMs({{"plain", [&] { plain.Draw(f); }}, {what, draw}}, frames);
    std::printf("%dx%d, added by %s: %+.3f ms\n", width, height, what, ms[1] - ms[0]);
  };
  added("six texts", [&] { texts.Draw(f); });
  added("two mosaics", [&] { mosaics.Draw(f); });
  added("12 boxes", [&] {
    boxes.QueueBoxes();
    boxes.Draw(f);
  });
  added("68 landmarks", [&] {
    landmarks.QueueLandmarks();
    landmarks.Draw(f);
  });
  std::fflush(stdout);
}

}  // namespace

int main() {
  const char* wanted = std::getenv("NIVRAL_BENCH_FRAMES");
  const int frames = wanted ? std::atoi(wanted) : 200;
  for (int repeat = 0; repeat < 3; ++repeat) {
    Measure(1280, 720, frames);
    Measure(1920, 1080, frames);
  }
}
