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
 * Results. 0 means that the call reached the object behind the handle, not that the object could do what was
 * asked: whether a pane draws is told by NIVRAL_DWDrawYUV420. 1 means a null handle or, rarely, that memory
 * ran out in the call; only NIVRAL_DWDrawYUV420, NIVRAL_DWSetRClickPt and NIVRAL_UnInitialize also use it
 * otherwise. Handles are not validated beyond that: a closed or foreign handle is undefined behaviour. No
 * exception leaves the library.
 *
 * Ownership. The client owns its windows, frame buffers and callback contexts. Arrays, texts and structures
 * are copied during the call. Nothing returned by the library is freed by the client; closing a handle frees
 * all behind it.
 *
 * Threads. Each function names the thread it belongs to:
 * - start-up: one thread of the client's, the same for all functions that say so;
 * - window: the thread that made the pane's window and handles its messages;
 * - feeding: one thread per pane at a time, usually the decoder's;
 * - any: every thread, also while another one feeds frames; what is set acts from the next frame. These calls
 *   do not wait for a frame being drawn.
 *
 * No call may be in flight on a handle that is being closed. On a Direct3D 9 pane no two calls may overlap,
 * whatever their threads; NIVRAL_DWAdjustedWnd alone may. Calls that belong to the window thread may wait for
 * the frame being drawn; that thread goes on receiving messages that other threads send to its windows
 * meanwhile. Made while the thread handles such a message, they do not wait for a busy SDL2 pane: what they
 * ask for is done right after.
 *
 * Units. Widths and heights are pixels, strides bytes from row to row. Video pixels count in the size given
 * to NIVRAL_DWInitDraw, client pixels in the client area of the window. The picture always fills the client
 * area (on DirectDraw the play rectangle): its aspect ratio is the client's affair. Colours are COLORREF
 * values, 0x00BBGGRR. Texts are in the system's ANSI code page.
 */
#ifndef NIVRAL_NIVRAL_H
#define NIVRAL_NIVRAL_H

#include <stdint.h>
#include <windows.h>
/* mmeapi.h is left out by windows.h under WIN32_LEAN_AND_MEAN; mmsystem.h brings WAVEFORMATEX either way. */
#include <mmsystem.h>

