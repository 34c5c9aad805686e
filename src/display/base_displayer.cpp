// SPDX-License-Identifier: MIT
#include "display/base_displayer.h"

#include <cstring>

#include "display/burn_in.h"
#include "display/overlay_layout.h"
#include "display/records.h"

namespace libnivral {

int32_t BaseDisplayer::DrawYUV420Buffer(uint8_t* buffer, int32_t, uint32_t param1, int64_t param2) {
  const size_t luma = size_t{m_dwWidth} * m_dwHeight;
  const auto stride = static_cast<int32_t>(m_dwWidth);
  return DisplayFrame({buffer, stride, buffer + luma + luma / 2, stride / 2, buffer + luma, stride / 2},
                      m_settings.Copy(), param1, param2);
}

int32_t BaseDisplayer::DrawYUV420(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                                  int32_t strideV, uint32_t param1, int64_t param2) {
  const ColourValues colours = m_colourRecords[0].Get();
  const PaneSettings settings = m_settings.Copy();
  const FrameView client{pY, strideY, pU, strideU, pV, strideV};
  if (settings.mirrorMode == 0 && !IsAdjustActive(colours))
    return ShowFrame(client, settings, param1, param2);
  return DisplayAdjusted(client, colours, settings, param1, param2);
}

int32_t BaseDisplayer::DisplayAdjusted(const FrameView& client, const ColourValues& colours,
                                       const PaneSettings& settings, uint32_t param1, int64_t param2) {
  const WorkingFramePool::Loan working(m_workingFrames);
  return ShowFrame(
      working ? working->Prepare(client, m_dwWidth, m_dwHeight, settings.mirrorMode, colours) : client,
      settings, param1, param2);
}

int32_t BaseDisplayer::Display(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                               int32_t strideV, uint32_t param1, int64_t param2) {
  return DisplayFrame({pY, strideY, pU, strideU, pV, strideV}, m_settings.Copy(), param1, param2);
}

int32_t BaseDisplayer::ShowFrame(const FrameView& f, const PaneSettings& settings, uint32_t param1,
                                 int64_t param2) {
  const int32_t result = DisplayFrame(f, settings, param1, param2);
  if (const auto& callback = settings.frameCB; callback.function) {
    callback.function(f.y, static_cast<uint32_t>(f.strideY), f.u, f.v, static_cast<uint32_t>(f.strideV),
                      param1, param2, callback.user);
  }
  return result;
}

int32_t BaseDisplayer::SaveFrameToFile(const char* fileName, uint8_t* pY, int32_t strideY, uint8_t* pU,
                                       int32_t strideU, uint8_t* pV, int32_t strideV) {
  if (!fileName || !*fileName) return kNoFileName;
  const FrameView frame{pY, strideY, pU, strideU, pV, strideV};
  return m_converter.SaveFrame(fileName, frame, m_dwWidth, m_dwHeight) ? kOk : kFailed;
}

int32_t BaseDisplayer::SaveBufferToFile(const char* fileName, uint8_t* buffer, uint32_t) {
  if (!fileName || !*fileName) return kNoFileName;
  return m_converter.SaveBuffer(fileName, buffer, m_dwWidth, m_dwHeight) ? kOk : kFailed;
}

void BaseDisplayer::SetUserBuffer(void* buffer, uint32_t first, uint32_t second) {
  m_pUserBuffer = buffer;
  m_dwUserFirst = first;
  m_dwUserSecond = second;
}

void BaseDisplayer::SetOSDText(int32_t index, const char* text, uint32_t x, uint32_t y, uint32_t anchor,
                               uint32_t colour) {
  if (index < 0 || index >= kTextItemCount) return;
  CAutoLock guard(&m_textLock);
  TextItem& item = m_textItems[static_cast<size_t>(index)];
  // strncpy pads with zeros; the last byte is never written and stays the terminator.
  std::strncpy(item.text, text ? text : "", sizeof(item.text) - 1);
  item.anchor = anchor;
  item.x = x;
  item.y = y;
  item.colour = colour;
}

void BaseDisplayer::SetOSDFont(uint32_t first, uint32_t second, const char* face) {
  CAutoLock guard(&m_textLock);
  std::strncpy(m_szFontFace, face ? face : "", sizeof(m_szFontFace) - 1);
  m_dwFontFirst = first;
  m_dwFontSecond = second;
}

int32_t BaseDisplayer::InitDraw(uint32_t width, uint32_t height, uint32_t) {
  m_dwWidth = width;
  m_dwHeight = height;
  return kOk;
}

void BaseDisplayer::AdjustWinRect() {
  RECT client;
  if (!GetClientRect(m_hPlayWnd, &client)) return;
  m_settings.Set(&PaneSettings::client, {client.left, client.top, client.right, client.bottom});
}

void BaseDisplayer::SetPlayRect(const RECT* rect) {
  if (rect) m_settings.Set(&PaneSettings::play, {rect->left, rect->top, rect->right, rect->bottom});
}

void BaseDisplayer::SetZoom(uint32_t x, uint32_t y, uint32_t factor) {
  m_settings.Update([&](PaneSettings& s) {
    s.zoom[0] = x;
    s.zoom[1] = y;
    s.zoom[2] = factor;
  });
}

int32_t BaseDisplayer::SetPlayWnd(HWND hwnd) {
  m_hPlayWnd = hwnd;
  return kOk;
}

int32_t BaseDisplayer::SetPlayWndEx(HWND hwnd, int64_t, uint32_t) {
  return SetPlayWnd(hwnd);
}

void BaseDisplayer::SetMosaicFlag(uint32_t flag) {
  m_settings.Update([&](PaneSettings& s) { s.mosaic.flag = flag; });
}

void BaseDisplayer::SetMosaicLevel(uint32_t level) {
  m_settings.Update([&](PaneSettings& s) { s.mosaic.level = level; });
}

void BaseDisplayer::SetMosaics(const void* rect) {
  if (!rect) return;
  m_settings.Update([&](PaneSettings& s) {
    std::memcpy(&s.mosaic.rect, rect, sizeof(s.mosaic.rect));
    s.mosaic.fromFractions = false;
  });
}

void BaseDisplayer::SetMosaicAreaScale(float top, float left, float bottom, float right) {
  m_settings.Update([&](PaneSettings& s) {
    s.mosaic.top = top;
    s.mosaic.left = left;
    s.mosaic.bottom = bottom;
    s.mosaic.right = right;
    s.mosaic.fromFractions = true;
  });
  FitMosaic([](const MosaicSettings&) { return true; });
}

void BaseDisplayer::FitMosaic(bool (*wanted)(const MosaicSettings&)) {
  RECT client{};
  if (!IsWindow(m_hPlayWnd) || !GetClientRect(m_hPlayWnd, &client)) return;
  m_settings.Update([&](PaneSettings& s) {
    if (wanted(s.mosaic)) s.mosaic.FitTo(client.right, client.bottom);
  });
}

void BaseDisplayer::UpdateMosaics(uint32_t) {
}

int32_t BaseDisplayer::SetRClickPt(POINT point) {
  m_ptRClick = point;
  return kOk;
}

void BaseDisplayer::DrawOverlays() {
  const DueOverlays due = AdvanceOverlays();
  if (due.alg) DrawAlgInfo();
  if (due.dsm) DrawDsmAlgInfo();
}

BaseDisplayer::DueOverlays BaseDisplayer::AdvanceOverlays() {
  if (m_settings.Get(&PaneSettings::paused)) return {true, true};
  const uint64_t now = GetTickCount64();
  return {AdvanceOverlay(m_alg, m_algQueue.Take(), now), AdvanceOverlay(m_dsm, m_dsmQueue.Take(), now)};
}

FrameRecords BaseDisplayer::TakeRecords(bool paused) {
  FrameRecords due;
  const uint64_t now = GetTickCount64();
  if (paused ? m_alg.shown : AdvanceBurnIn(m_alg, m_algQueue.Take(), now)) due.alg = m_alg.record;
  if (paused ? m_dsm.shown : AdvanceOverlay(m_dsm, m_dsmQueue.Take(), now)) due.dsm = m_dsm.record;
  return due;
}

void BaseDisplayer::DropOverlays() {
  if (m_settings.Get(&PaneSettings::paused)) return;
  m_algQueue.Take();
  m_dsmQueue.Take();
}

void BaseDisplayer::DrawAlgInfoOnYUV(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                                     int32_t strideV) {
  if (AdvanceBurnIn(m_alg, m_algQueue.Take(), GetTickCount64()))
    RenderAlgInfoYUV(pY, strideY, pU, strideU, pV, strideV);
}

void BaseDisplayer::RenderAlgInfoYUV(uint8_t* pY, int32_t strideY, uint8_t* pU, int32_t strideU, uint8_t* pV,
                                     int32_t strideV) {
  if (!m_alg.shown) return;
  const auto map = DisplayMap::Unscaled(static_cast<int32_t>(m_dwWidth), static_cast<int32_t>(m_dwHeight));
  LayOutRecord(m_burnIn, &m_alg.record, map, BurnInStyle());
  BurnIn(m_yuvDraw, m_burnIn, {pY, strideY, pU, strideU, pV, strideV}, m_dwWidth, m_dwHeight);
}

void BaseDisplayer::SetDecCB(void* user, NivralDecodeCallback function) {
  m_settings.Set(&PaneSettings::decodeCB, {function, user});
}

void BaseDisplayer::SetFlashWndCB(void* user, NivralFlashWndCallback function) {
  m_settings.Set(&PaneSettings::flashWndCB, {function, user});
}

void BaseDisplayer::SetDisplayCB(void* user, NivralDisplayCallback function) {
  m_settings.Set(&PaneSettings::displayCB, {function, user});
}

void BaseDisplayer::SetDrawYUV420CB(void* user, NivralFrameCallback function) {
  m_settings.Set(&PaneSettings::frameCB, {function, user});
}

void BaseDisplayer::SetAlgInfo(int32_t count, const uint32_t* left, const uint32_t* top,
                               const uint32_t* right, const uint32_t* bottom, const uint16_t* classId,
                               const uint16_t* distance, const uint16_t* third, const uint16_t* fourth,
                               uint16_t value) {
  AlgRecord record;
  if (BuildAlgRecord(record, count, {left, top, right, bottom}, {classId, distance, third, fourth}, value))
    m_algQueue.Append(record);
}

void BaseDisplayer::SetDsmAlgInfo(int32_t pointCount, const uint32_t* x, const uint32_t* y, int32_t boxCount,
                                  const uint32_t* left, const uint32_t* top, const uint32_t* right,
                                  const uint32_t* bottom, uint16_t value) {
  DsmRecord record;
  if (BuildDsmRecord(record, pointCount, x, y, boxCount, {left, top, right, bottom}, value))
    m_dsmQueue.Append(record);
}

}  // namespace libnivral
