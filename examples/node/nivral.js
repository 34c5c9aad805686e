// SPDX-License-Identifier: MIT
// nivral.h for Node.js on 64-bit Windows, through koffi (npm install koffi): every function under its name.
//
//   const nivral = require('./nivral.js').load('C:/libnivral/bin');
//   const pane = [null];
//   if (nivral.NIVRAL_DWOpenDraw(pane) !== 0) throw new Error('out of memory');
//
// Planes and samples are Buffers or typed arrays; what a function writes through a pointer comes back in an
// array of one element. Callbacks are made with register() and released with koffi.unregister() after their
// handle is closed.
//
// JavaScript runs on one thread, and a callback from a thread of the library waits until that thread is free.
// A call that itself waits for such a thread would wait for ever: make NIVRAL_WVStopWave, NIVRAL_WVCloseWave
// and, on a DirectDraw pane with a display callback, NIVRAL_DWFreeDraw and NIVRAL_DWCloseDraw with
// inBackground(). (That takes the last two off the window's thread, which this backend bears as long as the
// script goes on handling the window's messages.)
'use strict';
const koffi = require('koffi');
const path = require('path');
const util = require('util');

koffi.alias('HWND', 'void *');
koffi.struct('RECT', {left: 'int32_t', top: 'int32_t', right: 'int32_t', bottom: 'int32_t'});
koffi.struct('POINT', {x: 'int32_t', y: 'int32_t'});
koffi.pack('WAVEFORMATEX', {
  wFormatTag: 'uint16_t',
  nChannels: 'uint16_t',
  nSamplesPerSec: 'uint32_t',
  nAvgBytesPerSec: 'uint32_t',
  nBlockAlign: 'uint16_t',
  wBitsPerSample: 'uint16_t',
  cbSize: 'uint16_t',
});

const statements = (text) => text.split(';').map((one) => one.trim()).filter(Boolean);

const callbacks = statements(`
  void NivralFrameCallback(uint8_t* pY, uint32_t strideY, uint8_t* pU, uint8_t* pV, uint32_t strideUV,
      uint32_t param1, int64_t param2, void* user);
  void NivralDecodeCallback(uint8_t* pY, uint32_t strideY, uint32_t width, uint32_t height, int64_t
      param2, uint32_t format, void* user);
  void NivralDisplayCallback(int32_t index, void* hdc, uint32_t width, uint32_t height, int64_t param2,
      int32_t clientWidth, int32_t clientHeight, uint32_t mirrorMode, void* user);
  void NivralFlashWndCallback(void* user, HWND playWnd, int32_t clientWidth, int32_t clientHeight);
  int NivralWriteWaveCallback(uint8_t* buffer, int size, void* user);
`);