/** The version that this header belongs to; the DLL's version resource says which one is loaded. */
#define NIVRAL_VERSION_MAJOR 0
/** See NIVRAL_VERSION_MAJOR. */
#define NIVRAL_VERSION_MINOR 1
/** See NIVRAL_VERSION_MAJOR. */
#define NIVRAL_VERSION_PATCH 0
/** The three as one number that grows with them. */
#define NIVRAL_VERSION (NIVRAL_VERSION_MAJOR * 10000 + NIVRAL_VERSION_MINOR * 100 + NIVRAL_VERSION_PATCH)

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
 * except in NivralFlashWndCallback, where it is the first. A null function unregisters. A callback must not
 * throw and must not close the handle that calls it.
 * @{ */

/** After every frame, shown or refused, on the thread that feeds it.
 *
 * @param pY, pU, pV the planes that went to the backend: the client's own, or a copy when the picture is
 *        mirrored or colour-adjusted. Without texts, mosaic and boxes. Valid during the call.
 * @param strideY, strideUV bytes from row to row
 * @param param1, param2 the frame's own
 * @param user the client's context */
typedef void(NIVRAL_CALL* NivralFrameCallback)(uint8_t* pY, uint32_t strideY, uint8_t* pU, uint8_t* pV,
                                               uint32_t strideUV, uint32_t param1, int64_t param2,
                                               void* user);

/** SDL2, DirectDraw: after a frame, on the thread that feeds it. Direct3D 9 never calls it.
 * - SDL2: for each frame that the pane tried to draw, also when that failed (graphics failure, planes missing
 *   or too small). Not before NIVRAL_DWInitDraw, after NIVRAL_DWFreeDraw or with a hidden window.
 * - DirectDraw: for each frame that was answered 0.
 *
 * @param pY, strideY the luma plane that went to the backend, on SDL2 null where the client's was; valid
 *        during the call
 * @param width, height of the video, in pixels
 * @param param2 the frame's own
 * @param format 3, planar YUV 4:2:0
 * @param user the client's context */
typedef void(NIVRAL_CALL* NivralDecodeCallback)(uint8_t* pY, uint32_t strideY, uint32_t width,
                                                uint32_t height, int64_t param2, uint32_t format, void* user);

/** DirectDraw only, on the pane's worker thread, when a frame is composed and not yet on the screen; also
 * when the last frame is shown again after a change of the window. NIVRAL_DWInitDraw and NIVRAL_DWFreeDraw of
 * the same pane do nothing there.
 *
 * @param index the number given to NIVRAL_DWSetIndex, -1 without
 * @param hdc a GDI device context (HDC) in client pixels, valid during the call: what is drawn appears over
 *        the video, texts and boxes
 * @param width, height of the video, in pixels
 * @param param2 the composed frame's own
 * @param clientWidth, clientHeight of the window's client area, in pixels
 * @param mirrorMode as given to NIVRAL_DWSetMirrorMode
 * @param user the client's context */
typedef void(NIVRAL_CALL* NivralDisplayCallback)(int32_t index, void* hdc, uint32_t width, uint32_t height,
                                                 int64_t param2, int32_t clientWidth, int32_t clientHeight,
                                                 uint32_t mirrorMode, void* user);

/** SDL2 only, on the window thread, from its message loop, when a part of the window was exposed after a
 * frame had been shown: the client may draw its last frame again. Several exposures may arrive as one call;
 * none comes after NIVRAL_DWFreeDraw or NIVRAL_DWCloseDraw.
 *
 * @param user the client's context
 * @param playWnd the pane's window
 * @param clientWidth, clientHeight of its client area, in pixels */
typedef void(NIVRAL_CALL* NivralFlashWndCallback)(void* user, HWND playWnd, int32_t clientWidth,
                                                  int32_t clientHeight);

/** On the player's own thread, once per buffer that the device has given back. Lets no exception out.
 *
 * @param buffer where to write PCM; every call of one buffer gets the buffer's start
 * @param size the buffer's bytes; write no more
 * @param user the client's context
 * @return the bytes written. The player asks again, at once, until the answers add up to `size`; zero or less
 *         means "nothing yet". */
typedef int(NIVRAL_CALL* NivralWriteWaveCallback)(uint8_t* buffer, int size, void* user);

/** @} */

/** @defgroup startup Start-up
 * @{ */

/** NIVRAL_InitializeEx with the choice made before (0 at first). Thread: start-up.
 * @return 0 */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_Initialize(void);

/** Chooses the backend of NIVRAL_DWOpenDraw for the whole process. Call it before opening panes; calling it
 * again repeats the choice. An SDL2 pane needs bUseSDL not 0 once, also when it is opened by type. Thread:
 * start-up.
 *
 * @param bUseSDL not 0: starts SDL2, which panes then use. 0: tries a small Direct3D 9 device; where that
 *        works panes use Direct3D 9, else DirectDraw.
 * @return 0, also when SDL2 could not be started or no device could be made */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_InitializeEx(uint32_t bUseSDL);

/** Shuts SDL2 down, when it is the choice of the process. Close all panes first: one that is still open
 * refuses frames, until SDL2 is started and NIVRAL_DWInitDraw called again. Thread: start-up.
 *
 * @return 0 when SDL2 is the choice, also after a fall-back to it; 1 otherwise, and then nothing was done */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_UnInitialize(void);

/** @} */

/** @defgroup opening Panes: opening and closing
 * @{ */

/** Opens a pane on the backend that start-up chose. Thread: start-up.
 *
 * @param phDraw receives the handle, on success only
 * @return 0; 1 when phDraw is null or memory ran out */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWOpenDraw(void** phDraw);

/** Opens a pane on a given backend. Thread: start-up.
 *
 * @param phDraw receives the handle, on success only
 * @param type 0 SDL2, 1 Direct3D 9, any other value DirectDraw. Where `d3d9.dll` is missing, 1
 *        opens an SDL2 pane, starts SDL2 and makes it the choice of the process.
 * @return 0; 1 when phDraw is null or memory ran out */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWOpenDrawEx(void** phDraw, uint32_t type);

/** NIVRAL_DWFreeDraw, then frees the pane. Thread: window.
 *
 * @param hDraw the pane; invalid afterwards
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWCloseDraw(void* hDraw);

/** Releases the drawing resources; the pane keeps its window, settings and callbacks, and NIVRAL_DWInitDraw
 * makes it draw again. Thread: window.
 * - SDL2: frames in between answer 1. The window is shown (SW_SHOW) and asked to paint itself.
 * - Direct3D 9: the next frame makes everything anew, without NIVRAL_DWInitDraw. The last picture stays until
 *   something paints over it.
 * - DirectDraw: frames in between answer 0x2001. The window is asked to paint itself.
 *
 * @param hDraw the pane
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWFreeDraw(void* hDraw);

/** @} */

/** @defgroup frames Panes: window, size and frames
 * @{ */

/** Binds the pane to a window of the client, which stays the client's. One window belongs to one pane. To
 * move a pane to another window: NIVRAL_DWFreeDraw, NIVRAL_DWSetHwnd, NIVRAL_DWInitDraw. Thread: window.
 * - SDL2: shows the window (SW_SHOW). Frames are refused until NIVRAL_DWFreeDraw, if the pane has drawn, and
 *   NIVRAL_DWInitDraw.
 * - Direct3D 9: takes effect with the next NIVRAL_DWInitDraw or frame after NIVRAL_DWFreeDraw.
 * - DirectDraw: takes effect at once; the last frame is shown in the new window.
 *
 * @param hDraw the pane
 * @param hwnd the window, or null for none
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetHwnd(void* hDraw, HWND hwnd);

/** NIVRAL_DWSetHwnd. Thread: window.
 *
 * @param hDraw the pane
 * @param hwnd the window, or null for none
 * @param param, flag ignored
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetHwndEx(void* hDraw, HWND hwnd, int64_t param, uint32_t flag);

/** Announces the video size and makes the drawing resources. Call it again when the size changes, with no
 * frame of the old size in flight; whatever comes of the call, frames after it are read in the new size.
 * Thread: window.
 * - SDL2: needs a live window, which it shows (SW_SHOW). The size that is in use already changes nothing, nor
 *   does a width or height of 0.
 * - Direct3D 9: needs a live window. A pane that draws keeps the old size's pixels, to which pictures of the
 *   new size are scaled and in which overlays are placed, unless it has drawn records; NIVRAL_DWFreeDraw
 *   first makes it anew.
 * - DirectDraw: needs no window. Sides up to 16384. The pane starts anew, also with the same size.
 *
 * @param hDraw the pane
 * @param width, height of the video in pixels, from 1 to what the graphics driver takes as a texture; even,
 *        as recorders have it: of an odd size Direct3D 9 and DirectDraw may show false colours, SDL2 does not
 * @param param ignored
 * @return 0 also when nothing could be made, which the next frame tells; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWInitDraw(void* hDraw, uint32_t width, uint32_t height,
                                                  uint32_t param);

/** Draws one frame of the size given to NIVRAL_DWInitDraw. Planes are read during the call only and never
 * written. SDL2 and Direct3D 9 return when the frame is presented; DirectDraw copies it for its worker, which
 * shows the newest frame it finds. Thread: feeding.
 *
 * All backends refuse planes that do not hold the frame: a null one, or a stride shorter than the plane's
 * row. A video one pixel wide or high has no chroma, its pU and pV may be null. A plane that lies bottom-up
 * in memory is given by its top row and a negative stride, (uint32_t)-1920 for instance.
 *
 * @param hDraw the pane
 * @param pY luma: height rows, strideY * height bytes in all
 * @param strideY bytes from row to row of pY, at least the width
 * @param pU, pV chroma: height / 2 rows of width / 2 samples each, rounded down, strideUV * (height / 2)
 *        bytes in all
 * @param strideUV bytes from row to row of pU and of pV, at least width / 2
 * @param param1 for the frame callback
 * @param param2 for the frame, decode and display callbacks
 * @return
 * - 0: presented (SDL2, Direct3D 9), or taken by the worker (DirectDraw). Direct3D 9 and DirectDraw answer 0
 *   for a hidden window too (one that IsWindowVisible denies; covered or minimised is not hidden), Direct3D 9
 *   also for one that is gone, as long as its device lives.
 * - 1: null handle. SDL2: before NIVRAL_DWInitDraw or after NIVRAL_DWFreeDraw, SDL2 not started or shut down,
 *   window hidden or gone, planes missing or too small, graphics failure.
 * - 0x2001: Direct3D 9: no device yet and none could be made. DirectDraw: before NIVRAL_DWInitDraw or after
 *   NIVRAL_DWFreeDraw, NIVRAL_DWInitDraw could make nothing, window gone.
 * - 0x2FFF: planes missing or too small (Direct3D 9, DirectDraw). Direct3D 9: strides other than the last
 *   frame's (the next frame draws), device lost. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWDrawYUV420(void* hDraw, uint8_t* pY, uint32_t strideY, uint8_t* pU,
                                                    uint8_t* pV, uint32_t strideUV, uint32_t param1,
                                                    int64_t param2);

/** Tells the pane that its window's client area has a new size: call it on WM_SIZE. Thread: any.
 * - SDL2: texts and boxes are placed anew, and a mosaic goes back to its fractions.
 * - Direct3D 9: no effect, so it may overlap other calls; the picture follows the window by itself.
 * - DirectDraw: shows the last frame again in the new size.
 *
 * @param hDraw the pane
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWAdjustedWnd(void* hDraw);

/** DirectDraw: the part of the client area to draw into, at once. No effect on the other backends, which fill
 * the client area. Thread: any.
 *
 * @param hDraw the pane
 * @param rect in client pixels; an empty one means the whole client area; null is ignored
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetPlayRect(void* hDraw, const RECT* rect);

/** Direct3D 9: digital zoom around a point of the displayed picture. Texts, boxes and landmarks stay where
 * they are. No effect on the other backends. Thread: any.
 *
 * @param hDraw the pane
 * @param x, y the point in per mille of the displayed picture, 0 to 1000
 * @param factor 1 (the whole picture) to 8. Above 8, and 8 once more, keeps the window and zooms by 8.
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetZoom(void* hDraw, uint32_t x, uint32_t y, uint32_t factor);

/** Mirrors the picture. Only the picture: texts, mosaic, boxes and landmarks keep their places, so a client
 * mirrors its records itself. Rows are turned in the length of their stride: what fills them up beyond the
 * picture comes into it, so mirrored frames want strides of width and width / 2. Thread: any.
 *
 * @param hDraw the pane
 * @param mode 0 none, 1 horizontal flip, 2 half turn; others show the picture as it is
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMirrorMode(void* hDraw, uint32_t mode);

/** The client's number for this pane. Thread: any.
 *
 * @param hDraw the pane
 * @param index any number; comes back in NivralDisplayCallback only
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetIndex(void* hDraw, int32_t index);

/** Holds the algorithm records: frames go on being drawn, with the record shown last. Thread: any; best the
 * one that sets the records, since a pause between a record and its frame leaves all later boxes one frame
 * late.
 *
 * @param hDraw the pane
 * @param paused not 0: the record being shown stays and no new ones are taken; 0: back to normal
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetPause(void* hDraw, uint32_t paused);

/** @} */

/** @defgroup overlays Panes: text and mosaic
 * @{ */

/** One of six lines of text over the video, which stays until it is changed. Thread: any.
 * - SDL2: x, y in client pixels; letters of 4 points per 60 pixels of the client area's height, at least 4.
 * - Direct3D 9: x, y in video pixels; letters a twentieth of the video's height.
 * - DirectDraw: x, y in video pixels; letters a twentieth of the drawn area's height.
 *
 * @param hDraw the pane
 * @param index 0 to 5; others are ignored
 * @param text at most 511 bytes are kept; empty or null removes the line
 * @param x, y upper left corner of the text; above 0x7FFFFFFF hides it on SDL2 and DirectDraw
 * @param anchor 1: y is measured upward from the bottom edge; others: from the top
 * @param colour 0x00BBGGRR
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetOSDText(void* hDraw, int32_t index, const char* text, uint32_t x,
                                                    uint32_t y, uint32_t anchor, uint32_t colour);

/** The privacy-mosaic rectangle in client pixels. Thread: any.
 * - SDL2: counts until NIVRAL_DWAdjustedWnd, which goes back to the fractions of NIVRAL_DWSetMosaicAreaScale
 *   when there are any.
 * - Direct3D 9: no effect; use NIVRAL_DWSetMosaicAreaScale.
 * - DirectDraw: counts until the next NIVRAL_DWSetMosaicAreaScale.
 *
 * @param hDraw the pane
 * @param cells 16 bytes, a RECT; null is ignored
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaics(void* hDraw, const uint8_t* cells);

/** Shows or hides the privacy mosaic. It is on the screen only: callbacks get clear planes. Thread: any.
 *
 * @param hDraw the pane
 * @param flag not 0 shows it. Direct3D 9: at zoom 1 only; a zoomed picture is not covered.
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicFlag(void* hDraw, uint32_t flag);

/** Strength of the privacy mosaic; docs/overlays.md shows which level hides what. Thread: any.
 * - SDL2, DirectDraw: blocks of 3 * level client pixels. A face w client pixels wide is hidden by level
 *   w / 12 + 1; where that is 5, 10, 20, 30 or 50, add 1, since these five stand for 1, 2, 3, 4 and 5. Blocks
 *   are not cut at the rectangle's right and bottom edges. 0 shows no mosaic.
 * - Direct3D 9: every level-th row of the video stands for those below it; columns stay sharp. Only the
 *   video's height or more hides: one row is left then. 0 and 1 hide nothing.
 *
 * @param hDraw the pane
 * @param level 1 to 5461; 0 at first
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicLevel(void* hDraw, uint32_t level);

/** The privacy-mosaic rectangle as fractions of the client area, which it follows. Works on all backends.
 * Thread: any.
 *
 * @param hDraw the pane
 * @param top, left, bottom, right 0 to 1, in this order
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicAreaScale(void* hDraw, float top, float left, float bottom,
                                                            float right);

/** Without effect on every backend: Direct3D 9 keeps or deletes mosaics that no function of this interface
 * can make. Thread: any.
 *
 * @param hDraw the pane
 * @param commit not 0 keeps the mosaic being made, 0 deletes the one picked
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWUpdateMosaics(void* hDraw, uint32_t commit);

/** Picks a mosaic kept by Direct3D 9, of which there are none: see NIVRAL_DWUpdateMosaics. Thread: any.
 *
 * @param hDraw the pane
 * @param pt a point of the displayed picture in per mille, 0 to 1000
 * @return Direct3D 9: 1, no mosaic there; SDL2, DirectDraw: 0. 1 for a null handle. */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetRClickPt(void* hDraw, POINT pt);

/** @} */

/** @defgroup algorithms Panes: results of driver algorithms
 *
 * Set one record per frame, before the frame that it belongs to: each frame handed to the pane takes the
 * oldest record waiting, also a frame that is refused or not shown. The newest 256 are kept waiting. Without
 * a new one the last record stays for less than a second; the very first one of a pane stays for one frame.
 * Driver assistance on DirectDraw has that second once only, from the pane's first frame without a record on;
 * after it each record stays for its own frame, so a client sets one for every frame or its boxes flicker. A
 * paused pane takes none and draws the last ones again.
 *
 * A frame in which nothing was found gets an empty record, which takes the last one off the picture: for
 * driver monitoring two counts of 0, for driver assistance one box with class 0, distance 0, left 0, top
 * 65535, right 0 and bottom -1, which no backend draws. No call drops records that wait; a frame without
 * planes, which is refused, takes one of each kind.
 * @{ */

/** Driver assistance: labelled boxes for one frame. Edges are the bits of 32-bit floats in video pixels, in
 * arrays of 32-bit words. The call has no effect when count is out of range or an array is null. Thread: any.
 *
 * @param hDraw the pane
 * @param count boxes, 1 to 12; the length of each array
 * @param left, top, right, bottom the edges
 * @param classId 0 unknown, 1 person, 2 car, 3 bus, 4 truck, 5 minibus, 6 vehicle, 7 non-vehicle
 * @param distance in tenths of a metre; 0 shows none
 * @param third, fourth kept, but nothing reads them
 * @param value line width in pixels of the client area (SDL2) or of the video (Direct3D 9); DirectDraw draws
 *        lines of one video pixel
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetAlgInfo(void* hDraw, int32_t count, const uint32_t* left,
                                                    const uint32_t* top, const uint32_t* right,
                                                    const uint32_t* bottom, const uint16_t* classId,
                                                    const uint16_t* distance, const uint16_t* third,
                                                    const uint16_t* fourth, uint16_t value);

/** Driver monitoring: landmarks and face boxes for one frame, as bits of 32-bit floats in video pixels. The
 * call has no effect when a count is out of range or an array that it needs is null. Thread: any.
 *
 * @param hDraw the pane
 * @param pointCount landmarks, 0 to 68; the length of x and y
 * @param x, y the landmarks; SDL2 and DirectDraw draw the first, third, fifth, ...
 * @param boxCount face boxes, up to 12; the length of the four edge arrays; negative counts as 0
 * @param left, top, right, bottom the boxes' edges
 * @param value radius of a landmark in pixels of the client area (SDL2, DirectDraw) or of the video
 *        (Direct3D 9); corners of boxes are as thick (Direct3D 9) or twice as thick (SDL2, DirectDraw)
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDsmAlgInfo(void* hDraw, int32_t pointCount, const uint32_t* x,
                                                       const uint32_t* y, int32_t boxCount,
                                                       const uint32_t* left, const uint32_t* top,
                                                       const uint32_t* right, const uint32_t* bottom,
                                                       uint16_t value);

/** @} */

/** @defgroup registering Panes: callbacks
 *
 * Each registers a callback with a context of the client's. The context must outlive the pane, or a later
 * registration and the frame that was in flight then, which may still call the old pair. Thread: any.
 * @{ */

/** Registers the decode callback.
 *
 * @param hDraw the pane
 * @param user handed back to the callback
 * @param callback see NivralDecodeCallback; null unregisters
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDecCB(void* hDraw, void* user, NivralDecodeCallback callback);

/** Registers the display callback.
 *
 * @param hDraw the pane
 * @param user handed back to the callback
 * @param callback see NivralDisplayCallback; null unregisters
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDisplayCB(void* hDraw, void* user,
                                                      NivralDisplayCallback callback);

/** Registers the frame callback.
 *
 * @param hDraw the pane
 * @param user handed back to the callback
 * @param callback see NivralFrameCallback; null unregisters
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetDrawYUV420CB(void* hDraw, void* user,
                                                         NivralFrameCallback callback);

/** Registers the window-flash callback.
 *
 * @param hDraw the pane
 * @param user handed back to the callback
 * @param callback see NivralFlashWndCallback; null unregisters
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_DWSetFlashWndCB(void* hDraw, void* user,
                                                       NivralFlashWndCallback callback);

/** @} */

/** @defgroup colour Colour
 * @{ */

/** Adjusts the picture's colours on every backend. One value out of range switches the whole adjustment off.
 * Thread: any.
 *
 * @param hDraw the pane
 * @param brightness -127 to 127, added to luma; 0 is neutral
 * @param contrast, saturation -100 to 100 percent; 0 is neutral
 * @param hue -180 to 180 degrees; 0 is neutral
 * @param index 0 acts on the picture, 1 is only stored; others do nothing
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_SetColorParams(void* hDraw, int32_t brightness, int32_t contrast,
                                                      int32_t saturation, int32_t hue, int32_t index);

/** NIVRAL_GetColorParamsEx of record 0. Thread: any.
 *
 * @param hDraw the pane
 * @param brightness, contrast, saturation, hue receive the values as they were set; null is skipped
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_GetColorParams(void* hDraw, int32_t* brightness, int32_t* contrast,
                                                      int32_t* saturation, int32_t* hue);

/** Reads a colour record. Thread: any.
 *
 * @param hDraw the pane
 * @param brightness, contrast, saturation, hue receive the values as they were set; null is skipped
 * @param index 0 or 1; for others nothing is written
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_GetColorParamsEx(void* hDraw, int32_t* brightness, int32_t* contrast,
                                                        int32_t* saturation, int32_t* hue, int32_t index);

/** The ranges of NIVRAL_SetColorParams. Thread: any, at any time.
 *
 * @param brightnessMin, brightnessMax receive -127 and 127; null is skipped
 * @param contrastMin, contrastMax receive -100 and 100; null is skipped
 * @param saturationMin, saturationMax receive -100 and 100; null is skipped
 * @param hueMin, hueMax receive -180 and 180; null is skipped
 * @return 0 */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_GetColorParamsRange(int32_t* brightnessMin, int32_t* brightnessMax,
                                                           int32_t* contrastMin, int32_t* contrastMax,
                                                           int32_t* saturationMin, int32_t* saturationMax,
                                                           int32_t* hueMin, int32_t* hueMax);

/** @} */

/** @defgroup sound Sound
 *
 * All calls but NIVRAL_WVCloseWave, which is the last, may come from any thread, also several at once. The
 * callback must not start, stop or close its own player.
 * @{ */

/** Makes a player. Thread: any.
 *
 * @param phWave receives the handle, on success only
 * @return 0; 1 when phWave is null or memory ran out */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVOpenWave(void** phWave);

/** Stops the player and frees it. Thread: any, with no other call on the player in flight.
 *
 * @param hWave the player; invalid afterwards
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVCloseWave(void* hWave);

/** The format of the PCM, from the next NIVRAL_WVPlayWave on. Not checked: a format or size that the device
 * refuses plays nothing. Thread: any.
 *
 * @param hWave the player
 * @param format the 18 bytes of a WAVEFORMATEX without extra bytes; null is ignored
 * @param bufferSize bytes in each of the two buffers, 1 to 0x7FFFFFFF, whole frames of the format; 1280 at
 *        first
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVSetWaveFormat(void* hWave, const WAVEFORMATEX* format,
                                                       uint32_t bufferSize);

/** The function that PCM is pulled from; may be changed while playing. A call under way ends with the old
 * pair. Thread: any.
 *
 * @param hWave the player
 * @param user handed back to the callback
 * @param callback see NivralWriteWaveCallback; null plays zero bytes
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVSetWriteWaveCB(void* hWave, void* user,
                                                        NivralWriteWaveCallback callback);

/** Starts the player's thread, which opens the default device, unpaused. Nothing happens while it plays
 * already. Two buffers of the constant byte 0x64 are heard first, at the volume that the device has; the
 * callback is asked for the third. Thread: any.
 *
 * @param hWave the player
 * @return 0 also when the device cannot be opened; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVPlayWave(void* hWave);

/** Pauses the client's PCM: zero bytes are played instead, from the next buffer on, which is silence for
 * 16-bit samples only. The callback is not asked for these, but for a buffer that it was asked for before it
 * is asked until that one is full: hand out silence, not 0, before and while pausing. Thread: any.
 *
 * @param hWave the player
 * @param paused not 0 pauses, 0 goes on
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVPauseWave(void* hWave, uint32_t paused);

/** Ends the player's thread and closes the device before it returns; waits for a callback that is running.
 * Thread: any but the player's own.
 *
 * @param hWave the player
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVStopWave(void* hWave);

/** Volume of this player, both channels alike. Without effect while its device is not open, and not
 * remembered: the first callback after NIVRAL_WVPlayWave is the earliest place. Thread: any.
 *
 * @param hWave the player
 * @param volume percent, 0 to 100; above, the arithmetic wraps
 * @return 0; 1 for a null handle */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_WVSetVolume(void* hWave, uint16_t volume);

/** @} */

/** @defgroup conversion Colour-space conversion
 *
 * BT.601, limited range, stateless, on any thread. Null pointers convert nothing; nothing else is checked.
 * Pictures are converted in blocks of 2 x 2 pixels: an odd last column or row is left out.
 * @{ */

/** A bottom-up picture of B, G, R bytes to planes.
 *
 * @param pY receives height rows, strideY bytes apart
 * @param pU, pV receive height / 2 rows, strideY / 2 bytes apart
 * @param rgb 3 * width bytes a row without padding, the lowest row first
 * @param width, height in pixels
 * @param strideY bytes from row to row of pY, at least the width
 * @return 0 */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_rgb24_to_yv12_c(uint8_t* pY, uint8_t* pU, uint8_t* pV,
                                                       const uint8_t* rgb, uint32_t width, uint32_t height,
                                                       uint32_t strideY);

/** Planes to a top-down picture of B, G, R bytes.
 *
 * @param rgb receives height rows
 * @param rgbStride from row to row of rgb, in pixels of 3 bytes (not bytes), at least the width
 * @param pY, pU, pV planes as in NIVRAL_DWDrawYUV420
 * @param strideY, strideUV bytes from row to row of pY, and of pU and pV
 * @param width in pixels
 * @param height in pixels; negative (cast to uint32_t) turns the picture upside down
 * @return 0 */
NIVRAL_API uint32_t NIVRAL_CALL NIVRAL_yv12_to_rgb24_c(uint8_t* rgb, uint32_t rgbStride, const uint8_t* pY,
                                                       const uint8_t* pU, const uint8_t* pV, uint32_t strideY,
                                                       uint32_t strideUV, uint32_t width, uint32_t height);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
