// SPDX-License-Identifier: MIT
// Any bytes as a clip or a sound: either read to the end or refused with MediaError.
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "media_error.h"
#include "wav.h"
#include "y4m.h"

namespace {

void ReadClip(std::istream& stream) {
  constexpr int kLargestPicture = 1 << 20;  // larger ones cost time and show nothing more
  Y4mReader reader(stream);
  if (reader.Format().width * reader.Format().height > kLargestPicture) return;
  const int64_t frames = reader.CountFrames();
  Picture picture(reader.Format().width, reader.Format().height);
  for (int round = 0; round < 2; ++round) {
    for (int64_t frame = 0; frame < frames; ++frame)
      if (!reader.Read(picture)) std::abort();  // counted, but not there
    reader.Rewind();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  std::istringstream stream(std::string(data + 1, data + size));
  try {
    if (data[0] % 2 == 0)
      ReadClip(stream);
    else
      ReadWav(stream);
  } catch (const MediaError&) {
  }
  return 0;
}
