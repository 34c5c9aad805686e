// SPDX-License-Identifier: MIT
#include "display/system_face.h"

#include <cstring>

void IconTitleFace(char (&face)[LF_FACESIZE]) {
  LOGFONTA iconTitle{};
  std::strcpy(iconTitle.lfFaceName, "Tahoma");
  SystemParametersInfoA(SPI_GETICONTITLELOGFONT, sizeof(iconTitle), &iconTitle, 0);
  std::memcpy(face, iconTitle.lfFaceName, sizeof(face));
}
