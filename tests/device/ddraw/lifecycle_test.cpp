// SPDX-License-Identifier: MIT
// The DirectDraw backend beyond the picture: results, threads, lost surfaces, soaks.
#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

#include "ddraw_pane.h"
#include "display/display_codes.h"
#include "support/process_counts.h"
#include "support/vtable_patch.h"

namespace {

using Clock = std::chrono::steady_clock;

TestFrame Red() {
  return FlatFrame(64, 48, 81, 90, 240);
}

TEST(DDrawResults, SayWhatDisplayCanKnow) {
  TestFrame grey = GreyFrame();
  {
    CDirectDraw untouched;
    EXPECT_EQ(untouched.FreeDraw(), kOk);
  }
  DDrawPane pane(160, 120);
  EXPECT_EQ(pane.Draw(grey), kNotInitialised) << "before InitDraw";
  EXPECT_EQ(pane.displayer->InitDraw(0, 48, 0), kBadSize);
  EXPECT_EQ(pane.displayer->InitDraw(64, 0, 0), kBadSize);
  EXPECT_EQ(pane.displayer->InitDraw(0xFFFFFFFF, 0xFFFFFFFF, 0), kBadSize);
  EXPECT_FALSE(pane.displayer->IsInitialized());
  EXPECT_EQ(pane.Draw(grey), kNotInitialised);

  EXPECT_EQ(pane.displayer->InitDraw(64, 48, 0), kOk);
  EXPECT_TRUE(pane.displayer->IsInitialized());
  EXPECT_EQ(pane.Draw(grey), kOk);
  TestFrame narrow = GreyFrame(32, 48);
  EXPECT_EQ(pane.Draw(narrow), kFailed) << "strides shorter than a row";
  EXPECT_EQ(pane.displayer->DrawYUV420(nullptr, 64, nullptr, 32, nullptr, 32, 0, 0), kFailed);

  pane.displayer->FreeDraw();
  EXPECT_FALSE(pane.displayer->IsInitialized());
  EXPECT_EQ(pane.Draw(grey), kNotInitialised) << "after FreeDraw";
  EXPECT_EQ(pane.displayer->InitDraw(64, 48, 0), kOk);
  pane.window.Destroy();
  EXPECT_EQ(pane.Draw(grey), kNotInitialised) << "window gone";
}

TEST(DDrawResults, TheWindowMayComeAfterInitDraw) {
  CDirectDraw displayer;
  EXPECT_EQ(displayer.InitDraw(64, 48, 0), kOk);
  TestFrame red = Red();
  const FrameView f = red.View();
  const auto draw = [&] {
    return displayer.DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
  };
  EXPECT_EQ(draw(), kNotInitialised);
  const TestWindow window(160, 120);
  displayer.SetPlayWnd(window.Handle());
  EXPECT_EQ(draw(), kOk);
  EXPECT_PIXEL(window.Handle(), 80, 60, {ColourOf(displayer.Road(), 81, 90, 240)});
}

/// Lets the next calls of Blt and RestoreAllSurfaces fail, as after a change of the display mode.
class LossInjection {
 public:
  static int blitsToFail;
  static HRESULT restoreResult;
  static int restores;
  static bool offscreenFails;

  LossInjection() : m_ddraw(MakeDDraw()), m_surface(MakeSurface(m_ddraw.get())) {
    blitsToFail = 0;
    restoreResult = DD_OK;
    restores = 0;
    offscreenFails = false;
    m_blt = std::make_unique<VtablePatch>(m_surface.get(), 5, &FailingBlt);
    m_restore = std::make_unique<VtablePatch>(m_ddraw.get(), 25, &Restore);
    m_create = std::make_unique<VtablePatch>(m_ddraw.get(), 6, &CreateSurface);
    original = m_blt->Original<Blt>();
    originalCreate = m_create->Original<Create>();
  }

 private:
  using Blt = HRESULT STDMETHODCALLTYPE(IDirectDrawSurface7*, RECT*, IDirectDrawSurface7*, RECT*, DWORD,
                                        DDBLTFX*);

  static ComPtr<IDirectDraw7> MakeDDraw() {
    void* object = nullptr;
    EXPECT_EQ(DirectDrawCreateEx(nullptr, &object, IID_IDirectDraw7, nullptr), DD_OK);
    return ComPtr<IDirectDraw7>(static_cast<IDirectDraw7*>(object));
  }
  static DDrawSurface MakeSurface(IDirectDraw7* ddraw) {
    ddraw->SetCooperativeLevel(nullptr, DDSCL_NORMAL);
    DDSURFACEDESC2 description{};
    description.dwSize = sizeof(description);
    description.dwFlags = DDSD_CAPS;
    description.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
    DDrawSurface surface;
    EXPECT_EQ(ddraw->CreateSurface(&description, surface.put(), nullptr), DD_OK);
    return surface;
  }
  static HRESULT STDMETHODCALLTYPE FailingBlt(IDirectDrawSurface7* self, RECT* target,
                                              IDirectDrawSurface7* from, RECT* source, DWORD flags,
                                              DDBLTFX* effects) {
    if (blitsToFail > 0) {
      --blitsToFail;
      return DDERR_SURFACELOST;
    }
    return original(self, target, from, source, flags, effects);
  }
  static HRESULT STDMETHODCALLTYPE CreateSurface(IDirectDraw7* self, DDSURFACEDESC2* description,
                                                 IDirectDrawSurface7** surface, IUnknown* outer) {
    if (offscreenFails && (description->dwFlags & DDSD_WIDTH)) return DDERR_OUTOFVIDEOMEMORY;
    return originalCreate(self, description, surface, outer);
  }
  static HRESULT STDMETHODCALLTYPE Restore(IDirectDraw7*) {
    ++restores;
    return restoreResult;
  }

