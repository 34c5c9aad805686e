// SPDX-License-Identifier: MIT
#include "player/embed/overlays.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <utility>

namespace {

constexpr COLORREF kYellow = 0x0000FFFF;
constexpr COLORREF kWhite = 0x00FFFFFF;
constexpr COLORREF kBlack = 0x00000000;
constexpr uint16_t kLineWidth = 2;
constexpr uint16_t kLandmarkRadius = 2;

/// A shadow keeps bright letters readable on a bright picture.
void SetLine(nivral::Display& display, int32_t line, const std::string& text, uint32_t x, uint32_t y,
             COLORREF colour, nivral::Anchor anchor) {
  const uint32_t shadowY = anchor == nivral::Anchor::kTop ? y + 1 : y - 1;
  display.SetText(2 * line, text.c_str(), x + 1, shadowY, kBlack, anchor);
  display.SetText(2 * line + 1, text.c_str(), x, y, colour, anchor);
}

nivral::Box BoxOf(const RecordBox& box) {
  return {box.left, box.top, box.right, box.bottom};
}

/// There is no record without a box, so what takes the last ones off the picture is a call of its own.
void SendObjects(nivral::Display& display, const Record& record) {
  if (record.objects.empty()) {
    display.ClearAssistance();
    return;
  }
  std::array<nivral::LabelledBox, 12> boxes;
  for (size_t i = 0; i < record.objects.size(); ++i) {
    const RecordObject& object = record.objects[i];
    boxes[i] = {BoxOf(object.box), static_cast<nivral::ObjectClass>(object.classId), object.distance};
  }
  display.SetAssistance(boxes.data(), static_cast<int32_t>(record.objects.size()), kLineWidth);
}

}  // namespace

Overlays::Overlays(Content content, const OverlaySwitches& switches)
    : m_content(std::move(content)), m_switches(switches) {
}

void Overlays::SetTexts(Pane& pane, const Frame& frame) {
  const bool on = m_switches.texts;
  SetLine(pane.Display(), 0, on ? m_content.name : "", 16, 12, kYellow, nivral::Anchor::kTop);
  SetLine(pane.Display(), 1, on ? TimeText(frame.time) : "", 16, 60, kWhite, nivral::Anchor::kBottom);
}

/// When the frame was recorded, or where in the clip it is.
std::string Overlays::TimeText(double seconds) const {
  using namespace std::chrono;
  char text[64];
  const sys_seconds at{std::chrono::seconds(m_content.recordedAt + static_cast<int64_t>(seconds))};
  const hh_mm_ss time(at - floor<days>(at));
  const auto hour = static_cast<int>(time.hours().count());
  const auto minute = static_cast<int>(time.minutes().count());
  const auto second = static_cast<int>(time.seconds().count());
  if (m_content.recordedAt == 0) {
    std::snprintf(text, sizeof(text), "%d:%02d:%02d", hour, minute, second);
  } else {
    const year_month_day day(floor<days>(at));
    std::snprintf(text, sizeof(text), "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), hour, minute, second);
  }
  return text;
}

/// What is switched off is sent empty, which takes the last record off the picture. So is everything while
/// the picture is zoomed, since records are not.
void Overlays::SendRecord(Pane& pane, const Frame& frame) {
  nivral::Display& display = pane.Display();
  const auto mirror = static_cast<uint32_t>(pane.Mirror());
  Record record = Mirrored(m_content.find(frame), mirror, frame.width, frame.height);
  if (!m_switches.assistance || pane.IsZoomed()) record.objects.clear();
  if (!m_switches.monitoring || pane.IsZoomed()) {
    record.faces.clear();
    record.landmarks.clear();
  }
  const bool hadObjects = std::exchange(m_hasObjects, !record.objects.empty());
  if (hadObjects || m_hasObjects) SendObjects(display, record);
  std::array<nivral::Landmark, 68> landmarks;
  std::array<nivral::Box, 12> faces;
  for (size_t i = 0; i < record.landmarks.size(); ++i)
    landmarks[i] = {record.landmarks[i].x, record.landmarks[i].y};
  for (size_t i = 0; i < record.faces.size(); ++i)
    faces[i] = BoxOf(record.faces[i]);
  display.SetMonitoring(landmarks.data(), static_cast<int32_t>(record.landmarks.size()), faces.data(),
                        static_cast<int32_t>(record.faces.size()), kLandmarkRadius);
}
