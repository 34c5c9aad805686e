// SPDX-License-Identifier: MIT
#include "y4m.h"

#include <charconv>
#include <string>

#include "media_error.h"

namespace {

constexpr std::string_view kMagic = "YUV4MPEG2";
constexpr size_t kLongestLine = 1024;
constexpr char kCutOff[] = "the file ends inside a frame";
constexpr int kLargestSide = 16384;

/// The line without its line feed; nothing when the stream ends before one or the line is too long.
bool ReadLine(std::istream& stream, std::string& line) {
  line.clear();
  for (char c = 0; stream.get(c);) {
    if (c == '\n') return true;
    if (line.size() == kLongestLine) return false;
    line.push_back(c);
  }
  return false;
}

/// Whether all of `text` is a number, stored in `value`.
bool ParseNumber(std::string_view text, int& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

int ParseSide(std::string_view text) {
  int side = 0;
  if (!ParseNumber(text, side) || side < 2 || side > kLargestSide)
    throw MediaError("unusable picture size '" + std::string(text) + "'");
  return side;
}

double ParseRate(std::string_view text) {
  constexpr double kDefaultRate = 25;
  const size_t colon = text.find(':');
  int num = 0;
  int den = 0;
  if (colon == text.npos || !ParseNumber(text.substr(0, colon), num) ||
      !ParseNumber(text.substr(colon + 1), den) || num < 1 || den < 1)
    return kDefaultRate;
  const double rate = static_cast<double>(num) / den;
  return rate >= 1 && rate <= 1000 ? rate : kDefaultRate;
}

void CheckColourSpace(std::string_view name) {
  if (name != "420" && name != "420jpeg" && name != "420mpeg2" && name != "420paldv")
    throw MediaError("colour format " + std::string(name) + " is not 8-bit 4:2:0");
}

bool ReadPlane(std::istream& stream, std::vector<uint8_t>& plane) {
  const auto size = static_cast<std::streamsize>(plane.size());
  return stream.read(reinterpret_cast<char*>(plane.data()), size).gcount() == size;
}

}  // namespace

Y4mFormat ParseY4mHeader(std::string_view line) {
  if (line.substr(0, kMagic.size()) != kMagic) throw MediaError("not a YUV4MPEG2 file");
  Y4mFormat format{0, 0, ParseRate("")};
  line.remove_prefix(kMagic.size());
  while (!line.empty()) {
    if (line.front() == ' ') {
      line.remove_prefix(1);
      continue;
    }
    const std::string_view token = line.substr(0, line.find(' '));
    const std::string_view value = token.substr(1);
    if (token.front() == 'W') format.width = ParseSide(value);
    if (token.front() == 'H') format.height = ParseSide(value);
    if (token.front() == 'F') format.framesPerSecond = ParseRate(value);
    if (token.front() == 'C') CheckColourSpace(value);
    line.remove_prefix(token.size());
  }
  if (format.width == 0 || format.height == 0) throw MediaError("the header names no picture size");
  return format;
}

Y4mReader::Y4mReader(std::istream& stream) : m_stream(stream) {
  std::string line;
  if (!ReadLine(m_stream, line)) throw MediaError("not a YUV4MPEG2 file");
  m_format = ParseY4mHeader(line);
  m_firstFrame = m_stream.tellg();
}

/// False at the end of the clip.
bool Y4mReader::ReadFrameHeader() {
  if (m_stream.peek() == std::istream::traits_type::eof()) return false;
  std::string line;
  if (!ReadLine(m_stream, line) || (line != "FRAME" && line.substr(0, 6) != "FRAME "))
    throw MediaError("a frame header is damaged");
  return true;
}

int64_t Y4mReader::CountFrames() {
  const auto luma = static_cast<std::streamoff>(m_format.width) * m_format.height;
  const auto chroma = static_cast<std::streamoff>((m_format.width + 1) / 2) * ((m_format.height + 1) / 2);
  Rewind();
  int64_t frames = 0;
  for (; ReadFrameHeader(); ++frames) {
    m_stream.seekg(luma + 2 * chroma - 1, std::ios::cur);
    if (m_stream.get() == std::istream::traits_type::eof()) throw MediaError(kCutOff);
  }
  Rewind();
  return frames;
}

bool Y4mReader::Read(Picture& picture) {
  if (!ReadFrameHeader()) return false;
  if (!ReadPlane(m_stream, picture.y) || !ReadPlane(m_stream, picture.u) || !ReadPlane(m_stream, picture.v))
    throw MediaError(kCutOff);
  return true;
}

void Y4mReader::Rewind() {
  m_stream.clear();
  m_stream.seekg(m_firstFrame);
}
