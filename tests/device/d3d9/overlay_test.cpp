// SPDX-License-Identifier: MIT
// Overlays with and without what D3DX does for them. All pixels of a pane: device pixels are frame pixels.
#include <array>
#include <atomic>
#include <bit>
#include <thread>

#include "d3d_test.h"

namespace {

constexpr int kWidth = 960, kHeight = 720;
constexpr Rgb kShapes[] = {{16, 16, 16}, {0, 255, 0}, {255, 0xC5, 0}, {255, 0x61, 0}};

/// Not the colour of the frame or of a shape, as far as a letter shines through.
bool IsLetter(const Rgb& c) {
  return std::none_of(std::begin(kShapes), std::end(kShapes), [&](const Rgb& s) { return Near(s, c, 2); });
}

/// Lines of D3DX as they should be: Wine's draw nothing.
HRESULT DrawStrip(HRESULT, ID3DXLine* line, const D3DXVECTOR2* points, DWORD count, D3DCOLOR colour) {
  struct Vertex {
    float x, y, z, rhw;
    D3DCOLOR colour;
  };
  std::vector<Vertex> strip;
  for (DWORD i = 0; i < count; ++i)
    strip.push_back({points[i].x, points[i].y, 0, 1, colour});
  ComPtr<Device> device;
  ComPtr<IDirect3DStateBlock9> state;
  if (FAILED(line->GetDevice(device.put())) || FAILED(device->CreateStateBlock(D3DSBT_ALL, state.put())))
    return E_FAIL;
  device->SetTexture(0, nullptr);
  device->SetPixelShader(nullptr);
  device->SetFVF(D3DFVF_XYZRHW | D3DFVF_DIFFUSE);
  device->DrawPrimitiveUP(D3DPT_LINESTRIP, count - 1, strip.data(), sizeof(Vertex));
  return state->Apply();
}

enum class D3dx { DoesAll, CannotMake, CannotDraw };

class D3dOverlays : public D3dTest {
 protected:
  D3dOverlays() : D3dTest(kWidth, kHeight) {}

  /// A pane that starts anew with this D3DX.
  void Start(D3dx can) {
    Direct3DFaults::D3dx() = m_functions;
    if (can == D3dx::CannotMake) {
      Direct3DFaults::D3dx().createFont = [](auto...) -> HRESULT { return E_FAIL; };
      Direct3DFaults::D3dx().createLine = [](auto...) -> HRESULT { return E_FAIL; };
    }
    DrawLine::then = nullptr;
    if (can == D3dx::DoesAll) DrawLine::then = &DrawStrip;
    DrawLetters::Fail(0, can == D3dx::CannotDraw ? INT_MAX : 0);
    NIVRAL_DWFreeDraw(pane.handle);
    pane.Start(kWidth, kHeight);
  }

  void Assist(const std::vector<std::array<float, 4>>& boxes, const uint16_t* types,
              const uint16_t* distances, uint16_t width) {
    std::vector<uint32_t> edges[4];
    for (const auto& box : boxes)
      for (size_t i = 0; i < 4; ++i)
        edges[i].push_back(std::bit_cast<uint32_t>(box[i]));
    NIVRAL_DWSetAlgInfo(pane.handle, static_cast<int>(boxes.size()), edges[0].data(), edges[1].data(),
                        edges[2].data(), edges[3].data(), types, distances, types, types, width);
  }

  ScreenShot ShowScene(D3dx can) {
    Start(can);
    NIVRAL_DWSetOSDText(pane.handle, 0, "Side Wg 12:34", 100, 50, 0, 0x0000FF);
    NIVRAL_DWSetOSDText(pane.handle, 5, "One two three four five six seven", 700, 120, 1, 0x0000FF);
    const uint16_t types[] = {1, 4, 2}, distances[] = {123, 456, 0};
    Assist({{200, 200, 500, 500}, {300, 190, 420, 490}, {600, 380, 640, 400}}, types, distances, 3);
    return pane.Show(m_black);
  }

