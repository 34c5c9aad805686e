// SPDX-License-Identifier: MIT
// The colour path on the device's shaders, which nothing in the library leads to, run once as a whole.
#include <cstdio>
#include <fstream>

#include "backends/d3d9/hsl_matrix.h"
#include "backends/d3d9/unreleased.h"
#include "fakes/d3d9_faults.h"
#include "fakes/loaded.h"
#include "pane.h"

namespace {

// Without sampling, which Wine's compiler does not know.
constexpr char kShader[] =
    "float4x4 colorMatrix; int nContrast; int nBright;\n"
    "float4 hslMain(float4 c : COLOR0) : COLOR {\n"
    "  float4 mixed = mul(float4(0.5, 0.25, 0.75, 1), colorMatrix);\n"
    "  return mixed + nBright / 255.0 + nContrast / 255.0;\n"
    "}\n";
constexpr char kShaderFile[] = "hsl_test_shader.txt";

constexpr uint32_t kWidth = 200;  // another size than the pane's, or the set-up has nothing to do
constexpr uint32_t kHeight = 150;

class D3dHsl : public testing::Test {
 protected:
  D3dHsl() {
    *m_faults = {};
    m_pane = std::make_unique<D3DPane>();
  }
  ~D3dHsl() override {
    m_pane.reset();
    EXPECT_EQ(UnreleasedCount(), m_expectedUnreleased);
    ReleaseUnreleased();
    EXPECT_EQ(m_faults->devicesAlive, 0);
    EXPECT_EQ(m_faults->direct3DsAlive, 0);
    std::remove(kShaderFile);
  }

  void UseShader(const char* file) {
    LoadedFunction<void (*)(const char*)>("d3dx9_43.dll", "SetShimShaderFile")(file);
  }
  D3DDisplayer& Displayer() { return m_pane->displayer; }

  D3D9Faults* m_faults = LoadedFunction<GetD3D9FaultsFunction>("d3d9.dll", "GetD3D9Faults")();
  std::unique_ptr<D3DPane> m_pane;
  size_t m_expectedUnreleased = 0;
};

TEST_F(D3dHsl, WithoutAShaderFileTheQuadIsDrawnPlain) {
  UseShader("");
  EXPECT_EQ(Displayer().SetupHslShader(kWidth, kHeight), 1);
  EXPECT_STREQ(LoadedFunction<const char* (*)()>("d3dx9_43.dll", "GetShaderFileAsked")(),
               "F:\\directxps_hsl\\directxps_hsl\\hslps.txt");
  EXPECT_EQ(Displayer().RenderHsl(0, 0, 100, 0), 0);
  EXPECT_PIXEL(m_pane->window.Handle(), 80, 60, {255, 255, 255});
  // The surface of the earlier device and size is gone: a frame has it made first.
  TestFrame frame = FlatFrame(kWidth, kHeight, 128, 128, 128);
  const auto draw = [&] {
    const FrameView f = frame.View();
    return Displayer().Display(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
  };
  EXPECT_EQ(draw(), 0x2FFF);
  EXPECT_EQ(draw(), 0);
  m_expectedUnreleased = 2 + 2;  // the earlier device and its maker; quad and declaration
}

TEST_F(D3dHsl, ColoursGoThroughMatrixAndConstants) {
  std::ofstream(kShaderFile) << kShader;
  UseShader(kShaderFile);
  EXPECT_EQ(Displayer().SetupHslShader(kWidth, kHeight), 0);
  HWND window = m_pane->window.Handle();
  EXPECT_EQ(Displayer().RenderHsl(0, 0, 100, 0), 0);
  EXPECT_PIXEL(window, 80, 60, {128, 64, 191});
  EXPECT_EQ(Displayer().RenderHsl(51, 10, 0, 0), 0);  // grey 0.3682, brighter by 61
  EXPECT_PIXEL(window, 0, 0, {155, 155, 155});
  EXPECT_PIXEL(window, kPaneWidth - 1, kPaneHeight - 1, {155, 155, 155});

  const Vector3 turned = TransformPoint({0.5f, 0.25f, 0.75f}, ColorMatrix(120, 60, BuildHueMatrices()));
  EXPECT_EQ(Displayer().RenderHsl(0, 0, 120, 60), 0);
  const auto channel = [](float value) {
    return static_cast<int>(std::clamp(value, 0.0f, 1.0f) * 255 + 0.5f);
  };
  EXPECT_PIXEL(window, 80, 60, {channel(turned.x), channel(turned.y), channel(turned.z)});
  m_expectedUnreleased = 2 + 4;
}

}  // namespace
