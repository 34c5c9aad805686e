// SPDX-License-Identifier: MIT
// Values of every kind through the flat interface, as another compiler's calling convention passes them.
'use strict';
const assert = require('assert');
const {load, floatBits} = require('./nivral.js');

const nivral = load(process.argv[2]);
const pane = [null];
assert.strictEqual(nivral.NIVRAL_DWOpenDrawEx(pane, 2), 0);

// Integers on the stack, signed, in and out.
const read = [[0], [0], [0], [0]];
assert.strictEqual(nivral.NIVRAL_SetColorParams(pane[0], -1, 2, -3, 180, 1), 0);
assert.strictEqual(nivral.NIVRAL_GetColorParamsEx(pane[0], ...read, 1), 0);
assert.deepStrictEqual(read.flat(), [-1, 2, -3, 180]);
const range = Array.from({length: 8}, () => [0]);
nivral.NIVRAL_GetColorParamsRange(...range);
assert.deepStrictEqual(range.flat(), [-127, 127, -100, 100, -100, 100, -180, 180]);

// A structure by value and by address, floats, 64 bits, arrays.
assert.strictEqual(nivral.NIVRAL_DWSetRClickPt(pane[0], {x: 1, y: -1}), 0);
assert.strictEqual(nivral.NIVRAL_DWSetPlayRect(pane[0], {left: 0, top: 0, right: 8, bottom: 8}), 0);
assert.strictEqual(nivral.NIVRAL_DWSetMosaicAreaScale(pane[0], 0.1, 0.2, 0.3, 0.4), 0);
assert.strictEqual(nivral.NIVRAL_DWSetHwndEx(pane[0], null, -(2n ** 40n), 1), 0);
const points = floatBits([1, 2]);
const none = [null, null, null, null];
assert.strictEqual(nivral.NIVRAL_DWSetDsmAlgInfo(pane[0], 2, points, points, 0, ...none, 3), 0);
const [luma, chroma] = [Buffer.alloc(16), Buffer.alloc(4)];
assert.strictEqual(nivral.NIVRAL_DWDrawYUV420(pane[0], luma, 4, chroma, chroma, 2, 0, 0), 0x2001);
assert.strictEqual(nivral.NIVRAL_DWCloseDraw(pane[0]), 0);
assert.strictEqual(nivral.NIVRAL_DWCloseDraw(null), 1);

// Pictures there and back: white, black, red and grey blocks of 2 x 2.
const blocks = [[255, 255, 255], [0, 0, 0], [0, 0, 255], [128, 128, 128]];
const bgr = Buffer.from(Array.from({length: 16}, (_, i) => blocks[i >> 3 << 1 | i >> 1 & 1]).flat());
const [y, u, v, back] = [16, 4, 4, 48].map((size) => Buffer.alloc(size));
nivral.NIVRAL_rgb24_to_yv12_c(y, u, v, bgr, 4, 4, 4);
nivral.NIVRAL_yv12_to_rgb24_c(back, 4, y, u, v, 4, 2, 4, 2 ** 32 - 4);
assert.ok(bgr.every((value, i) => Math.abs(value - back[i]) <= 4), back.toString('hex'));
console.log('values of every kind arrived');
