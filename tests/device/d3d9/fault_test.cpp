// SPDX-License-Identifier: MIT
// Devices that get lost, fail to reset or cannot be made: results, log lines, recovery, and nothing left
// over.
#include <bit>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "fakes/d3d9_faults.h"
#include "fakes/d3dx_faults.h"
#include "fakes/loaded.h"
#include "nivral/nivral.h"
#include "pane.h"

namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

/// The messages of this class that reached the log since the last look.
class LogTail {
 public:
  LogTail() { Take(); }

  Lines Take() {
    std::string text;
    for (const auto& file : fs::directory_iterator(Folder())) {
      std::ifstream in(file.path(), std::ios::binary);
      text += std::string(std::istreambuf_iterator<char>(in), {});
    }
    Lines messages;
    for (size_t at = m_seen; (at = text.find("D3DDisplayer::", at)) != std::string::npos; ++at)
      messages.push_back(text.substr(at + 14, text.find("\r\n", at) - at - 14));
    m_seen = text.size();
    return messages;
  }

 private:
  static fs::path Folder() {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const fs::path path(program);
    const fs::path folder = path.parent_path() / "Log" / path.stem();
    fs::create_directories(folder);
    return folder;
  }

  size_t m_seen = 0;
};

class OpenedDisplayer : public D3DDisplayer {
 public:
  using D3DDisplayer::ResetDevice;
};

class D3dFaults : public testing::Test {
 protected:
  D3dFaults() {
    const auto get = LoadedFunction<GetD3D9FaultsFunction>("d3d9.dll", "GetD3D9Faults");
    if (!get) {
      ADD_FAILURE() << "the stand-in d3d9.dll was not loaded";
      std::abort();
    }
    m_faults = get();
    *m_faults = {};
    *m_d3dx = {};
    m_displayer = std::make_unique<OpenedDisplayer>();
    m_displayer->SetPlayWnd(m_window.Handle());
    EXPECT_EQ(m_displayer->LoadDirect3D(), 1);
    m_log.Take();
  }
  ~D3dFaults() override {
    m_displayer.reset();
    EXPECT_EQ(m_faults->devicesAlive, 0);
    EXPECT_EQ(m_faults->direct3DsAlive, 0);
  }

  void Start() {
    EXPECT_EQ(m_displayer->InitDraw(kPaneWidth, kPaneHeight, 0), 0);
    EXPECT_EQ(Draw(), 0);
    m_log.Take();
  }
  int32_t Draw() {
    const FrameView f = m_frame.View();
    return m_displayer->DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
  }
  /// A frame that is shown, on the device that is there now.
  void ExpectDrawn() {
    const int before = m_faults->presents;
    EXPECT_EQ(Draw(), 0);
    EXPECT_EQ(m_faults->presents, before + 1);
    EXPECT_PIXEL(m_window.Handle(), 80, 60, {90, 90, 90});
  }
  void ShowTextAndLandmark() {
    m_displayer->SetOSDText(0, "text", 5, 5, 0, 0xFFFFFF);
    const uint32_t x = std::bit_cast<uint32_t>(20.0f);
    m_displayer->SetDsmAlgInfo(1, &x, &x, 0, nullptr, nullptr, nullptr, nullptr, 2);
    EXPECT_EQ(Draw(), 0);
  }

  D3D9Faults* m_faults = nullptr;
  D3dxFaults* m_d3dx = LoadedFunction<GetD3dxFaultsFunction>("d3dx9_43.dll", "GetD3dxFaults")();
  LogTail m_log;
  TestWindow m_window{kPaneWidth, kPaneHeight, 40, 60, WS_POPUP};
  std::unique_ptr<OpenedDisplayer> m_displayer;
  TestFrame m_frame = FlatFrame(kPaneWidth, kPaneHeight, 90, 128, 128);
};

const Lines kReset = {"ResetDisplay", "ResetDevice", "InitSurface", "InitSurface ok"};
const Lines kMadeAnew = {
    "ResetDisplay", "ResetDevice",   "ResetDevice: m_pd3dDevice->Reset failed", "ResetDisplay: Initialize",
    "InitSurface",  "InitSurface ok"};

Lines After(std::string first, Lines rest) {
  rest.insert(rest.begin(), std::move(first));
  return rest;
}

