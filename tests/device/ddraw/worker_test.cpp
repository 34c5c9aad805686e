// SPDX-License-Identifier: MIT
// The DirectDraw backend's worker: lost surfaces, held and asking callbacks, skipped frames.
#include "backends/ddraw/ddraw_displayer.h"
#include "support/pane.h"
#include "support/vtable_patch.h"

namespace {

constexpr Rgb kGrey{128, 128, 128}, kRed{254, 0, 0};

using Blt = Method<5, IDirectDrawSurface7, RECT*, IDirectDrawSurface7*, RECT*, DWORD, DDBLTFX*>;
using Restore = Method<25, IDirectDraw7>;
using CreateSurface = Method<6, IDirectDraw7, DDSURFACEDESC2*, IDirectDrawSurface7**, IUnknown*>;

/// Calls of DirectDraw that can be made to fail, as after a change of the display mode.
struct SurfaceLoss {
  ComPtr<IDirectDraw7> ddraw = [] {
    void* object = nullptr;
    EXPECT_EQ(DirectDrawCreateEx(nullptr, &object, IID_IDirectDraw7, nullptr), DD_OK);
    return ComPtr<IDirectDraw7>(static_cast<IDirectDraw7*>(object));
  }();
  DDrawSurface surface = [this] {
    ddraw->SetCooperativeLevel(nullptr, DDSCL_NORMAL);
    DDSURFACEDESC2 description{};
    description.dwSize = sizeof(description);
    description.dwFlags = DDSD_CAPS;
    description.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
    DDrawSurface primary;
    EXPECT_EQ(ddraw->CreateSurface(&description, primary.put(), nullptr), DD_OK);
    return primary;
  }();
  Blt blt{surface.get()};
  Restore restore{ddraw.get()};
  CreateSurface createSurface{ddraw.get()};
};

/// A pane on the road whose colours are known.
class DDrawWorker : public testing::Test {
 protected:
  DDrawWorker() {
    displayer.SetUploadFormat(UploadFormat::Rgb);
    pane.Start(64, 48);
  }
  SurfaceLoss loss;
  Pane pane{2, 160, 120};
  CDirectDraw& displayer = pane.As<CDirectDraw>();
  TestFrame red = FlatFrame(64, 48, 81, 90, 240), grey = FlatFrame(64, 48, 126, 128, 128);
};

TEST_F(DDrawWorker, ShowsTheFrameThatMetLostSurfaces) {
  for (const HRESULT restored : {DD_OK, DDERR_WRONGMODE}) {  // made anew when they cannot be restored
    pane.Draw(grey);
    EXPECT_PIXEL(pane.Window(), 80, 60, {kGrey});
    Restore::calls = 0;
    Restore::Fail(restored, 1);
    Blt::Fail(DDERR_SURFACELOST, 1);
    EXPECT_EQ(pane.Draw(red), 0u);
    EXPECT_PIXEL(pane.Window(), 80, 60, {kRed});
    EXPECT_EQ(Restore::calls, 1);
  }

  pane.Draw(grey);
  EXPECT_PIXEL(pane.Window(), 80, 60, {kGrey});
  CreateSurface::calls = 0;
  CreateSurface::then = [](HRESULT result, auto*, const DDSURFACEDESC2* wanted, auto** surface, auto*) {
    if (FAILED(result) || !(wanted->dwFlags & DDSD_WIDTH)) return result;
    std::exchange(*surface, nullptr)->Release();
    return DDERR_OUTOFVIDEOMEMORY;
  };
  Restore::Fail(DDERR_WRONGMODE);
  Blt::Fail(DDERR_SURFACELOST, 1);
  EXPECT_TRUE(WaitUntil([&] {
    pane.Draw(red);
    return CreateSurface::calls > 4;
  }));
  NIVRAL_DWFreeDraw(pane.handle);
  CreateSurface::then = nullptr;
  pane.Start(64, 48);

  Blt::Fail(DDERR_SURFACELOST);
  for (int i = 0; i < 10; ++i, Pump(5))
    pane.Draw(red);
  EXPECT_EQ(displayer.FreeDraw(), 0) << "while surfaces stay lost";
}

/// A client whose callback holds the worker until it is let go.
struct HeldWorker {
  explicit HeldWorker(CDirectDraw& displayer) { displayer.SetDisplayCB(this, &OnDisplay); }
  static void NIVRAL_CALL OnDisplay(int32_t, void*, uint32_t, uint32_t, int64_t, int32_t, int32_t, uint32_t,
                                    void* user) {
    auto* self = static_cast<HeldWorker*>(user);
    SetEvent(self->entered.get());
    WaitForSingleObject(self->leave.get(), PatienceMs());
  }
  bool Entered(DWORD ms = PatienceMs()) { return WaitForSingleObject(entered.get(), ms) == WAIT_OBJECT_0; }
  UniqueEvent entered{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
  UniqueEvent leave{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
};

TEST_F(DDrawWorker, LetsSettersAndFramesGoOnAndShowsTheNewestWithItsBoxes) {
  HeldWorker held(displayer);
  pane.Draw(grey);
  ASSERT_TRUE(held.Entered());
  const RECT play{0, 0, 160, 120};
  displayer.SetPlayRect(&play);
  displayer.AdjustWinRect();
  displayer.SetPlayWnd(pane.Window());
  displayer.SetOSDText(0, "text", 1, 1, 0, 0);
  displayer.SetMosaicAreaScale(0, 0, 1, 1);
  for (int i = 0; i < 6; ++i) {
    pane.SetBox(static_cast<float>(8 * i), 10, static_cast<float>(8 * i + 10), 40, 0, 0, 0);
    EXPECT_EQ(pane.Draw(grey), 0u);
  }
  EXPECT_FALSE(held.Entered(0)) << "still held";
  SetEvent(held.leave.get());
  ASSERT_TRUE(held.Entered()) << "the newest of the six frames";
  displayer.SetDisplayCB(nullptr, nullptr);
  SetEvent(held.leave.get());
  EXPECT_TRUE(WaitUntil([&] {
    const ScreenShot shot(ClientOnScreen(pane.Window()));
    return !Near(shot.At(102, 60), kGrey, 20) && Near(shot.At(82, 60), kGrey, 2);
  }));
}

/// A client that asks its window something from the callback, as drawing code does, and throws without one.
void NIVRAL_CALL AskWindow(int32_t, void*, uint32_t, uint32_t, int64_t, int32_t, int32_t, uint32_t,
                           void* user) {
  if (!user) throw E_FAIL;
  SendMessageW(static_cast<HWND>(user), WM_GETTEXTLENGTH, 0, 0);
}

TEST_F(DDrawWorker, IsAnsweredByFreeDrawOnTheWindowsThread) {
  displayer.SetDisplayCB(pane.Window(), &AskWindow);
  for (DWORD i = 0; i < 3; ++i) {
    ASSERT_EQ(displayer.InitDraw(64, 48, 0), 0);
    pane.Draw(grey);
    Sleep(i * 3);
    EXPECT_EQ(displayer.FreeDraw(), 0);
  }
  displayer.SetDisplayCB(nullptr, &AskWindow);
  displayer.InitDraw(64, 48, 0);
  EXPECT_TRUE(WaitUntil([&] { return pane.Draw(grey) == 0x2001; })) << "the exception has ended the worker";
  displayer.SetDisplayCB(nullptr, nullptr);
  pane.Start(64, 48);
}

TEST_F(DDrawWorker, GetsItsWindowAfterInitDraw) {
  displayer.SetPlayWnd(nullptr);
  EXPECT_EQ(displayer.InitDraw(64, 48, 0), 0);
  EXPECT_EQ(pane.Draw(red), 0x2001u);
  displayer.SetPlayWnd(pane.Window());
  EXPECT_EQ(pane.Draw(red), 0u);
  EXPECT_PIXEL(pane.Window(), 80, 60, {kRed});
}

}  // namespace
