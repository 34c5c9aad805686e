/* SPDX-License-Identifier: MIT */
/** @file */
/**
 * @mainpage libnivral
 *
 * libnivral shows decoded planar YUV 4:2:0 video in windows of the client, with overlays, and plays PCM
 * sound.
 *
 * A client in short:
 *
 *     NIVRAL_InitializeEx(1);                                 once; 1: SDL2, 0: Direct3D 9 or DirectDraw
 *     void* pane = NULL;
 *     NIVRAL_DWOpenDraw(&pane);                               one handle per video pane
 *     NIVRAL_DWSetHwnd(pane, window);                         the client's own window
 *     NIVRAL_DWInitDraw(pane, 1280, 720, 0);                  the video's size
 *     NIVRAL_DWDrawYUV420(pane, y, 1280, u, v, 640, 0, 0);    per decoded frame
 *     NIVRAL_DWCloseDraw(pane);
 *     NIVRAL_UnInitialize();
 *
 * Results. Unless a function says otherwise it returns 0 when the call reached the object behind the handle
 * and 1 when the handle (or out-pointer) was null. Handles are not validated beyond that: a closed or foreign
 * handle is undefined behaviour. No exception leaves the library.
 *
 * Ownership. The client owns its windows, frame buffers and callback contexts. Frames are read during the
 * call only and never written. Nothing returned by the library is freed by the client; closing a handle frees
 * all behind it.
 *
 * Threads. NIVRAL_InitializeEx, NIVRAL_UnInitialize, opening and closing belong on one thread, with no call
 * in flight on a handle that is being closed. NIVRAL_DWSetHwnd, the first NIVRAL_DWInitDraw on a window,
 * NIVRAL_DWFreeDraw and NIVRAL_DWCloseDraw belong on the thread that owns the window. Otherwise one thread
 * may feed frames while others call setters; settings take effect from the next frame. A NIVRAL_DWInitDraw
 * with a new size must not overlap a frame of the old one. Calls on one Direct3D pane must not overlap at
 * all.
 *
 * Units. Widths and heights are pixels, strides bytes per row. Colours are COLORREF values, 0x00BBGGRR. Texts
 * are in the system's ANSI code page.
 */
#ifndef NIVRAL_NIVRAL_H
#define NIVRAL_NIVRAL_H

#include <stdint.h>
#include <windows.h>
/* mmeapi.h is left out by windows.h under WIN32_LEAN_AND_MEAN; mmsystem.h brings WAVEFORMATEX either way. */
#include <mmsystem.h>

/** How functions are declared: imported, except in the library itself, which defines NIVRAL_STATIC. */
#if defined(NIVRAL_STATIC)
#define NIVRAL_API
#else
#define NIVRAL_API __declspec(dllimport)
#endif
/** The calling convention of functions and callbacks. */
#define NIVRAL_CALL __cdecl

