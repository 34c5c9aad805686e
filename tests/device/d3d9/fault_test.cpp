// SPDX-License-Identifier: MIT
// Devices that get lost, fail to reset or cannot be made: results, recovery, and nothing left over.
#include <bit>
#include <cstdio>
#include <fstream>
#include <optional>

#include "backends/d3d9/d3d_unreleased.h"
#include "d3d_test.h"
#include "support/failing_memory.h"
#include "support/import_patch.h"
#include "util/log_file.h"

namespace {

class D3dFaults : public D3dTest {
 protected:
  void Start() {
    NIVRAL_DWSetOSDText(pane.handle, 0, "text", 5, 5, 0, 0xFFFFFF);
    pane.Start(160, 120);
  }
  TestFrame frame = FlatFrame(160, 120, 90, 128, 128);
};

struct Fault {
  const char* name;
  HRESULT cooperative, reset, create, surface;  ///< what is given, or 0 for what the device gives
  uint32_t second;                              ///< result of the second frame; the first is refused
  int resets, made, most;                       ///< asked for by both frames; devices at a time
};

class D3dFault : public D3dFaults, public testing::WithParamInterface<Fault> {};

TEST_P(D3dFault, RefusesFramesUntilTheDeviceIsBack) {
  const Fault& f = GetParam();
  Start();
  faults.made = ResetDevice::calls = 0;
  Cooperate::Fail(f.cooperative);
  if (f.reset) ResetDevice::Fail(f.reset);
  if (f.create) CreateDevice::Fail(f.create);
  if (f.surface) CreateSurface::Fail(f.surface);
  EXPECT_EQ(pane.Draw(frame), 0x2FFFu);
  EXPECT_EQ(pane.Draw(frame), f.second);
  EXPECT_EQ(ResetDevice::calls, f.resets);
  EXPECT_EQ(faults.made, f.made);
  EXPECT_EQ(faults.most, f.most);
  EXPECT_EQ(displayer.IsInitialized(), f.second != 0x2001);
  Cooperate::failing = ResetDevice::failing = CreateDevice::failing = CreateSurface::failing = 0;
  pane.Show(frame);
  EXPECT_EQ(faults.alive, 1);
}

INSTANTIATE_TEST_SUITE_P(
    ByAnswer, D3dFault,
    testing::Values(Fault{"Lost", D3DERR_DEVICELOST, 0, 0, 0, 0x2FFF, 0, 0, 1},
                    Fault{"OtherError", D3DERR_DRIVERINTERNALERROR, 0, 0, 0, 0x2FFF, 0, 0, 1},
                    Fault{"ToBeReset", D3DERR_DEVICENOTRESET, 0, 0, 0, 0x2FFF, 2, 0, 1},
                    Fault{"NoReset", D3DERR_DEVICENOTRESET, D3DERR_INVALIDCALL, 0, 0, 0x2FFF, 2, 2, 1},
                    Fault{"NoDevice", D3DERR_DEVICENOTRESET, E_FAIL, D3DERR_NOTAVAILABLE, 0, 0x2001, 1, 0, 1},
                    Fault{"NoSurface", D3DERR_DEVICENOTRESET, 0, 0, D3DERR_OUTOFVIDEOMEMORY, 0x2001, 1, 2,
                          2}),
    [](const auto& fault) { return fault.param.name; });

TEST_F(D3dFaults, OverlayBuffersMakeAResetFailAndComeBack) {
  Start();
  const uint32_t place = std::bit_cast<uint32_t>(20.0f);
  for (int i = 0; i < 2; ++i) {
    NIVRAL_DWSetDsmAlgInfo(pane.handle, 1, &place, &place, 0, nullptr, nullptr, nullptr, nullptr, 2);
    EXPECT_TRUE(Near(pane.Show(frame).At(20, 20), {0, 255, 0}, 2));
    EXPECT_EQ(pane.Init(160, 120), 0u);
    EXPECT_EQ(faults.made, 2 + i);
  }
}

TEST_F(D3dFaults, ATextOrLineThatCannotBeMadeComesWithALaterFrame) {
  Direct3DFaults::D3dx().createFont = [](auto...) -> HRESULT { return E_FAIL; };
  pane.Start(160, 120);
  NIVRAL_DWSetOSDText(pane.handle, 0, "HHHHHHHH", 20, 20, 0, 0x0000FF);
  const auto isRed = [](const Rgb& c) { return c.r > c.b + 40; };
  CreateTexture::Fail(D3DERR_DEVICELOST);
  EXPECT_EQ(Find(pane.Show(frame), isRed).count, 0);
  CreateTexture::failing = 0;
  EXPECT_GT(Find(pane.Show(frame), isRed).count, 0);

  static std::optional<FailingMemory> failing;
  static int lines = 0;
  static const decltype(D3dxFunctions::createLine) createLine = std::exchange(
      Direct3DFaults::D3dx().createLine, [](IDirect3DDevice9* device, ID3DXLine** line) -> HRESULT {
        return failing.emplace(1), ++lines, createLine(device, line);
      });
  for (int i = 0; i < 3; ++i, failing.reset()) {
    pane.SetBox(20, 20, 60, 60, 2, 0, 1);
    pane.Draw(frame);
  }
  EXPECT_EQ(lines, 1) << "for the frames behind it, too";
}

/// A state that classes of a client's own can bring about.
TEST_F(D3dFaults, ASurfaceThatIsMissingIsMadeBeforeTheNextFrame) {
  struct Opened : D3DDisplayer {
    using D3DDisplayer::ResetDevice;
  };
  Start();
  CreateSurface::Fail(D3DERR_OUTOFVIDEOMEMORY, 1);
  EXPECT_FALSE((displayer.*&Opened::ResetDevice)());
  EXPECT_EQ(pane.Draw(frame), 0x2FFFu);
  pane.Show(frame);
}

TEST_F(D3dFaults, ResultsTellWhatCouldNotBeMade) {
  for (const auto& [width, height] : {std::pair{0u, 5u}, {5u, 0u}, {5u, 0x80000000u}})
    EXPECT_EQ(displayer.Initialize(width, height), 0x2002);
  EXPECT_EQ(displayer.Initialize(0x7FFFFFFF, 0x7FFFFFFF), 0x2003);
  CreateDevice::Fail(D3DERR_NOTAVAILABLE);
  EXPECT_EQ(displayer.Initialize(160, 120), 0x2004);
  EXPECT_EQ(displayer.InitDraw(160, 120, 0), 1);
  CreateDevice::failing = 0;
  CreateSurface::Fail(D3DERR_OUTOFVIDEOMEMORY, 1);
  EXPECT_EQ(displayer.Initialize(160, 120), 0x2FFF);
  D3DDisplayer notLoaded;
  EXPECT_EQ(notLoaded.Initialize(160, 120), 0x2004);
  FARPROC(WINAPI * findNone)
  (HMODULE, const char*) = [](HMODULE, const char*) {
    IDirect3D9*(WINAPI * none)(UINT) = [](UINT) -> IDirect3D9* { return nullptr; };
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(none));
  };
  const ImportPatch noInterface("kernel32.dll", "GetProcAddress", findNone);
  notLoaded.SetPlayWnd(pane.Window());
  EXPECT_EQ(notLoaded.LoadDirect3D(), 1);
  EXPECT_EQ(notLoaded.Initialize(160, 120), 0x2004) << "a run-time that gives no interface";
}

