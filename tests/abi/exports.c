/* SPDX-License-Identifier: MIT
 * A C99 program's use of the public header, which comes first so that it must stand alone. */
#include <nivral/nivral.h>

#include "abi/exports.h"

#define ADD(function) Add(list, &count, #function, (AbiFunction)function)

static void Add(struct AbiExport list[kAbiExportCount], size_t* count, const char* name,
                AbiFunction function) {
  if (*count < kAbiExportCount) {
    list[*count].name = name;
    list[*count].function = function;
  }
  ++*count;
}

size_t ListAbiExports(struct AbiExport list[kAbiExportCount]) {
  size_t count = 0;
  ADD(NIVRAL_DWAdjustedWnd);
  ADD(NIVRAL_DWCloseDraw);
  ADD(NIVRAL_DWDrawYUV420);
  ADD(NIVRAL_DWFreeDraw);
  ADD(NIVRAL_DWInitDraw);
  ADD(NIVRAL_DWOpenDraw);
  ADD(NIVRAL_DWOpenDrawEx);
  ADD(NIVRAL_DWSetAlgInfo);
  ADD(NIVRAL_DWSetDecCB);
  ADD(NIVRAL_DWSetDisplayCB);
  ADD(NIVRAL_DWSetDrawYUV420CB);
  ADD(NIVRAL_DWSetDsmAlgInfo);
  ADD(NIVRAL_DWSetFlashWndCB);
  ADD(NIVRAL_DWSetHwnd);
  ADD(NIVRAL_DWSetHwndEx);
  ADD(NIVRAL_DWSetIndex);
  ADD(NIVRAL_DWSetMirrorMode);
  ADD(NIVRAL_DWSetMosaicAreaScale);
  ADD(NIVRAL_DWSetMosaicFlag);
  ADD(NIVRAL_DWSetMosaicLevel);
  ADD(NIVRAL_DWSetMosaics);
  ADD(NIVRAL_DWSetOSDText);
  ADD(NIVRAL_DWSetPause);
  ADD(NIVRAL_DWSetPlayRect);
  ADD(NIVRAL_DWSetRClickPt);
  ADD(NIVRAL_DWSetZoom);
  ADD(NIVRAL_DWUpdateMosaics);
  ADD(NIVRAL_GetColorParams);
  ADD(NIVRAL_GetColorParamsEx);
  ADD(NIVRAL_GetColorParamsRange);
  ADD(NIVRAL_Initialize);
  ADD(NIVRAL_InitializeEx);
  ADD(NIVRAL_SetColorParams);
  ADD(NIVRAL_UnInitialize);
  ADD(NIVRAL_WVCloseWave);
  ADD(NIVRAL_WVOpenWave);
  ADD(NIVRAL_WVPauseWave);
  ADD(NIVRAL_WVPlayWave);
  ADD(NIVRAL_WVSetVolume);
  ADD(NIVRAL_WVSetWaveFormat);
  ADD(NIVRAL_WVSetWriteWaveCB);
  ADD(NIVRAL_WVStopWave);
  ADD(NIVRAL_rgb24_to_yv12_c);
  ADD(NIVRAL_yv12_to_rgb24_c);
  return count;
}
