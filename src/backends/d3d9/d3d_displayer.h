// SPDX-License-Identifier: MIT
#pragma once

#include <d3d9.h>
#include <d3dx9.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "backends/d3d9/d3d_mosaic.h"
#include "backends/d3d9/d3d_shapes.h"
#include "backends/d3d9/d3d_surface.h"
#include "backends/d3d9/d3d_text.h"
#include "backends/d3d9/d3dx_library.h"
#include "display/base_displayer.h"
#include "display/overlay_list.h"
#include "util/com_ptr.h"

namespace libnivral {

constexpr D3DFORMAT kYv12 = static_cast<D3DFORMAT>(MAKEFOURCC('Y', 'V', '1', '2'));

/// Shows frames through a windowed Direct3D 9 device on the play window: one YV12 surface of the frame's
/// size, stretched to a back buffer of the size at creation and presented to the whole client area.
///
/// No lock of its own and no multithreaded device: calls on one displayer must not overlap. Frames that come
/// while the device is lost, or with another layout than the last, are refused with kFailed; the next ones
/// are drawn again once the device could be reset or made anew.
class D3DDisplayer : public BaseDisplayer {
 public:
  D3DDisplayer();
  ~D3DDisplayer() override;

  /// 0 or 1; a new size on a displayer in use always gives 0. `param` is not used.
  int32_t InitDraw(uint32_t width, uint32_t height, uint32_t param) override;
  int32_t FreeDraw() override;

  /// Zooms to a factor of 1 to 8 around a point of the displayed picture in thousandths.
  void SetZoom(uint32_t x, uint32_t y, uint32_t factor) override;

  /// Non-zero: the current mosaic joins the committed ones. Zero: the picked mosaic is deleted.
  void UpdateMosaics(uint32_t commit) override;

  /// Picks the mosaic under a point of the displayed picture in thousandths. 0 when there was one, else 1.
  int32_t SetRClickPt(POINT point) override;

  void DrawAlgInfo() override;
  void DrawDsmAlgInfo() override;

  /// Makes the device and its surfaces for frames of this size. 0 or a displayer code.
  virtual int32_t Initialize(uint32_t width, uint32_t height);
  /// Releases everything but what the colour shader's set-up made. Always 0.
  virtual int32_t Uninitialize();
  /// Kept free for clients of the class that count operations; both do nothing.
  virtual void Reserved(intptr_t) {}
  virtual void ReservedFlag(uint8_t) {}
  /// Takes a rectangle of the displayed picture, in thousandths, as the current mosaic, which is drawn until
  /// UpdateMosaics commits it. 0, or 1 for an empty rectangle, which ends the current mosaic.
  virtual int32_t SetMosaicRect(const MilleRect* displayed);

  /// Loads the Direct3D 9 run-time, and D3DX where there is one. 1 when Direct3D was found, else 0.
  int32_t LoadDirect3D();

  /// The colour path on the device's shaders, which nothing calls with effect: InitDraw calls the set-up with
  /// the size that is already set. 0 when done or skipped, 1 when a step failed.
  int32_t SetupHslShader(uint32_t width, uint32_t height);
  /// Draws the frame's quad through the shader; saturation in percent, hue in degrees. Always 0.
  int32_t RenderHsl(int32_t bright, int32_t contrast, int32_t saturation, int32_t hue);

 protected:
  bool InitSurface();
  bool ResetDevice();
  void ResetDisplay();

 private:
  int32_t DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t param1,
                       int64_t param2) override;
  int32_t DrawFrame(const FrameView& frame, const PaneSettings& settings);
  int32_t CreateDevice();
  DWORD VertexProcessing() const;
  void FillPresentParameters();
  void ReleaseDeviceObjects();

  bool IsDeviceReady();
  bool Upload(const FrameView& frame, const PaneSettings& settings);
  void CopyFrame(const Yv12Surface& surface, const FrameView& frame, const MosaicSettings& mosaic) const;
  void DrawMosaics(const Yv12Surface& surface, const FrameView& frame, const PaneSettings& settings) const;
  void DrawScene();
  void ChooseStretch();
  void StretchFrame();
  bool IsCornerReached(uint8_t luma, bool bright);

