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

TEST(D3dHsl, ColoursGoThroughMatrixAndConstants) {
  auto* faults = LoadedFunction<GetD3D9FaultsFunction>("d3d9.dll", "GetD3D9Faults")();
  const auto useShader = LoadedFunction<void (*)(const char*)>("d3dx9_43.dll", "SetShimShaderFile");
  *faults = {};
  auto pane = std::make_unique<D3DPane>();
  const HWND window = pane->window.Handle();
  std::ofstream(kShaderFile) << kShader;
  useShader(kShaderFile);
  EXPECT_EQ(pane->displayer.SetupHslShader(kWidth, kHeight), 0);
  EXPECT_EQ(pane->displayer.RenderHsl(0, 0, 100, 0), 0);
  EXPECT_PIXEL(window, 80, 60, {128, 64, 191});
  EXPECT_EQ(pane->displayer.RenderHsl(51, 10, 0, 0), 0);  // grey 0.3682, brighter by 61
  EXPECT_PIXEL(window, 0, 0, {155, 155, 155});
  EXPECT_PIXEL(window, kPaneWidth - 1, kPaneHeight - 1, {155, 155, 155});

  const Vector3 turned = TransformPoint({0.5f, 0.25f, 0.75f}, ColorMatrix(120, 60, BuildHueMatrices()));
  const auto channel = [](float value) {
    return static_cast<int>(std::clamp(value, 0.0f, 1.0f) * 255 + 0.5f);
  };
  EXPECT_EQ(pane->displayer.RenderHsl(0, 0, 120, 60), 0);
  EXPECT_PIXEL(window, 80, 60, {channel(turned.x), channel(turned.y), channel(turned.z)});

  useShader("");  // no such file: the quad is drawn plain
  EXPECT_EQ(pane->displayer.SetupHslShader(kWidth + 1, kHeight), 1);
  EXPECT_EQ(pane->displayer.RenderHsl(0, 0, 100, 0), 0);
  EXPECT_PIXEL(window, 80, 60, {255, 255, 255});
  pane.reset();
  std::remove(kShaderFile);
  ReleaseUnreleased();
  EXPECT_EQ(faults->devicesAlive, 0);
  EXPECT_EQ(faults->direct3DsAlive, 0);
}

}  // namespace
