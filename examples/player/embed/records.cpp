// SPDX-License-Identifier: MIT
#include "player/embed/records.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string_view>

#include "media_error.h"

namespace {

constexpr char kColumns[] = "class,left,top,right,bottom,distance_dm";
constexpr std::string_view kFace = "face";
constexpr size_t kMostObjects = 12;  // of one record in the library
constexpr size_t kMostLandmarks = 68;

std::vector<std::string_view> Split(std::string_view line) {
  std::vector<std::string_view> fields;
  for (;;) {
    const size_t at = line.find(',');
    fields.push_back(line.substr(0, at));
    if (at == line.npos) return fields;
    line.remove_prefix(at + 1);
  }
}

template <class Number>
Number Parse(std::string_view text, Number low, Number high) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= low && value <= high))
    throw MediaError("'" + std::string(text) + "' is not a number from " + std::to_string(low) + " to " +
                     std::to_string(high));
  return value;
}

float ParseEdge(std::string_view text) {
  return Parse(text, -100'000.0f, 100'000.0f);
}

}  // namespace

RecordTrack::RecordTrack(std::istream& csv) {
  std::string line;
  for (int number = 1; std::getline(csv, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (number == 1) {
      m_byTime = line == std::string("time,") + kColumns;
      if (!m_byTime && line != std::string("frame,") + kColumns)
        throw MediaError(std::string("the first line is not 'frame,") + kColumns + "' or 'time,...'");
      continue;
    }
    try {
      if (!line.empty()) ReadLine(line);
    } catch (const MediaError& error) {
      throw MediaError("line " + std::to_string(number) + ": " + error.what());
    }
  }
}

void RecordTrack::ReadLine(const std::string& line) {
  constexpr double kLongest = 1e9;
  const std::vector<std::string_view> fields = Split(line);
  Record& record = m_records[Parse(fields[0], 0.0, kLongest)];
  if (fields.size() == 1) return;  // nothing was found
  if (fields.size() < 6) throw MediaError("there are less than 6 columns");
  const RecordBox box{ParseEdge(fields[2]), ParseEdge(fields[3]), ParseEdge(fields[4]), ParseEdge(fields[5])};
  const std::string_view distance = fields.size() > 6 ? fields[6] : "";
  if (fields[1] != kFace) {
    const auto classId = Parse<uint16_t>(fields[1], 0, 7);
    record.objects.push_back(
        {box, classId, distance.empty() ? uint16_t{0} : Parse<uint16_t>(distance, 0, 65'535)});
    if (record.objects.size() > kMostObjects) throw MediaError("more than 12 boxes in one frame");
    return;
  }
  record.faces.push_back(box);
  for (size_t i = 7; i + 1 < fields.size(); i += 2)
    record.landmarks.push_back({ParseEdge(fields[i]), ParseEdge(fields[i + 1])});
  if (record.faces.size() > kMostObjects || record.landmarks.size() > kMostLandmarks)
    throw MediaError("more than 12 faces or 68 landmarks in one frame");
}

Record RecordTrack::At(int64_t frame, double time, double framesPerSecond) const {
  constexpr double kShownFor = 0.5;
  const double key = m_byTime ? time + 0.5 / framesPerSecond : static_cast<double>(frame);
  const double oldest = key - (m_byTime ? kShownFor : kShownFor * framesPerSecond);
  auto next = m_records.upper_bound(key);
  if (next == m_records.begin() || (--next)->first < oldest) return {};
  return next->second;
}

RecordTrack OpenRecords(const std::string& path) try {
  std::ifstream file(std::filesystem::path(std::u8string(path.begin(), path.end())), std::ios::binary);
  if (!file) throw MediaError("the file cannot be opened");
  return RecordTrack(file);
} catch (const MediaError& error) {
  throw MediaError(path + ": " + error.what());
}

Record Mirrored(Record record, uint32_t mode, int width, int height) {
  if (mode == 0) return record;
  const auto mirrorX = [width](float x) { return static_cast<float>(width) - x; };
  const auto mirrorY = [height, mode](float y) { return mode == 2 ? static_cast<float>(height) - y : y; };
  const auto mirror = [&](RecordBox& box) {
    box = {mirrorX(box.right), mirrorY(box.top), mirrorX(box.left), mirrorY(box.bottom)};
    if (mode == 2) std::swap(box.top, box.bottom);
  };
  for (RecordObject& object : record.objects)
    mirror(object.box);
  for (RecordBox& face : record.faces)
    mirror(face);
  for (RecordPoint& point : record.landmarks)
    point = {mirrorX(point.x), mirrorY(point.y)};
  return record;
}

void WriteRecordsHeader(std::ostream& csv) {
  csv << "frame," << kColumns << '\n';
}

void WriteRecord(std::ostream& csv, int64_t frame, const Record& record) {
  const auto write = [&](const auto& kind, const RecordBox& box) -> std::ostream& {
    return csv << frame << ',' << kind << ',' << box.left << ',' << box.top << ',' << box.right << ','
               << box.bottom;
  };
  if (record.objects.empty() && record.faces.empty()) csv << frame << '\n';
  for (const RecordObject& object : record.objects)
    write(object.classId, object.box) << ',' << object.distance << '\n';
  for (size_t i = 0; i < record.faces.size(); ++i) {
    write(kFace, record.faces[i]) << ',';
    if (i == 0)  // the landmarks are those of all faces together
      for (const RecordPoint& point : record.landmarks)
        csv << ',' << point.x << ',' << point.y;
    csv << '\n';
  }
}
