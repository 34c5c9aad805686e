// SPDX-License-Identifier: MIT
// Where backends differ as a client sees them. Everything else is alike, and every case runs on all of them.
#pragma once

#include <string>

#include "nivral/nivral.h"
#include "support/pane.h"

struct Backend {
  const char* name = "";
  uint32_t type = 0;
  void (*opened)(void* pane) = nullptr;  ///< what a new pane is to be told, if anything
  int32_t badSize = 1;               ///< InitDraw's result for no size; SDL's tells whether one is awaited
  uint32_t notReady = 0x2001;        ///< what a frame gets that no device or window can take
  uint32_t badFrame = 0x2FFF;        ///< what planes get that cannot hold a frame
  bool refusesHidden = false;        ///< SDL does not draw into a window that is not seen
  bool returnsAfterFree = false;     ///< Direct3D makes its device anew for the next frame
  bool keepsPicture = false;         ///< Direct3D leaves the last one on the window until the client paints
  bool missesGoneWindow = false;     ///< Direct3D asks its device, which does not look at the window
  bool newLayoutDropsFrame = false;  ///< Direct3D resets its device for other strides
  bool strayTinyChroma = false;      ///< Wine's YV12 surfaces mix chroma with what lies beside it in memory
  bool decodeCallback = false;       ///< Direct3D calls none
  bool textInWindowPixels = false;   ///< SDL draws texts after the picture was stretched
  bool everyLandmark = false;        ///< the others leave out every second one
  bool boxesOutlive = false;         ///< a burnt-in box is timed from the first frame without a record
  bool blueLetters = false;          ///< on labels; DirectDraw's are white
  Rgb person{}, other{};  ///< boxes of class 1, and of the rest; DirectDraw burns all of them in as (0, 0, 0)
  int boxTolerance = 12;  ///< chroma of lines one pixel wide is smoothed with its neighbours'
  /// What a pane's life asks of the system, without the library: under Wine that leaves some hundred bytes.
  void (*bare)(TestWindow& window) = nullptr;
};

void PrintTo(const Backend& backend, std::ostream* out);

/// Runs per row of the table.
class Conformance : public testing::TestWithParam<Backend> {
 protected:
  Conformance();
  ~Conformance() override;
  const Backend& b = GetParam();
};

/// Several threads, and what can be made longer.
class Soak : public Conformance {};

/// A number from the environment, or the short run that every build makes.
int Setting(const char* name, int usual);