const functions = statements(`
  uint32_t NIVRAL_Initialize(void);
  uint32_t NIVRAL_InitializeEx(uint32_t bUseSDL);
  uint32_t NIVRAL_UnInitialize(void);
  uint32_t NIVRAL_DWOpenDraw(_Out_ void** phDraw);
  uint32_t NIVRAL_DWOpenDrawEx(_Out_ void** phDraw, uint32_t type);
  uint32_t NIVRAL_DWCloseDraw(void* hDraw);
  uint32_t NIVRAL_DWFreeDraw(void* hDraw);
  uint32_t NIVRAL_DWSetHwnd(void* hDraw, HWND hwnd);
  uint32_t NIVRAL_DWSetHwndEx(void* hDraw, HWND hwnd, int64_t param, uint32_t flag);
  uint32_t NIVRAL_DWInitDraw(void* hDraw, uint32_t width, uint32_t height, uint32_t param);
  uint32_t NIVRAL_DWDrawYUV420(void* hDraw, uint8_t* pY, uint32_t strideY, uint8_t* pU, uint8_t* pV,
      uint32_t strideUV, uint32_t param1, int64_t param2);
  uint32_t NIVRAL_DWAdjustedWnd(void* hDraw);
  uint32_t NIVRAL_DWSetPlayRect(void* hDraw, const RECT* rect);
  uint32_t NIVRAL_DWSetZoom(void* hDraw, uint32_t x, uint32_t y, uint32_t factor);
  uint32_t NIVRAL_DWSetMirrorMode(void* hDraw, uint32_t mode);
  uint32_t NIVRAL_DWSetIndex(void* hDraw, int32_t index);
  uint32_t NIVRAL_DWSetPause(void* hDraw, uint32_t paused);
  uint32_t NIVRAL_DWSetOSDText(void* hDraw, int32_t index, const char* text, uint32_t x, uint32_t y,
      uint32_t anchor, uint32_t colour);
  uint32_t NIVRAL_DWSetMosaics(void* hDraw, const uint8_t* cells);
  uint32_t NIVRAL_DWSetMosaicFlag(void* hDraw, uint32_t flag);
  uint32_t NIVRAL_DWSetMosaicLevel(void* hDraw, uint32_t level);
  uint32_t NIVRAL_DWSetMosaicAreaScale(void* hDraw, float top, float left, float bottom, float right);
  uint32_t NIVRAL_DWUpdateMosaics(void* hDraw, uint32_t commit);
  uint32_t NIVRAL_DWSetRClickPt(void* hDraw, POINT pt);
  uint32_t NIVRAL_DWSetAlgInfo(void* hDraw, int32_t count, const uint32_t* left, const uint32_t* top,
      const uint32_t* right, const uint32_t* bottom, const uint16_t* classId, const uint16_t* distance,
      const uint16_t* third, const uint16_t* fourth, uint16_t value);
  uint32_t NIVRAL_DWSetDsmAlgInfo(void* hDraw, int32_t pointCount, const uint32_t* x, const uint32_t* y,
      int32_t boxCount, const uint32_t* left, const uint32_t* top, const uint32_t* right, const uint32_t*
      bottom, uint16_t value);
  uint32_t NIVRAL_DWSetDecCB(void* hDraw, void* user, NivralDecodeCallback* callback);
  uint32_t NIVRAL_DWSetDisplayCB(void* hDraw, void* user, NivralDisplayCallback* callback);
  uint32_t NIVRAL_DWSetDrawYUV420CB(void* hDraw, void* user, NivralFrameCallback* callback);
  uint32_t NIVRAL_DWSetFlashWndCB(void* hDraw, void* user, NivralFlashWndCallback* callback);
  uint32_t NIVRAL_SetColorParams(void* hDraw, int32_t brightness, int32_t contrast, int32_t saturation,
      int32_t hue, int32_t index);
  uint32_t NIVRAL_GetColorParams(void* hDraw, _Out_ int32_t* brightness, _Out_ int32_t* contrast, _Out_
      int32_t* saturation, _Out_ int32_t* hue);
  uint32_t NIVRAL_GetColorParamsEx(void* hDraw, _Out_ int32_t* brightness, _Out_ int32_t* contrast, _Out_
      int32_t* saturation, _Out_ int32_t* hue, int32_t index);
  uint32_t NIVRAL_GetColorParamsRange(_Out_ int32_t* brightnessMin, _Out_ int32_t* brightnessMax, _Out_
      int32_t* contrastMin, _Out_ int32_t* contrastMax, _Out_ int32_t* saturationMin, _Out_ int32_t*
      saturationMax, _Out_ int32_t* hueMin, _Out_ int32_t* hueMax);
  uint32_t NIVRAL_WVOpenWave(_Out_ void** phWave);
  uint32_t NIVRAL_WVCloseWave(void* hWave);
  uint32_t NIVRAL_WVSetWaveFormat(void* hWave, const WAVEFORMATEX* format, uint32_t bufferSize);
  uint32_t NIVRAL_WVSetWriteWaveCB(void* hWave, void* user, NivralWriteWaveCallback* callback);
  uint32_t NIVRAL_WVPlayWave(void* hWave);
  uint32_t NIVRAL_WVPauseWave(void* hWave, uint32_t paused);
  uint32_t NIVRAL_WVStopWave(void* hWave);
  uint32_t NIVRAL_WVSetVolume(void* hWave, uint16_t volume);
  uint32_t NIVRAL_rgb24_to_yv12_c(_Out_ uint8_t* pY, _Out_ uint8_t* pU, _Out_ uint8_t* pV, const uint8_t*
      rgb, uint32_t width, uint32_t height, uint32_t strideY);
  uint32_t NIVRAL_yv12_to_rgb24_c(_Out_ uint8_t* rgb, uint32_t rgbStride, const uint8_t* pY, const
      uint8_t* pU, const uint8_t* pV, uint32_t strideY, uint32_t strideUV, uint32_t width, uint32_t
      height);
`);

for (const prototype of callbacks) koffi.proto(prototype);

/** The functions of libnivral.dll in `folder`, by name. */
function load(folder) {
  // Where Windows looks for the DLLs that libnivral.dll needs.
  process.env.PATH = path.resolve(folder) + path.delimiter + process.env.PATH;
  const library = koffi.load(path.join(path.resolve(folder), 'libnivral.dll'));
  const name = (prototype) => prototype.match(/(NIVRAL_\w+)\(/)[1];
  return Object.fromEntries(functions.map((prototype) => [name(prototype), library.func(prototype)]));
}

/** A JavaScript function as a callback: register('NivralFrameCallback', (y, strideY, ...) => { ... }) */
function register(type, callback) {
  return koffi.register(callback, type + ' *');
}

/** Calls a function on another thread: await inBackground(nivral.NIVRAL_WVStopWave, player) */
function inBackground(call, ...args) {
  return util.promisify(call.async)(...args);
}

/** The bits of floats, as the functions for boxes and landmarks take edges. */
function floatBits(values) {
  return new Uint32Array(Float32Array.from(values).buffer);
}

module.exports = {load, register, inBackground, floatBits};
