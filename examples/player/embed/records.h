// SPDX-License-Identifier: MIT
// Results of driver algorithms, and the files they are kept in. docs/records.md describes the format.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

/// Video pixels; edges may lie outside the picture.
struct RecordBox {
  float left = 0;
  float top = 0;
  float right = 0;
  float bottom = 0;
};

struct RecordObject {
  RecordBox box;
  uint16_t classId = 0;   ///< as in NIVRAL_DWSetAlgInfo
  uint16_t distance = 0;  ///< tenths of a metre
};

struct RecordPoint {
  float x = 0;
  float y = 0;
};

/// What was found in one frame.
struct Record {
  std::vector<RecordObject> objects;
  std::vector<RecordBox> faces;
  std::vector<RecordPoint> landmarks;
};

/// The record as it lies in a picture that is shown in a mirror mode (0 none, 1 flip, 2 half turn).
Record Mirrored(Record record, uint32_t mode, int width, int height);

/// The records of a clip.
class RecordTrack {
 public:
  /// Throws MediaError, which names the line.
  explicit RecordTrack(std::istream& csv);

  /// The record of a frame, or the last one before it that is not older than half a second.
  Record At(int64_t frame, double time, double framesPerSecond) const;

 private:
  void ReadLine(const std::string& line);

  bool m_byTime = false;
  std::map<double, Record> m_records;  ///< by time in seconds or number of frame
};

/// Opens a file of records by its UTF-8 path. Throws MediaError with the file's name.
RecordTrack OpenRecords(const std::string& path);

/// Writes a line per object and face, as RecordTrack reads them.
void WriteRecordsHeader(std::ostream& csv);
void WriteRecord(std::ostream& csv, int64_t frame, const Record& record);
