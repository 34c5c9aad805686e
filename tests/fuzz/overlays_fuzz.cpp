// SPDX-License-Identifier: MIT
// Any mosaic, zoom and record on any display: everything is laid out within the picture, on every backend.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "backends/d3d9/d3d_mosaic.h"
#include "display/burn_in.h"
#include "display/mosaic_layout.h"
#include "display/overlay_layout.h"
#include "display/overlay_list.h"
#include "support/frames.h"

using namespace libnivral;

namespace {

struct Input {
  uint16_t displayWidth;
  uint16_t displayHeight;
  uint16_t videoWidth;
  uint16_t videoHeight;
  PixelRect area;
  uint32_t level;
  uint32_t mirror;
  MilleRect displayed;
  MillePoint point;
  int32_t zoomFactors[3];
  AlgRecord boxes;
  DsmRecord faces;
};

void Require(bool holds) {
  if (!holds) std::abort();
}

bool Within(const PixelRect& rect, int32_t width, int32_t height) {
  return rect.Empty() || (rect.left >= 0 && rect.top >= 0 && rect.right <= width && rect.bottom <= height);
}

void CheckMosaicBlocks(const Input& in, int32_t width, int32_t height) {
  const MosaicGrid grid = LayoutMosaic(in.area, MosaicBlockSize(in.level), width, height);
  if (grid.columns <= 0 || grid.rows <= 0) return;
  Require(Within(grid.source, width, height));
  for (const int32_t column : {0, grid.columns - 1})
    Require(grid.SourceX(column) >= 0 && grid.source.left + grid.SourceX(column) < width);
  for (const int32_t row : {0, grid.rows - 1})
    Require(grid.SourceY(row) >= 0 && grid.source.top + grid.SourceY(row) < height);
}

void CheckMosaicMapping(const Input& in, int32_t width, int32_t height) {
  ZoomState zoom;
  for (const int32_t factor : in.zoomFactors)
    zoom = ZoomTo(zoom, in.mirror, in.point.x, in.point.y, factor);
  Require(Within(MosaicOnSurface(in.displayed, zoom, in.mirror, width, height), width, height));
  const auto under = FrameRectUnder(in.displayed, zoom, in.mirror);
  if (under) Require(Within({under->left, under->top, under->right, under->bottom}, 1000, 1000));
  const auto point = FramePointUnder(in.point, zoom, in.mirror);
  const MilleRect kept[] = {in.displayed, under.value_or(MilleRect{})};
  if (point) Require(PickMosaic(kept, *point) < 2);
}

template <size_t Size>
void RequireText(const char (&text)[Size]) {
  Require(std::memchr(text, 0, Size) != nullptr);
}

void CheckRecord(RecordView record, const DisplayMap& map, const OverlayStyle& style) {
  OverlayList list;
  LayOutRecord(list, record, map, style);
  for (const OverlayLabel& label : list.labels)
    RequireText(label.text);
  RectList pixels;
  for (const OverlayShape& shape : list.shapes)
    AppendPixels(pixels, shape, map.displayWidth, map.displayHeight);
  for (const PixelRect& rect : pixels)
    Require(!rect.Empty() && Within(rect, map.displayWidth, map.displayHeight));
  for (const OverlayShape& shape : list.shapes) {
    pixels.clear();
    AppendPixels(pixels, shape, map.displayWidth, map.displayHeight);
    for (const OverlayLabel& label : list.labels)
      for (const PixelRect& rect : pixels)
        Require(Intersect(rect, label.area).Empty() || MayTouch(shape, label.area));
  }
}

/// The address sanitiser watches the planes' ends.
void BurnIntoTinyPlanes(RecordView record, int32_t width, int32_t height) {
  TestFrame planes(width, height);
  OverlayList list;
  LayOutRecord(list, record, {width, height, width, height}, BurnInStyle());
  CYuvDraw draw;
  BurnIn(draw, list, planes.View(), static_cast<uint32_t>(width), static_cast<uint32_t>(height));
}

void CheckRecords(const Input& in, const DisplayMap& map) {
  const DisplayMap frame{map.videoWidth, map.videoHeight, map.videoWidth, map.videoHeight};
  for (const RecordView record : {RecordView(&in.boxes), RecordView(&in.faces)}) {
    CheckRecord(record, map, SdlStyle(true));
    CheckRecord(record, frame, Direct3DStyle(map.videoHeight));
    CheckRecord(record, frame, BurnInStyle());
    BurnIntoTinyPlanes(record, map.displayWidth % 64, map.displayHeight % 64);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in{};
  std::memcpy(&in, data, std::min(size, sizeof(in)));
  in.boxes.count = std::min<uint16_t>(in.boxes.count, kMaxBoxes);
  in.boxes.lineWidth %= 64;
  in.faces.pointCount = std::min<uint16_t>(in.faces.pointCount, kMaxLandmarks);
  in.faces.boxCount = std::clamp(in.faces.boxCount, 0, kMaxBoxes);
  // A disc of every row of the highest display would only take time.
  const DisplayMap map{in.videoWidth, in.videoHeight, in.displayWidth % 4096, in.displayHeight % 4096};
  CheckMosaicBlocks(in, map.displayWidth, map.displayHeight);
  CheckMosaicMapping(in, map.displayWidth, map.displayHeight);
  if (map.videoWidth > 0 && map.videoHeight > 0) CheckRecords(in, map);
  return 0;
}