  using Create = decltype(CreateSurface);
  static Blt* original;
  static Create* originalCreate;
  ComPtr<IDirectDraw7> m_ddraw;
  DDrawSurface m_surface;
  std::unique_ptr<VtablePatch> m_blt;
  std::unique_ptr<VtablePatch> m_restore;
  std::unique_ptr<VtablePatch> m_create;
};
int LossInjection::blitsToFail;
HRESULT LossInjection::restoreResult;
int LossInjection::restores;
bool LossInjection::offscreenFails;
LossInjection::Blt* LossInjection::original;
LossInjection::Create* LossInjection::originalCreate;

TEST(DDrawLoss, TheFrameThatMetLostSurfacesIsStillShown) {
  DDrawPane pane(160, 120);
  ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), kOk);
  TestFrame red = Red();
  TestFrame grey = GreyFrame();
  const Rgb background = ColourOf(pane.displayer->Road(), 126, 128, 128);
  const Rgb colour = ColourOf(pane.displayer->Road(), 81, 90, 240);
  LossInjection loss;
  // Lost surfaces come back; after a change of the mode they do not, and everything is made anew.
  for (const HRESULT result : {DD_OK, DDERR_WRONGMODE}) {
    ASSERT_TRUE(Near(pane.DrawUntil(grey, 80, 60, background), background, 2));
    LossInjection::restoreResult = result;
    LossInjection::restores = 0;
    LossInjection::blitsToFail = 1;
    EXPECT_EQ(pane.Draw(red), kOk);
    // Making everything anew takes seconds on a busy machine with a software rasteriser.
    EXPECT_TRUE(Near(WaitForPixel(pane.window.Handle(), 80, 60, colour, 2), colour, 2));
    EXPECT_EQ(LossInjection::restores, 1);
  }

  ASSERT_TRUE(Near(pane.DrawUntil(grey, 80, 60, background), background, 2));
  LossInjection::offscreenFails = true;
  LossInjection::restores = 0;
  LossInjection::blitsToFail = 1;
  for (int i = 0; i < 1000 && LossInjection::restores == 0; ++i) {
    pane.Draw(red);
    Sleep(10);
  }
  Sleep(200);
  pane.Draw(red);
  Sleep(200);
  LossInjection::offscreenFails = false;
  EXPECT_TRUE(Near(pane.DrawUntil(red, 80, 60, colour), colour, 2))
      << "a rebuild that failed half-way is repeated";

  LossInjection::blitsToFail = 1000;
  for (int i = 0; i < 10; ++i) {
    pane.Draw(red);
    Sleep(5);
  }
  EXPECT_EQ(pane.displayer->FreeDraw(), kOk) << "while surfaces stay lost";
}

/// A client whose callback holds the worker until it is let go.
struct HeldWorker {
  HANDLE entered = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE leave = CreateEventW(nullptr, FALSE, FALSE, nullptr);

  ~HeldWorker() {
    CloseHandle(entered);
    CloseHandle(leave);
  }
  static void NIVRAL_CALL OnDisplay(int32_t, void*, uint32_t, uint32_t, int64_t, int32_t, int32_t, uint32_t,
                                    void* user) {
    auto* self = static_cast<HeldWorker*>(user);
    SetEvent(self->entered);
    WaitForSingleObject(self->leave, 20000);
  }
};

TEST(DDrawThreads, SettersAndFramesGoOnWhileTheWorkerDraws) {
  DDrawPane pane(160, 120);
  ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), kOk);
  HeldWorker held;
  pane.displayer->SetDisplayCB(&held, &HeldWorker::OnDisplay);
  TestFrame grey = GreyFrame();
  pane.Draw(grey);
  ASSERT_EQ(WaitForSingleObject(held.entered, 10000), WAIT_OBJECT_0);

  const auto start = Clock::now();
  const RECT play{10, 10, 100, 100};
  CDirectDraw& d = *pane.displayer;
  d.SetPlayRect(&play);
  d.AdjustWinRect();
  d.SetPlayWnd(pane.window.Handle());
  d.SetOSDText(0, "text", 1, 1, 0, 0);
  d.SetOSDFont(0, 14, "Arial");
  d.SetMosaicAreaScale(0, 0, 1, 1);
  d.SetMosaicFlag(0);
  for (int i = 0; i < 10; ++i)
    EXPECT_EQ(pane.Draw(grey), kOk);
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(10)) << "the worker is held for 20";
  SetEvent(held.leave);
  ASSERT_EQ(WaitForSingleObject(held.entered, 10000), WAIT_OBJECT_0) << "the newest of the ten frames";
  d.SetDisplayCB(nullptr, nullptr);
  SetEvent(held.leave);
}

/// A client that asks its window something from the callback, as drawing code does.
void NIVRAL_CALL AskWindow(int32_t, void*, uint32_t, uint32_t, int64_t, int32_t, int32_t, uint32_t,
                           void* user) {
  SendMessageW(static_cast<HWND>(user), WM_GETTEXTLENGTH, 0, 0);
}

TEST(DDrawThreads, FreeDrawOnTheWindowsThreadAnswersTheCallback) {
  DDrawPane pane(160, 120);
  pane.displayer->SetDisplayCB(pane.window.Handle(), &AskWindow);
  TestFrame grey = GreyFrame();
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), kOk);
    pane.Draw(grey);
    Sleep(static_cast<DWORD>(i * 3));
    EXPECT_EQ(pane.displayer->FreeDraw(), kOk);
  }
}

}  // namespace
