// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "display/base_displayer.h"
#include "picture/frame_view.h"

using namespace libnivral;

/// The smallest backend, and a start for a new one: it shows frames to nobody and remembers what it was given.
/// What it leaves out works as BaseDisplayer has it.
class NullDisplayer : public BaseDisplayer {
 public:
  ~NullDisplayer() override { NullDisplayer::FreeDraw(); }

  int32_t InitDraw(uint32_t width, uint32_t height, uint32_t param) override {
    BaseDisplayer::InitDraw(width, height, param);
    if (width < 1 || height < 1) return kBadSize;
    m_bInitialized = true;  // here a backend makes its device and surfaces
    return kOk;
  }

  int32_t FreeDraw() override {
    m_bInitialized = false;
    return kOk;
  }

  void DrawAlgInfo() override { ++algDrawn; }
  void DrawDsmAlgInfo() override { ++dsmDrawn; }

  // The last frame that was handed on, and what to answer to it.
  FrameView shown;
  std::vector<uint8_t> luma;
  uint32_t param1 = 0;
  int64_t param2 = 0;
  int32_t result = kOk;
  int algDrawn = 0;
  int dsmDrawn = 0;

 protected:
  int32_t DisplayFrame(const FrameView& frame, const PaneSettings&, uint32_t p1, int64_t p2) override {
    const int32_t code = Refusal(frame);
    if (code != kOk) {
      DropOverlays();
      return code;
    }
    shown = frame;
    luma.resize(size_t{m_dwWidth} * m_dwHeight);
    CopyPlane(luma.data(), static_cast<int32_t>(m_dwWidth), frame.y, frame.strideY, m_dwWidth, m_dwHeight);
    param1 = p1;
    param2 = p2;
    DrawOverlays();
    return result;
  }

 private:
  int32_t Refusal(const FrameView& frame) const {
    if (!m_bInitialized) return kNotInitialised;
    return HoldsFrame(frame, m_dwWidth, m_dwHeight) ? kOk : kFailed;
  }
};
