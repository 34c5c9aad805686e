// SPDX-License-Identifier: MIT
// The smallest client in JavaScript: a window with a moving grey ramp and a line of text, and a tone.
//   npm install
//   node minimal.js [folder of libnivral.dll]
'use strict';
const koffi = require('koffi');
const path = require('path');
const {load, register, inBackground, floatBits} = require('./nivral.js');

const width = 640;
const height = 360;
const frames = 50;
const samplesPerSecond = 8000;

const nivral = load(process.argv[2] || path.join(__dirname, '..', '..', 'bin'));
const user32 = koffi.load('user32.dll');
const createWindow = user32.func(
    'void *CreateWindowExA(uint32_t exStyle, const char *name, const char *title, uint32_t style, int x, ' +
    'int y, int width, int height, void *parent, void *menu, void *instance, void *param)');
const destroyWindow = user32.func('int DestroyWindow(void *window)');
const peekMessage = user32.func(
    'int PeekMessageA(_Out_ uint8_t *message, void *window, uint32_t first, uint32_t last, uint32_t remove)');
const dispatchMessage = user32.func('int64_t DispatchMessageA(const uint8_t *message)');

const wsOverlappedVisible = 0x10CF0000;
const sizeOfMessage = 48;
const luma = Buffer.alloc(width * height);
const chroma = Buffer.alloc(width * height / 4, 128);
const sleep = (ms) => new Promise((done) => setTimeout(done, ms));

function check(result, call) {
  if (result !== 0) throw new Error(`${call} returned ${result}`);
}

function handleMessages() {
  const message = Buffer.alloc(sizeOfMessage);
  while (peekMessage(message, null, 0, 0, 1)) dispatchMessage(message);
}

function openPane(window) {
  const pane = [null];
  check(nivral.NIVRAL_DWOpenDraw(pane), 'NIVRAL_DWOpenDraw');
  nivral.NIVRAL_DWSetHwnd(pane[0], window);
  nivral.NIVRAL_DWInitDraw(pane[0], width, height, 0);
  nivral.NIVRAL_DWSetOSDText(pane[0], 0, 'Camera 1', 16, 12, 0, 0x0000FFFF);
  return pane[0];
}

function setBox(pane, left) {
  const words = (value) => new Uint16Array([value]);
  nivral.NIVRAL_DWSetAlgInfo(pane, 1, floatBits([left]), floatBits([100]), floatBits([left + 120]),
                             floatBits([200]), words(2), words(123), words(0), words(0), 2);
}

async function show(pane) {
  let drawn = 0;
  const onFrame = register('NivralFrameCallback', (y, strideY, u, v, strideUV, param1, param2) => {
    if (strideY === width && strideUV === width / 2 && Number(param2) === 2 * param1) ++drawn;
  });
  nivral.NIVRAL_DWSetDrawYUV420CB(pane, null, onFrame);
  for (let frame = 0; frame < frames; ++frame) {
    handleMessages();
    for (let i = 0; i < luma.length; ++i) luma[i] = 16 + (i % width + 4 * frame) % 220;
    setBox(pane, 4 * frame);
    check(nivral.NIVRAL_DWDrawYUV420(pane, luma, width, chroma, chroma, width / 2, frame, 2 * frame),
          'NIVRAL_DWDrawYUV420');
    await sleep(40);
  }
  nivral.NIVRAL_DWCloseDraw(pane);
  koffi.unregister(onFrame);
  return drawn;
}

/** Calls `meanwhile` while a tone plays; the number of buffers that the player asked for. */
async function playTone(meanwhile) {
  let buffers = 0;
  let sample = 0;
  const onWrite = register('NivralWriteWaveCallback', (buffer, size) => {
    const tone = Int16Array.from({length: size / 2}, () =>
        3000 * Math.sin(2 * Math.PI * 440 * sample++ / samplesPerSecond));
    koffi.encode(buffer, koffi.array('int16_t', size / 2, 'Typed'), tone);
    ++buffers;
    return size;
  });
  const player = [null];
  check(nivral.NIVRAL_WVOpenWave(player), 'NIVRAL_WVOpenWave');
  nivral.NIVRAL_WVSetWaveFormat(player[0], {
    wFormatTag: 1,
    nChannels: 1,
    nSamplesPerSec: samplesPerSecond,
    nAvgBytesPerSec: 2 * samplesPerSecond,
    nBlockAlign: 2,
    wBitsPerSample: 16,
    cbSize: 0,
  }, 3200);
  nivral.NIVRAL_WVSetWriteWaveCB(player[0], null, onWrite);
  nivral.NIVRAL_WVPlayWave(player[0]);
  await meanwhile();
  // The player's thread may be waiting for our callback, so this thread must stay free.
  await inBackground(nivral.NIVRAL_WVCloseWave, player[0]);
  koffi.unregister(onWrite);
  return buffers;
}

async function main() {
  const window = createWindow(0, 'STATIC', 'libnivral', wsOverlappedVisible, 40, 40, width, height, null,
                              null, null, null);
  nivral.NIVRAL_InitializeEx(1);
  const pane = openPane(window);
  let drawn = 0;
  const buffers = await playTone(async () => { drawn = await show(pane); });
  nivral.NIVRAL_UnInitialize();
  destroyWindow(window);
  console.log(`${drawn} frames shown, ${buffers} buffers of sound`);
  process.exitCode = drawn === frames && buffers > 0 ? 0 : 1;
}

main();