TEST_F(D3dFaults, ALostDeviceIsLeftAloneUntilItCanBeReset) {
  Start();
  m_faults->cooperativeLevel = D3DERR_DEVICELOST;
  EXPECT_EQ(Draw(), 0x2FFF);
  EXPECT_EQ(Draw(), 0x2FFF);
  EXPECT_EQ(m_faults->resets, 0);
  EXPECT_EQ(m_log.Take(), Lines(2, "Display: hrErrCode=D3DERR_DEVICELOST"));

  m_faults->cooperativeLevel = D3DERR_DEVICENOTRESET;
  EXPECT_EQ(Draw(), 0x2FFF);
  EXPECT_EQ(m_faults->resets, 1);
  EXPECT_EQ(m_log.Take(), After("Display: hrErrCode=D3DERR_DEVICENOTRESET", kReset));
  m_faults->cooperativeLevel = 0;
  ExpectDrawn();
  EXPECT_EQ(m_faults->devicesMade, 1);

  m_faults->cooperativeLevel = D3DERR_DRIVERINTERNALERROR;
  EXPECT_EQ(Draw(), 0x2FFF);
  EXPECT_EQ(m_faults->resets, 1);
  EXPECT_EQ(m_log.Take(), Lines{"Display: hrErrCode=-2005530585"});
}

TEST_F(D3dFaults, ADeviceThatCannotBeResetIsMadeAnew) {
  Start();
  m_displayer->SetOSDText(0, "text", 5, 5, 0, 0xFFFFFF);
  EXPECT_EQ(Draw(), 0);
  m_log.Take();
  m_faults->cooperativeLevel = D3DERR_DEVICENOTRESET;
  m_faults->reset = D3DERR_INVALIDCALL;
  EXPECT_EQ(Draw(), 0x2FFF);
  EXPECT_EQ(m_log.Take(), After("Display: hrErrCode=D3DERR_DEVICENOTRESET", kMadeAnew));
  EXPECT_EQ(m_faults->devicesMade, 2);
  EXPECT_EQ(m_faults->mostDevicesAlive, 1) << "the old one goes first";
  m_faults->cooperativeLevel = 0;
  ExpectDrawn();
}

TEST_F(D3dFaults, OverlayBuffersMakeAResetFailAndComeBack) {
  Start();
  ShowTextAndLandmark();
  m_log.Take();
  m_frame = FlatFrame(kPaneWidth, kPaneHeight, 90, 128, 128);
  EXPECT_EQ(m_displayer->InitDraw(kPaneWidth, kPaneHeight, 0), 0);
  EXPECT_EQ(m_log.Take(), kMadeAnew);
  ShowTextAndLandmark();
  ExpectDrawn();
}