  static MilleRect CurrentMosaic(const MosaicSettings& mosaic);
  void SetCurrentMosaic(const MilleRect& rect);
  ZoomState Zoom() const { return {m_nZoomX, m_nZoomY, m_nZoom}; }
  struct FrameSize {
    int32_t width;
    int32_t height;
  };
  DisplayMap Map() const { return DisplayMap::Unscaled(Frame().width, Frame().height); }
  FrameSize Frame() const { return {static_cast<int32_t>(m_dwWidth), static_cast<int32_t>(m_dwHeight)}; }

  void StartOnce(TextPainter& painter, ComPtr<ID3DXFont>& font, int32_t height, const char* face);
  void DrawOSDText();
  void DrawLabel(TextBatch& batch, const OverlayLabel& label);

  bool EnsureLine();
  bool EnsureVertexBuffer();
  bool CanDrawOverlays();
  bool OutlineByVertices();
  bool IsSideVisible(const WideRect& corners) const;
  void PaintRecord(RecordView record) override;
  void DrawShape(ShapeBatch& batch, const OverlayShape& shape);
  void DrawOutline(ShapeBatch& batch, const OverlayShape& shape);
  void DrawThickBrackets(ShapeBatch& batch, const OverlayShape& shape);
  void DrawDisc(ShapeBatch& batch, const OverlayShape& shape);

  bool CreateHslDevice();
  bool CreateHslObjects();
  bool CreateHslShader();
  void SetHslState();
  void BindHsl();
  void SetHslConstants(int32_t bright, int32_t contrast, int32_t saturation, int32_t hue);
  void DrawHslQuad();

  ComPtr<IDirect3D9> m_pD3D9;
  ComPtr<IDirect3DDevice9> m_pd3dDevice;
  ComPtr<IDirect3DSurface9> m_pd3dSurface;
  ComPtr<IDirect3DSurface9> m_pBackBuffer;
  ComPtr<ID3DXFont> m_pOSDFont;
  ComPtr<ID3DXFont> m_pLabelFont;

  D3DXMATRIX m_matHuePre;
  D3DXMATRIX m_matHuePost;
  D3DXMATRIX m_matColour;
  D3DXHANDLE m_hTex0S = nullptr;
  ComPtr<IDirect3DVertexBuffer9> m_pQuadBuffer;
  ComPtr<IDirect3DVertexDeclaration9> m_pQuadDecl;
  ComPtr<ID3DXConstantTable> m_pConstantTable;
  ComPtr<IDirect3DPixelShader9> m_pHslShader;

  /// As large as three bytes a pixel; nothing here reads or writes it.
  std::unique_ptr<uint8_t[]> m_pScratch;
  std::vector<MilleRect> m_mosaicRects;
  bool m_bMosaicPending = false;
  MillePoint m_ptMosaicPick;
  int32_t m_nSelectedMosaic = -1;
  int32_t m_nZoomX = 0;
  int32_t m_nZoomY = 0;
  int32_t m_nZoom = 1;
  D3DPRESENT_PARAMETERS m_d3dpp{};
  /// Stays loaded: objects of the run-time may outlive this displayer.
  HMODULE m_hD3D9Module = nullptr;
  decltype(&Direct3DCreate9) m_pfnDirect3DCreate9 = nullptr;
  ComPtr<ID3DXLine> m_pLine;
  std::unique_ptr<D3DXVECTOR2[]> m_pLineBuffer;
  ComPtr<IDirect3DVertexBuffer9> m_pVertexBuffer;
  TextPainter m_osdPainter;
  TextPainter m_labelPainter;
  std::unique_ptr<Outlines> m_outlines;
  // Kept from frame to frame for their memory.
  OverlayList m_overlays;
  RectList m_discParts;
  /// Whether the device stretches a frame onto the whole back buffer or cuts it at the window's size.
  enum class Stretch { Unknown, Whole, Cut } m_stretch = Stretch::Unknown;
  /// Of the frame's size, while the device would cut.
  ComPtr<IDirect3DSurface9> m_pFrameTarget;
  int32_t m_nLastStrideY = 0;
  int32_t m_nLastStrideU = 0;
  int32_t m_nLastStrideV = 0;
  const D3dxFunctions* m_pD3dx = nullptr;
};

}  // namespace libnivral
