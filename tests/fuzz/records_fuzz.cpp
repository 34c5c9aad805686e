// SPDX-License-Identifier: MIT
// Any bytes as a file of records: read, or refused with MediaError; what was read fits the library.
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "media_error.h"
#include "player/embed/records.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr char kHead[] = "frame,class,left,top,right,bottom,distance_dm\n";
  std::istringstream stream((size > 0 && data[0] % 8 != 0 ? kHead : "") + std::string(data, data + size));
  try {
    const RecordTrack track(stream);
    for (int64_t frame = 0; frame < 20; ++frame) {
      const Record record = Mirrored(track.At(frame, static_cast<double>(frame) / 25, 25), size % 3, 64, 48);
      if (record.objects.size() > 12 || record.faces.size() > 12 || record.landmarks.size() > 68)
        std::abort();
    }
  } catch (const MediaError&) {
  }
  return 0;
}