TEST_F(D3dFaults, ATextThatCannotBeMadeComesWithALaterFrame) {
  m_d3dx->createFont = E_FAIL;
  Start();
  m_displayer->SetOSDText(0, "HHHHHHHH", 0, 0, 0, 0x0000FF);
  const auto redPixels = [&] {
    const ScreenShot shot(ClientOnScreen(m_window.Handle()));
    int count = 0;
    for (int i = 0; i < 30 * 10; ++i)
      count += shot.At(i % 30, i / 30).r > shot.At(i % 30, i / 30).b + 40;
    return count;
  };
  m_faults->createTexture = D3DERR_DEVICELOST;
  ExpectDrawn();
  EXPECT_EQ(redPixels(), 0);
  m_faults->createTexture = 0;
  ExpectDrawn();
  for (const ULONGLONG end = GetTickCount64() + 60'000; redPixels() == 0 && GetTickCount64() < end;)
    Sleep(10);
  EXPECT_GT(redPixels(), 0);
}

TEST_F(D3dFaults, WithoutANewDeviceEveryFrameTriesAgain) {
  Start();
  m_faults->cooperativeLevel = D3DERR_DEVICENOTRESET;
  m_faults->reset = m_faults->createDevice = D3DERR_NOTAVAILABLE;
  EXPECT_EQ(Draw(), 0x2FFF);
  EXPECT_EQ(m_log.Take().back(), "ResetDisplay: Initialize failed");
  EXPECT_FALSE(m_displayer->IsInitialized());
  EXPECT_EQ(Draw(), 0x2001);
  EXPECT_EQ(m_log.Take(), Lines{"Display: !IsInitialized()"});
  m_faults->cooperativeLevel = m_faults->createDevice = 0;
  ExpectDrawn();
}

TEST_F(D3dFaults, AfterAFailedSurfaceTheNextFrameMakesASecondDevice) {
  m_faults->createSurface = D3DERR_OUTOFVIDEOMEMORY;
  EXPECT_EQ(m_displayer->Initialize(kPaneWidth, kPaneHeight), 0x2FFF);
  EXPECT_EQ(m_log.Take(),
            Lines({"InitSurface", "InitSurface: m_pd3dDevice->CreateOffscreenPlainSurface failed",
                   "InitSurface failed"}));
  EXPECT_EQ(m_faults->devicesAlive, 1) << "kept";
  EXPECT_EQ(Draw(), 0x2001);
  EXPECT_EQ(m_log.Take().back(), "Display: !IsInitialized()");
  m_faults->createSurface = 0;
  ExpectDrawn();
  EXPECT_EQ(m_faults->devicesMade, 3);
  EXPECT_EQ(m_faults->mostDevicesAlive, 2);
  EXPECT_EQ(m_faults->devicesAlive, 1);
}

TEST_F(D3dFaults, ASurfaceThatIsMissingIsMadeBeforeTheNextFrame) {
  Start();
  m_faults->createSurface = D3DERR_OUTOFVIDEOMEMORY;
  EXPECT_FALSE(m_displayer->ResetDevice());
  m_faults->createSurface = 0;
  m_log.Take();
  EXPECT_EQ(Draw(), 0x2FFF);
  Lines expected = kReset;
  // The text names another operation; it is what the log has always said here.
  expected.emplace_back("NotifyReplay: NULL == m_pd3dSurface || NULL == m_pBackBuffer");
  EXPECT_EQ(m_log.Take(), expected);
  ExpectDrawn();
}

TEST_F(D3dFaults, ResultsTellWhatCouldNotBeMade) {
  EXPECT_EQ(m_displayer->Initialize(0, 5), 0x2002);
  EXPECT_EQ(m_displayer->Initialize(5, 0), 0x2002);
  EXPECT_EQ(m_displayer->Initialize(5, 0x80000000u), 0x2002);
  EXPECT_EQ(m_displayer->Initialize(0x7FFFFFFF, 0x7FFFFFFF), 0x2003);
  m_faults->noDirect3D = true;
  EXPECT_EQ(m_displayer->Initialize(kPaneWidth, kPaneHeight), 0x2004);
  m_faults->noDirect3D = false;
  m_faults->createDevice = D3DERR_NOTAVAILABLE;
  EXPECT_EQ(m_displayer->Initialize(kPaneWidth, kPaneHeight), 0x2004);
  EXPECT_EQ(m_displayer->InitDraw(kPaneWidth, kPaneHeight, 0), 1);
  D3DDisplayer notLoaded;
  EXPECT_EQ(notLoaded.Initialize(kPaneWidth, kPaneHeight), 0x2004);
}

TEST_F(D3dFaults, NoDeviceIsMadeOrResetForAWindowThatIsNotThere) {
  m_displayer->SetPlayWnd(nullptr);
  EXPECT_EQ(m_displayer->InitDraw(kPaneWidth, kPaneHeight, 0), 1);
  EXPECT_EQ(Draw(), 0x2001);
  EXPECT_EQ(m_faults->devicesMade, 0);
  {
    const TestWindow gone(kPaneWidth, kPaneHeight, 300, 60, WS_POPUP);
    m_displayer->SetPlayWnd(gone.Handle());
    Start();
  }
  m_displayer->InitDraw(kPaneWidth, kPaneHeight, 0);
  EXPECT_EQ(Draw(), 0x2001);
  EXPECT_EQ(m_faults->resets, 0);
  EXPECT_EQ(m_faults->devicesMade, 1);
  EXPECT_EQ(m_faults->devicesAlive, 0);
  m_displayer->SetPlayWnd(m_window.Handle());
  ExpectDrawn();
}

/// Whoever made the letters, and also in a window that a frame is not stretched to straight.
TEST_F(D3dFaults, ANewLayoutDropsOneFrame) {
  m_displayer->SetOSDText(0, "text", 5, 5, 0, 0xFFFFFF);
  m_window.ResizeClient(kPaneWidth - 10, kPaneHeight - 10);
  for (const HRESULT createFont : {D3D_OK, E_FAIL}) {
    m_d3dx->createFont = createFont;
    m_displayer->FreeDraw();
    Start();
    m_frame = TestFrame(kPaneWidth, kPaneHeight, m_frame.strideY + 16, m_frame.strideUV + 8);
    m_frame.Fill(90, 128, 128);
    EXPECT_EQ(Draw(), 0x2FFF);
    EXPECT_EQ(m_log.Take(), kReset);
    ExpectDrawn();
  }
}

TEST_F(D3dFaults, TheTrialDeviceHasAWindowAndLeavesNothing) {
  NIVRAL_InitializeEx(0);
  EXPECT_EQ(m_faults->devicesMade, 1);
  EXPECT_TRUE(m_faults->lastWindowExisted);
  EXPECT_FALSE(IsWindow(m_faults->lastWindow));
  EXPECT_EQ(m_faults->devicesAlive, 0);

  const auto opensDirect3D = [&] {
    void* pane = nullptr;
    EXPECT_EQ(NIVRAL_DWOpenDraw(&pane), 0u);
    const bool direct3D = dynamic_cast<D3DDisplayer*>(static_cast<BaseDisplayer*>(pane)) != nullptr;
    NIVRAL_DWCloseDraw(pane);
    return direct3D;
  };
  EXPECT_TRUE(opensDirect3D());
  m_faults->createDevice = D3DERR_NOTAVAILABLE;
  NIVRAL_InitializeEx(0);
  EXPECT_FALSE(opensDirect3D());
  m_faults->createDevice = 0;
  NIVRAL_InitializeEx(0);
  EXPECT_TRUE(opensDirect3D());
}

}  // namespace