  TestFrame m_black = FlatFrame(kWidth, kHeight, 16, 128, 128);

 private:
  const D3dxFunctions m_functions = Direct3DFaults::D3dx();
};

TEST_F(D3dOverlays, LookTheSameWhateverD3dxCanDo) {
  const ScreenShot all = ShowScene(D3dx::DoesAll);
  for (const D3dx can : {D3dx::CannotMake, D3dx::CannotDraw}) {
    const ScreenShot own = ShowScene(can);
    int different = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x)
        different += !IsLetter(all.At(x, y)) && !IsLetter(own.At(x, y)) && !InMark(all, x, y) &&
                     !Near(all.At(x, y), own.At(x, y), 0);
    EXPECT_EQ(different, 0);
    for (const RECT& text : {RECT{10, 10, kWidth - 10, 150},
                             {10, 600, kWidth - 10, kHeight - 10},
                             {190, 170, 290, 199},
                             {590, 360, 700, 380},
                             {300, 470, 420, 500}}) {
      const RECT a = Find(all, &IsLetter, text).box, b = Find(own, &IsLetter, text).box;
      EXPECT_LT(a.left, a.right) << "nothing was written at " << text.left << "," << text.top;
      for (const auto& [edge, other] :
           {std::pair{a.left, b.left}, {a.top, b.top}, {a.right, b.right}, {a.bottom, b.bottom}})
        EXPECT_NEAR(edge, other, 2) << "of the text at " << text.left << "," << text.top;
    }
  }
}

TEST_F(D3dOverlays, AnyTextIsSurvived) {
  std::string lines;
  for (int i = 0; i < 170; ++i)
    lines += "W\n\t";
  for (const D3dx can : {D3dx::DoesAll, D3dx::CannotMake}) {
    Start(can);
    for (const std::string& text : {std::string(511, 'W'), std::string(511, ' '), lines, std::string("\n"),
                                    std::string("i i W"), std::string("\xFC\xE4\x80\xDF & \x01")}) {
      // Beside the right edge not one character has room.
      for (const uint32_t x : {0u, kWidth - 20u, kWidth - 2u, kWidth + 5u, 0x80000000u, 0xFFFFFFFFu}) {
        NIVRAL_DWSetOSDText(pane.handle, 0, text.c_str(), x, 0x7FFFFFF0u, 1, 0x0000FF);
        NIVRAL_DWSetOSDText(pane.handle, 1, text.c_str(), x, 5, 0, 0x0000FF);
        EXPECT_EQ(pane.Draw(m_black), 0u) << x << text;
      }
    }
    const std::vector<std::array<float, 4>> boxes(kMaxBoxes, {kWidth - 3.0f, 200, kWidth, 500});
    const std::vector<uint16_t> types(kMaxBoxes, 1);
    std::vector<uint16_t> distances(kMaxBoxes);
    for (uint16_t last = 0; last < 4000;) {  // more labels than are kept
      for (uint16_t& distance : distances)
        distance = last = static_cast<uint16_t>(last + 37);
      Assist(boxes, types.data(), distances.data(), 1);
      EXPECT_EQ(pane.Draw(m_black), 0u);
    }
  }
}

TEST_F(D3dOverlays, TextsCanBeSetWhileOthersAreDrawn) {
  Start(D3dx::DoesAll);
  std::thread setter;
  std::atomic<bool> set{false};
  DrawLetters::then = [&](HRESULT result, auto...) {
    if (setter.joinable()) return result;
    setter = std::thread([&] {
      NIVRAL_DWSetOSDText(pane.handle, 1, "other", 9, 9, 0, 0);
      set = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return set.load(); }));
    return result;
  };
  NIVRAL_DWSetOSDText(pane.handle, 0, "text", 100, 50, 0, 0x0000FF);
  EXPECT_EQ(pane.Draw(m_black), 0u);
  setter.join();
}

}  // namespace