TEST_F(D3dFaults, StepsAreToldInTheirOrder) {
  Start();
  UINT(WINAPI * everyLevel)
  (const wchar_t*, const wchar_t*, INT, const wchar_t*) = [](auto...) -> UINT { return 1; };
  const ImportPatch settings("kernel32.dll", "GetPrivateProfileIntW", everyLevel);
  CLogFile::DestroyInstance();
  Cooperate::Fail(D3DERR_DEVICENOTRESET, 1);
  ResetDevice::Fail(D3DERR_INVALIDCALL, 1);
  testing::internal::CaptureStdout();
  EXPECT_EQ(pane.Draw(frame), 0x2FFFu);
  const std::string told = testing::internal::GetCapturedStdout();
  CLogFile::DestroyInstance();
  size_t at = 0;
  for (const char* step : {"hrErrCode=D3DERR_DEVICENOTRESET", "::ResetDisplay\n", "::ResetDevice\n",
                           "::ResetDisplay: Initialize\n", "::InitSurface\n", "::InitSurface ok\n"}) {
    EXPECT_NE(at = told.find(step, at), std::string::npos) << step << " is not where it belongs in\n" << told;
  }
}

TEST_F(D3dFaults, NoDeviceIsMadeOrResetForAWindowThatIsNotThere) {
  NIVRAL_DWSetHwnd(pane.handle, nullptr);
  EXPECT_EQ(displayer.InitDraw(160, 120, 0), 1);
  EXPECT_EQ(pane.Draw(frame), 0x2001u);
  EXPECT_EQ(faults.made, 0);
  {
    const TestWindow gone(160, 120, 300, 60, WS_POPUP);
    NIVRAL_DWSetHwnd(pane.handle, gone.Handle());
    EXPECT_EQ(pane.Init(160, 120), 0u);
    EXPECT_EQ(pane.Draw(frame), 0u);
  }
  pane.Init(160, 120);
  EXPECT_EQ(pane.Draw(frame), 0x2001u);
  EXPECT_EQ(ResetDevice::calls, 0);
  EXPECT_EQ(faults.made, 1);
  EXPECT_EQ(faults.alive, 0);
  NIVRAL_DWSetHwnd(pane.handle, pane.Window());
  pane.Settle(160, 120);
}

