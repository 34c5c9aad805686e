// SPDX-License-Identifier: MIT
#pragma once

#include "display/overlay_list.h"
#include "display/overlay_style.h"
#include "display/records.h"

namespace libnivral {

/// Fills the list with what is to be painted for a record on a display that shows the whole video.
void LayOutRecord(OverlayList& list, RecordView record, const DisplayMap& map, const OverlayStyle& style);

}  // namespace libnivral