#ifdef __cplusplus
extern "C" {
#endif

/** @defgroup callbacks Callbacks
 *
 * Registered as (user context, function), user context first. The context comes back as the last argument,
 * except in NivralFlashWndCallback, where it is the first. A null function unregisters. Callbacks run on the
 * thread named below and must not close the handle that calls them.
 * @{ */

/** After every frame, on the thread that draws it: the planes that were shown, which are the client's own
 * unless the picture was mirrored or colour-adjusted. The planes are valid during the call only. */
typedef void(NIVRAL_CALL* NivralFrameCallback)(uint8_t* pY, uint32_t strideY, uint8_t* pU, uint8_t* pV,
                                               uint32_t strideUV, uint32_t param1, int64_t param2,
                                               void* user);

/** After a frame went through the SDL2 or DirectDraw backend, shown or not, on the thread that draws it; not
 * for frames that are refused before, say for a hidden window. param2 is the frame's own; format is 3, planar
 * YUV 4:2:0. */
typedef void(NIVRAL_CALL* NivralDecodeCallback)(uint8_t* pY, uint32_t strideY, uint32_t width,
                                                uint32_t height, int64_t param2, uint32_t format, void* user);

/** DirectDraw backend only, on its worker thread, when a frame is composed and not yet on the screen: drawing
 * into hdc (a GDI device context, valid during the call) appears over the video. */
typedef void(NIVRAL_CALL* NivralDisplayCallback)(int32_t index, void* hdc, uint32_t width, uint32_t height,
                                                 int64_t param2, int32_t clientWidth, int32_t clientHeight,
                                                 uint32_t mirrorMode, void* user);

/** SDL2 backend only, on the thread that owns the window, from its message loop, when a part of the window
 * was exposed after a frame had been shown: the client may draw its last frame again. Several exposures may
 * arrive as one call. */
typedef void(NIVRAL_CALL* NivralFlashWndCallback)(void* user, HWND playWnd, int32_t clientWidth,
                                                  int32_t clientHeight);

/** On the player's own thread: write up to `size` bytes of PCM to `buffer` and return how many were written.
 * Zero or less means "nothing yet" and the player asks again at once. Every call of one buffer gets the
 * buffer's start. */
typedef int(NIVRAL_CALL* NivralWriteWaveCallback)(uint8_t* buffer, int size, void* user);

/** @} */

/** @defgroup startup Start-up
 * @{ */

/** NIVRAL_InitializeEx with the choice made before (0 at first). */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_Initialize(void);

/** Chooses the backend of NIVRAL_DWOpenDraw for the whole process. bUseSDL not 0: starts SDL2. bUseSDL 0:
 * probes the machine for Direct3D 9 with a trial device; without it DirectDraw is used. Always returns 0.
 * Call it before opening panes; calling it again repeats the choice. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_InitializeEx(uint32_t bUseSDL);

/** Shuts SDL2 down and returns 0 in SDL mode (also when a pane fell back to SDL2); otherwise does nothing and
 * returns 1. Close all panes first: one that is still open shows nothing any more. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_UnInitialize(void);

/** @} */

/** @defgroup opening Panes: opening and closing
 * @{ */

/** Opens a pane on the backend that start-up chose and stores its handle in *phDraw. 0, or 1 when phDraw is
 * null or memory ran out; *phDraw is written on success only. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWOpenDraw(void** phDraw);

/** Opens a pane on a given backend: 0 SDL2, 1 Direct3D 9, any other value DirectDraw. Where the Direct3D 9
 * run-time cannot be loaded, type 1 opens an SDL2 pane and makes SDL2 the choice of the process. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWOpenDrawEx(void** phDraw, uint32_t type);

/** Releases the pane's drawing resources and the pane. The handle is invalid afterwards. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWCloseDraw(void* hDraw);

/** Releases the drawing resources only; the pane keeps its settings and NIVRAL_DWInitDraw makes it draw
 * again. Frames in between are dropped. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWFreeDraw(void* hDraw);

/** @} */

/** @defgroup frames Panes: window, size and frames
 * @{ */

/** Binds the pane to a window of the client, which stays the client's. Takes effect at the next
 * NIVRAL_DWInitDraw. A pane that has drawn before must be freed first: NIVRAL_DWFreeDraw, NIVRAL_DWSetHwnd,
 * NIVRAL_DWInitDraw. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetHwnd(void* hDraw, HWND hwnd);

/** NIVRAL_DWSetHwnd; param and flag are ignored. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetHwndEx(void* hDraw, HWND hwnd, int64_t param, uint32_t flag);

/** Sets the video size in pixels and makes the drawing resources. Call it again when the size changes. param
 * is ignored. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWInitDraw(void* hDraw, uint32_t width, uint32_t height,
                                                  uint32_t param);

/** Draws one frame of the size given to NIVRAL_DWInitDraw and returns the backend's code: 0 when shown. SDL2:
 * 1 when dropped (before NIVRAL_DWInitDraw, window hidden or gone, device trouble). Direct3D 9 and
 * DirectDraw: 0x2001 to 0x2004 and 0x2FFF. 1 for a null handle. pY: height rows of strideY bytes; pU, pV:
 * height / 2 rows of strideUV bytes. param1 and param2 travel to the callbacks unchanged. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWDrawYUV420(void* hDraw, uint8_t* pY, uint32_t strideY, uint8_t* pU,
                                                    uint8_t* pV, uint32_t strideUV, uint32_t param1,
                                                    int64_t param2);

/** Tells the pane that its window's client area has a new size. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWAdjustedWnd(void* hDraw);

/** Part of the client area to draw into, in client pixels; null is ignored. Used by the DirectDraw backend,
 * where an empty rectangle means the whole client area. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetPlayRect(void* hDraw, const RECT* rect);

/** Digital zoom (Direct3D 9): x, y a point of the displayed picture in per mille, factor 1 (none)
 * to 8. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetZoom(void* hDraw, uint32_t x, uint32_t y, uint32_t factor);

/** 0 none, 1 horizontal flip, 2 half turn. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMirrorMode(void* hDraw, uint32_t mode);

/** The client's number for this pane, handed back in NivralDisplayCallback. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetIndex(void* hDraw, int32_t index);

/** Not 0: the algorithm records being shown stay up and no new ones are taken. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetPause(void* hDraw, uint32_t paused);

/** @} */

/** @defgroup overlays Panes: text and mosaic
 * @{ */

/** One of six lines of text over the video (index 0 to 5; others are ignored). At most 511 bytes are kept; an
 * empty text removes the line. x, y: upper left corner; anchor 1: y is measured from the bottom. colour:
 * 0x00BBGGRR. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetOSDText(void* hDraw, int32_t index, const char* text, uint32_t x,
                                                    uint32_t y, uint32_t anchor, uint32_t colour);

/** The privacy-mosaic rectangle: 16 bytes, a RECT in client pixels. Null is ignored. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaics(void* hDraw, const uint8_t* cells);

/** Not 0 shows the mosaic. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicFlag(void* hDraw, uint32_t flag);

/** Strength of the mosaic; each backend's steps are in docs/guide.md. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicLevel(void* hDraw, uint32_t level);

/** The mosaic rectangle as fractions 0 to 1 of the client area, in this order. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicAreaScale(void* hDraw, float top, float left, float bottom,
                                                            float right);

/** Direct3D 9: not 0 keeps the rectangle being drawn as a further mosaic; 0 deletes the one picked by
 * NIVRAL_DWSetRClickPt. No effect on the other backends. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWUpdateMosaics(void* hDraw, uint32_t commit);

/** Direct3D 9: picks the kept mosaic under a point of the displayed picture (per mille); 0 when there is one,
 * 1 when not. Other backends store the point and return 0. 1 for a null handle. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetRClickPt(void* hDraw, POINT pt);

/** @} */

/** @defgroup algorithms Panes: results of driver algorithms
 * @{ */

/** Driver assistance: up to 12 boxes for one frame. Edges are 32-bit floats in video pixels, handed over in
 * arrays of 32-bit words. classId: 0 unknown, 1 person, 2 car, 3 bus, 4 truck, 5 minibus, 6 vehicle, 7
 * non-vehicle. value: line width in pixels. All arrays hold `count` entries and are copied. A count outside 1
 * to 12 is ignored. One record is taken per drawn frame, in order; a record is shown for at most a second
 * after the last one. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetAlgInfo(void* hDraw, int32_t count, const uint32_t* left,
                                                    const uint32_t* top, const uint32_t* right,
                                                    const uint32_t* bottom, const uint16_t* classId,
                                                    const uint16_t* distance, const uint16_t* third,
                                                    const uint16_t* fourth, uint16_t value);

/** Driver monitoring: up to 68 landmarks and 12 boxes (left, top, right, bottom) for one frame, as 32-bit
 * floats in video pixels. value: landmark radius in pixels. A point count outside 0 to 68 or a box count
 * above 12 makes the call have no effect. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDsmAlgInfo(void* hDraw, int32_t pointCount, const uint32_t* x,
                                                       const uint32_t* y, int32_t boxCount,
                                                       const uint32_t* left, const uint32_t* top,
                                                       const uint32_t* right, const uint32_t* bottom,
                                                       uint16_t value);

/** @} */

/** @defgroup registering Panes: callbacks
 *
 * Each registers a callback with a context of the client's, which must outlive the pane or the next
 * registration. Not while frames are being drawn on another thread.
 * @{ */

/** See NivralDecodeCallback. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDecCB(void* hDraw, void* user, NivralDecodeCallback callback);

/** See NivralDisplayCallback. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDisplayCB(void* hDraw, void* user,
                                                      NivralDisplayCallback callback);

/** See NivralFrameCallback. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDrawYUV420CB(void* hDraw, void* user,
                                                         NivralFrameCallback callback);

/** See NivralFlashWndCallback. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetFlashWndCB(void* hDraw, void* user,
                                                       NivralFlashWndCallback callback);

/** @} */

/** @defgroup colour Colour
 * @{ */

/** brightness -127 to 127, contrast and saturation -100 to 100, hue -180 to 180; 0 is neutral. Values out of
 * range are stored but switch the adjustment off. index 0 acts on the picture, 1 is only stored; other values
 * do nothing. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_SetColorParams(void* hDraw, int32_t brightness, int32_t contrast,
                                                      int32_t saturation, int32_t hue, int32_t index);

/** Reads record 0; null pointers are skipped. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_GetColorParams(void* hDraw, int32_t* brightness, int32_t* contrast,
                                                      int32_t* saturation, int32_t* hue);

/** Reads record `index`, 0 or 1; null pointers are skipped. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_GetColorParamsEx(void* hDraw, int32_t* brightness, int32_t* contrast,
                                                        int32_t* saturation, int32_t* hue, int32_t index);

/** The ranges above; null pointers are skipped. Always 0. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_GetColorParamsRange(int32_t* brightnessMin, int32_t* brightnessMax,
                                                           int32_t* contrastMin, int32_t* contrastMax,
                                                           int32_t* saturationMin, int32_t* saturationMax,
                                                           int32_t* hueMin, int32_t* hueMax);

/** @} */

/** @defgroup sound Sound
 * @{ */

/** Makes a player and stores its handle in *phWave. 0, or 1 when phWave is null or memory ran out. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVOpenWave(void** phWave);

/** Stops the player and frees it. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVCloseWave(void* hWave);

/** format: the 18 bytes of a WAVEFORMATEX without extra bytes, copied. bufferSize: bytes in each of the two
 * buffers (1280 at first). Neither is checked. Takes effect at the next NIVRAL_WVPlayWave. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVSetWaveFormat(void* hWave, const WAVEFORMATEX* format,
                                                       uint32_t bufferSize);

/** The function that PCM is pulled from; may be changed while playing. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVSetWriteWaveCB(void* hWave, void* user,
                                                        NivralWriteWaveCallback callback);

/** Starts the player's thread, unpaused; nothing happens while it runs. A device that cannot be opened is not
 * reported. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVPlayWave(void* hWave);

/** Not 0: zeros are played instead of the client's PCM, from the next buffer on. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVPauseWave(void* hWave, uint32_t paused);

/** Ends the player's thread and closes the device before it returns. Not to be called from the callback. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVStopWave(void* hWave);

/** Device volume in percent, 0 to 100; without effect while no device is open. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVSetVolume(void* hWave, uint16_t volume);

/** @} */

/** @defgroup conversion Colour-space conversion
 *
 * BT.601, limited range, stateless, on any thread. Always 0; arguments are not checked. Pictures are
 * converted in blocks of 2 x 2 pixels: an odd last column or row is left out.
 * @{ */

/** A bottom-up picture of 3 * width bytes a row (B, G, R) to planes. The chroma stride is strideY / 2. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_rgb24_to_yv12_c(uint8_t* pY, uint8_t* pU, uint8_t* pV,
                                                       const uint8_t* rgb, uint32_t width, uint32_t height,
                                                       uint32_t strideY);

/** Planes to B, G, R, top-down; a negative height (cast to uint32_t) turns the picture upside down. rgbStride
 * is in pixels. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_yv12_to_rgb24_c(uint8_t* rgb, uint32_t rgbStride, const uint8_t* pY,
                                                       const uint8_t* pU, const uint8_t* pV, uint32_t strideY,
                                                       uint32_t strideUV, uint32_t width, uint32_t height);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