TEST_F(D3dFaults, TheTrialDeviceHasAWindowAndLeavesNothing) {
  const auto opensDirect3D = [](int failures) {
    CreateDevice::Fail(D3DERR_NOTAVAILABLE, failures);
    NIVRAL_InitializeEx(0);
    void* opened = nullptr;
    EXPECT_EQ(NIVRAL_DWOpenDraw(&opened), 0u);
    const bool direct3D = dynamic_cast<D3DDisplayer*>(static_cast<BaseDisplayer*>(opened)) != nullptr;
    NIVRAL_DWCloseDraw(opened);
    return direct3D;
  };
  EXPECT_TRUE(opensDirect3D(0));
  EXPECT_EQ(faults.made, 1);
  EXPECT_TRUE(faults.windowExisted);
  EXPECT_FALSE(IsWindow(faults.window));
  EXPECT_EQ(faults.alive, 0);
  EXPECT_FALSE(opensDirect3D(1));
  EXPECT_TRUE(opensDirect3D(0));
}

constexpr char kShaderFile[] = "hsl_test_shader.txt";
decltype(D3dxFunctions::compileShaderFromFile) g_compile;

/// The colour path on the device's shaders, which nothing in the library leads to.
TEST_F(D3dFaults, TheColourShaderRunsWhereThereIsOne) {
  std::ofstream(kShaderFile) << "float4x4 colorMatrix; int nContrast; int nBright;\n"
                                "float4 hslMain(float4 c : COLOR0) : COLOR {\n"
                                "  float4 mixed = mul(float4(0.5, 0.25, 0.75, 1), colorMatrix);\n"
                                "  return mixed + nBright / 255.0 + nContrast / 255.0;\n}\n";
  pane.Start(160, 120);
  g_compile = std::exchange(Direct3DFaults::D3dx().compileShaderFromFile,
                            [](const char*, auto... rest) { return g_compile(kShaderFile, rest...); });
  EXPECT_EQ(displayer.SetupHslShader(200, 150), 0);  // for the pane's own size there is nothing to do
  EXPECT_EQ(displayer.RenderHsl(0, 0, 100, 0), 0);
  EXPECT_PIXEL(pane.Window(), 80, 60, {128, 64, 191});
  EXPECT_EQ(displayer.RenderHsl(51, 10, 0, 0), 0);
  EXPECT_PIXEL(pane.Window(), 159, 119, {155, 155, 155});
  std::remove(kShaderFile);
  EXPECT_EQ(displayer.SetupHslShader(201, 150), 1);
  NIVRAL_DWCloseDraw(std::exchange(pane.handle, nullptr));
  ReleaseUnreleased();
}

}  // namespace
