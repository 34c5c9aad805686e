// SPDX-License-Identifier: MIT
#include "display/system_face.h"

#include <windows.h>

std::string IconTitleFace() {
  LOGFONTA iconTitle{};
  const bool known = SystemParametersInfoA(SPI_GETICONTITLELOGFONT, sizeof(iconTitle), &iconTitle, 0);
  return known ? iconTitle.lfFaceName : "Tahoma";
}
