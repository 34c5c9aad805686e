// SPDX-License-Identifier: MIT
//
// libnivral from C++17, header only: objects that close what they open, callables as callbacks, results where
// a call can fail, a list of calls for the thread that draws, snapshots. Nothing throws, and exceptions and
// RTTI may be switched off. nivral.h says what each operation does, in which order and on which thread; only
// what differs is said here.
//
//   nivral::Library library(nivral::Start::kSdl2);
//   nivral::Display display;
//   if (!display.Open()) return 1;
//   display.SetWindow(window);
//   display.Init(1280, 720);
//   if (!display.OnFrame([&shown](const nivral::Frame&) { ++shown; })) return 1;
//   if (!display.Draw({y, 1280, u, v, 640})) ++refused;
//
// Objects move and are not copied; registered callables stay in place when their object moves. An object that
// was never opened, was closed or was moved from answers 1 to everything.
#ifndef NIVRAL_NIVRAL_HPP
#define NIVRAL_NIVRAL_HPP

#include <nivral/nivral.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <utility>

namespace nivral {

/// What the library answered: true for success. docs/guide.md lists the codes of the backends.
struct Result {
  uint32_t code;
  constexpr explicit operator bool() const noexcept { return code == 0; }
};

enum class Start : uint32_t { kDirect3D9OrDirectDraw = 0, kSdl2 = 1 };
enum class Backend : uint32_t { kSdl2 = 0, kDirect3D9 = 1, kDirectDraw = 2 };
enum class Mirror : uint32_t { kNone = 0, kFlip = 1, kHalfTurn = 2 };
enum class Anchor : uint32_t { kTop = 0, kBottom = 1 };
enum class ObjectClass : uint16_t {
  kUnknown = 0,
  kPerson = 1,
  kCar = 2,
  kBus = 3,
  kTruck = 4,
  kMinibus = 5,
  kVehicle = 6,
  kNonVehicle = 7
};

/// Planes of one frame, which are never written, and two values that travel to the callbacks.
struct Frame {
  const uint8_t* y;
  uint32_t strideY;
  const uint8_t* u;
  const uint8_t* v;
  uint32_t strideUV;
  uint32_t param1 = 0;
  int64_t param2 = 0;
};

/// What a decode callback gets.
struct DecodedFrame {
  const uint8_t* y;
  uint32_t strideY;
  uint32_t width;
  uint32_t height;
  int64_t param2;
  uint32_t format;
};

/// What a display callback gets.
struct ComposedFrame {
  int32_t index;
  HDC dc;
  uint32_t width;
  uint32_t height;
  int64_t param2;
  int32_t clientWidth;
  int32_t clientHeight;
  Mirror mirror;
};

struct ColorParams {
  int32_t brightness;
  int32_t contrast;
  int32_t saturation;
  int32_t hue;
};

struct ColorRange {
  ColorParams lowest;
  ColorParams highest;
};

/// In video pixels.
struct Landmark {
  float x;
  float y;
};

/// In video pixels.
struct Box {
  float left;
  float top;
  float right;
  float bottom;
};

struct LabelledBox {
  Box box;
  ObjectClass objectClass;
  uint16_t distance;  ///< tenths of a metre, 0 for none
  uint16_t third = 0;
  uint16_t fourth = 0;
};

namespace detail {

constexpr Result kFailed{1};

/// The callables of one object. Each stays where it is, however its owner moves, and until the owner is
/// closed even when another took its place: a thread of the library may still be in it.
class Callables {
 public:
  /// Null when memory ran out.
  template <class Callable>
  Callable* Keep(Callable callable) noexcept {
    auto* kept = new (std::nothrow) Holder<Callable>(std::move(callable));
    if (!kept) return nullptr;
    kept->older = std::move(m_newest);
    m_newest.reset(kept);
    return &kept->callable;
  }

  /// One by one: left to their destructors, they would nest.
  void Clear() noexcept {
    while (m_newest)
      m_newest = std::move(m_newest->older);
  }

 private:
  struct Link {
    virtual ~Link() = default;
    std::unique_ptr<Link> older;
  };
  template <class Callable>
  struct Holder final : Link {
    explicit Holder(Callable c) : callable(std::move(c)) {}
    Callable callable;
  };

  std::unique_ptr<Link> m_newest;
};

/// A handle of the library and the callables registered on it.
template <class Traits>
class Object {
 public:
  Object() = default;
  Object(Object&& other) noexcept
      : m_handle(std::exchange(other.m_handle, nullptr)), m_callables(std::move(other.m_callables)) {}
  Object& operator=(Object&& other) noexcept {
    if (this != &other) {
      Close();
      m_handle = std::exchange(other.m_handle, nullptr);
      m_callables = std::move(other.m_callables);
    }
    return *this;
  }
  ~Object() { Close(); }

  /// Closes the handle, which ends the threads that the library runs for it, and then destroys the callables.
  void Close() noexcept {
    if (m_handle) Traits::Close(std::exchange(m_handle, nullptr));
    m_callables.Clear();
  }

  explicit operator bool() const noexcept { return m_handle != nullptr; }
  /// For the C functions; still this object's.
  void* Handle() const noexcept { return m_handle; }

 protected:
  template <class OpenHandle>
  Result OpenWith(OpenHandle open) noexcept {
    Close();
    return {open(&m_handle)};
  }

  /// Keeps `callable` and registers `trampoline` with it as context.
  template <class SetCallback, class Function, class Callable>
  Result Register(SetCallback set, Function trampoline, Callable callable) noexcept {
    if (!m_handle) return kFailed;
    Callable* kept = m_callables.Keep(std::move(callable));
    return kept ? Result{set(m_handle, kept, trampoline)} : kFailed;
  }

 private:
  void* m_handle = nullptr;
  Callables m_callables;
};

struct DisplayTraits {
  static void Close(void* handle) noexcept { NIVRAL_DWCloseDraw(handle); }
};
struct WaveTraits {
  static void Close(void* handle) noexcept { NIVRAL_WVCloseWave(handle); }
};

constexpr int32_t kMaxBoxes = 12;
constexpr int32_t kMaxLandmarks = 68;

inline uint32_t Bits(float value) noexcept {
  uint32_t bits;
  std::memcpy(&bits, &value, sizeof(bits));
  return bits;
}

struct BoxColumns {
  uint32_t left[kMaxBoxes];
  uint32_t top[kMaxBoxes];
  uint32_t right[kMaxBoxes];
  uint32_t bottom[kMaxBoxes];

  void Set(int32_t row, const Box& box) noexcept {
    left[row] = Bits(box.left);
    top[row] = Bits(box.top);
    right[row] = Bits(box.right);
    bottom[row] = Bits(box.bottom);
  }
};

}  // namespace detail

/// Start-up and shut-down of the process. One object, made before the first display and destroyed after the
/// last.
class Library {
 public:
  explicit Library(Start start) noexcept { NIVRAL_InitializeEx(static_cast<uint32_t>(start)); }
  ~Library() { NIVRAL_UnInitialize(); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
};

/// A video pane.
///
/// The On... functions register a callable and replace the one before; nullptr unregisters. A callable must
/// not throw (that ends the program) and must not close, move or destroy the display that calls it. It is
/// destroyed when the display is closed, not before.
class Display : public detail::Object<detail::DisplayTraits> {
 public:
  /// On the backend that start-up chose. Closes what was open.
  [[nodiscard]] Result Open() noexcept {
    return OpenWith([](void** handle) { return NIVRAL_DWOpenDraw(handle); });
  }
  [[nodiscard]] Result Open(Backend backend) noexcept {
    return OpenWith(
        [backend](void** handle) { return NIVRAL_DWOpenDrawEx(handle, static_cast<uint32_t>(backend)); });
  }

  Result SetWindow(HWND window) noexcept { return {NIVRAL_DWSetHwnd(Handle(), window)}; }
  Result Init(uint32_t width, uint32_t height) noexcept {
    return {NIVRAL_DWInitDraw(Handle(), width, height, 0)};
  }
  /// Gives the window back and keeps the settings and callbacks.
  Result Free() noexcept { return {NIVRAL_DWFreeDraw(Handle())}; }

  /// The backend's code for one frame: success when it was presented, or taken by DirectDraw's worker.
  [[nodiscard]] Result Draw(const Frame& frame) noexcept {
    return {NIVRAL_DWDrawYUV420(Handle(), const_cast<uint8_t*>(frame.y), frame.strideY,
                                const_cast<uint8_t*>(frame.u), const_cast<uint8_t*>(frame.v), frame.strideUV,
                                frame.param1, frame.param2)};
  }

  Result WindowResized() noexcept { return {NIVRAL_DWAdjustedWnd(Handle())}; }
  Result SetPlayRect(const RECT& rect) noexcept { return {NIVRAL_DWSetPlayRect(Handle(), &rect)}; }
  Result SetZoom(uint32_t x, uint32_t y, uint32_t factor) noexcept {
    return {NIVRAL_DWSetZoom(Handle(), x, y, factor)};
  }
  Result SetMirror(Mirror mirror) noexcept {
    return {NIVRAL_DWSetMirrorMode(Handle(), static_cast<uint32_t>(mirror))};
  }
  Result SetIndex(int32_t index) noexcept { return {NIVRAL_DWSetIndex(Handle(), index)}; }
  Result SetPause(bool paused) noexcept { return {NIVRAL_DWSetPause(Handle(), paused)}; }

  Result SetText(int32_t index, const char* text, uint32_t x, uint32_t y, COLORREF colour,
                 Anchor anchor = Anchor::kTop) noexcept {
    return {NIVRAL_DWSetOSDText(Handle(), index, text, x, y, static_cast<uint32_t>(anchor), colour)};
  }
  Result RemoveText(int32_t index) noexcept { return SetText(index, "", 0, 0, 0); }

  Result ShowMosaic(bool shown) noexcept { return {NIVRAL_DWSetMosaicFlag(Handle(), shown)}; }
  Result SetMosaicLevel(uint32_t level) noexcept { return {NIVRAL_DWSetMosaicLevel(Handle(), level)}; }
  /// Client pixels. Not on Direct3D 9.
  Result SetMosaicRect(const RECT& rect) noexcept {
    return {NIVRAL_DWSetMosaics(Handle(), reinterpret_cast<const uint8_t*>(&rect))};
  }
  /// Fractions of the client area, on every backend.
  Result SetMosaicArea(float top, float left, float bottom, float right) noexcept {
    return {NIVRAL_DWSetMosaicAreaScale(Handle(), top, left, bottom, right)};
  }
  Result KeepMosaic() noexcept { return {NIVRAL_DWUpdateMosaics(Handle(), 1)}; }
  Result DeletePickedMosaic() noexcept { return {NIVRAL_DWUpdateMosaics(Handle(), 0)}; }
  /// Direct3D 9: never a success, as no function makes mosaics to keep; the others: always.
  [[nodiscard]] Result PickMosaic(POINT point) noexcept { return {NIVRAL_DWSetRClickPt(Handle(), point)}; }

  /// Driver assistance. A count outside 1 to 12 is ignored, as in C.
  Result SetAssistance(const LabelledBox* boxes, int32_t count, uint16_t lineWidth) noexcept {
    detail::BoxColumns edges;
    uint16_t classId[detail::kMaxBoxes];
    uint16_t distance[detail::kMaxBoxes];
    uint16_t third[detail::kMaxBoxes];
    uint16_t fourth[detail::kMaxBoxes];
    for (int32_t i = 0; i < count && i < detail::kMaxBoxes; ++i) {
      edges.Set(i, boxes[i].box);
      classId[i] = static_cast<uint16_t>(boxes[i].objectClass);
      distance[i] = boxes[i].distance;
      third[i] = boxes[i].third;
      fourth[i] = boxes[i].fourth;
    }
    return {NIVRAL_DWSetAlgInfo(Handle(), count, edges.left, edges.top, edges.right, edges.bottom, classId,
                                distance, third, fourth, lineWidth)};
  }

  /// The record of a frame in which nothing was found.
  Result ClearAssistance() noexcept {
    const LabelledBox unseen{{0, 65535, 0, -1}, ObjectClass::kUnknown, 0};
    return SetAssistance(&unseen, 1, 0);
  }

  /// Driver monitoring. Counts out of range make the call have no effect, as in C.
  Result SetMonitoring(const Landmark* landmarks, int32_t landmarkCount, const Box* boxes, int32_t boxCount,
                       uint16_t radius) noexcept {
    uint32_t x[detail::kMaxLandmarks];
    uint32_t y[detail::kMaxLandmarks];
    for (int32_t i = 0; i < landmarkCount && i < detail::kMaxLandmarks; ++i) {
      x[i] = detail::Bits(landmarks[i].x);
      y[i] = detail::Bits(landmarks[i].y);
    }
    detail::BoxColumns edges;
    for (int32_t i = 0; i < boxCount && i < detail::kMaxBoxes; ++i)
      edges.Set(i, boxes[i]);
    return {NIVRAL_DWSetDsmAlgInfo(Handle(), landmarkCount, x, y, boxCount, edges.left, edges.top,
                                   edges.right, edges.bottom, radius)};
  }

  /// void(const Frame&)
  template <class Callable>
  [[nodiscard]] Result OnFrame(Callable callable) noexcept {
    return Register(NIVRAL_DWSetDrawYUV420CB, &CallFrame<Callable>, std::move(callable));
  }
  Result OnFrame(std::nullptr_t) noexcept { return {NIVRAL_DWSetDrawYUV420CB(Handle(), nullptr, nullptr)}; }

  /// void(const DecodedFrame&)
  template <class Callable>
  [[nodiscard]] Result OnDecode(Callable callable) noexcept {
    return Register(NIVRAL_DWSetDecCB, &CallDecode<Callable>, std::move(callable));
  }
  Result OnDecode(std::nullptr_t) noexcept { return {NIVRAL_DWSetDecCB(Handle(), nullptr, nullptr)}; }

  /// void(const ComposedFrame&)
  template <class Callable>
  [[nodiscard]] Result OnDisplay(Callable callable) noexcept {
    return Register(NIVRAL_DWSetDisplayCB, &CallDisplay<Callable>, std::move(callable));
  }
  Result OnDisplay(std::nullptr_t) noexcept { return {NIVRAL_DWSetDisplayCB(Handle(), nullptr, nullptr)}; }

  /// void(HWND window, int32_t clientWidth, int32_t clientHeight)
  template <class Callable>
  [[nodiscard]] Result OnExposed(Callable callable) noexcept {
    return Register(NIVRAL_DWSetFlashWndCB, &CallExposed<Callable>, std::move(callable));
  }
  Result OnExposed(std::nullptr_t) noexcept { return {NIVRAL_DWSetFlashWndCB(Handle(), nullptr, nullptr)}; }

  Result SetColor(const ColorParams& params, int32_t index = 0) noexcept {
    return {NIVRAL_SetColorParams(Handle(), params.brightness, params.contrast, params.saturation, params.hue,
                                  index)};
  }
  /// Nothing when the display is not open; zeros for an index that does not exist.
  [[nodiscard]] std::optional<ColorParams> Color(int32_t index = 0) const noexcept {
    ColorParams params{};
    if (NIVRAL_GetColorParamsEx(Handle(), &params.brightness, &params.contrast, &params.saturation,
                                &params.hue, index) != 0)
      return std::nullopt;
    return params;
  }
  static ColorRange ColorLimits() noexcept {
    ColorRange range{};
    NIVRAL_GetColorParamsRange(&range.lowest.brightness, &range.highest.brightness, &range.lowest.contrast,
                               &range.highest.contrast, &range.lowest.saturation, &range.highest.saturation,
                               &range.lowest.hue, &range.highest.hue);
    return range;
  }

 private:
  template <class Callable>
  static void NIVRAL_CALL CallFrame(uint8_t* y, uint32_t strideY, uint8_t* u, uint8_t* v, uint32_t strideUV,
                                    uint32_t param1, int64_t param2, void* user) noexcept {
    (*static_cast<Callable*>(user))(Frame{y, strideY, u, v, strideUV, param1, param2});
  }

  template <class Callable>
  static void NIVRAL_CALL CallDecode(uint8_t* y, uint32_t strideY, uint32_t width, uint32_t height,
                                     int64_t param2, uint32_t format, void* user) noexcept {
    (*static_cast<Callable*>(user))(DecodedFrame{y, strideY, width, height, param2, format});
  }

  template <class Callable>
  static void NIVRAL_CALL CallDisplay(int32_t index, void* hdc, uint32_t width, uint32_t height,
                                      int64_t param2, int32_t clientWidth, int32_t clientHeight,
                                      uint32_t mirrorMode, void* user) noexcept {
    (*static_cast<Callable*>(user))(ComposedFrame{index, static_cast<HDC>(hdc), width, height, param2,
                                                  clientWidth, clientHeight,
                                                  static_cast<Mirror>(mirrorMode)});
  }

  template <class Callable>
  static void NIVRAL_CALL CallExposed(void* user, HWND window, int32_t clientWidth,
                                      int32_t clientHeight) noexcept {
    (*static_cast<Callable*>(user))(window, clientWidth, clientHeight);
  }
};

/// A player of PCM sound.
class WavePlayer : public detail::Object<detail::WaveTraits> {
 public:
  /// Closes what was open.
  [[nodiscard]] Result Open() noexcept {
    return OpenWith([](void** handle) { return NIVRAL_WVOpenWave(handle); });
  }

  Result SetFormat(const WAVEFORMATEX& format, uint32_t bufferSize) noexcept {
    return {NIVRAL_WVSetWaveFormat(Handle(), &format, bufferSize)};
  }

  /// int(uint8_t* buffer, int size): bytes written. Runs on the player's thread and must not throw, nor stop,
  /// close, move or destroy the player. Lives until the player is closed, also when another has replaced it.
  template <class Callable>
  [[nodiscard]] Result OnWrite(Callable callable) noexcept {
    return Register(NIVRAL_WVSetWriteWaveCB, &CallWrite<Callable>, std::move(callable));
  }
  Result OnWrite(std::nullptr_t) noexcept { return {NIVRAL_WVSetWriteWaveCB(Handle(), nullptr, nullptr)}; }

  Result Play() noexcept { return {NIVRAL_WVPlayWave(Handle())}; }
  Result Pause(bool paused) noexcept { return {NIVRAL_WVPauseWave(Handle(), paused)}; }
  Result Stop() noexcept { return {NIVRAL_WVStopWave(Handle())}; }
  Result SetVolume(uint16_t percent) noexcept { return {NIVRAL_WVSetVolume(Handle(), percent)}; }

 private:
  template <class Callable>
  static int NIVRAL_CALL CallWrite(uint8_t* buffer, int size, void* user) noexcept {
    return (*static_cast<Callable*>(user))(buffer, size);
  }
};

/// Calls on one display, made one after the other: any thread adds them, and the thread that draws runs them
/// before its next frame. A Direct3D 9 display needs this, since none of its calls may overlap; the others
/// bear it. Not for Init, Free and Close, which belong to the window's thread while nobody draws.
///
///   if (!jobs.Add([](nivral::Display& display) { display.SetMirror(nivral::Mirror::kFlip); })) return 1;
///   jobs.Run(display);  // on the thread that draws, pause among the jobs: then the record unless paused
///   shown = display.Draw(frame);
class JobList {
 public:
  JobList() = default;
  JobList(const JobList&) = delete;
  JobList& operator=(const JobList&) = delete;
  /// Jobs that nobody ran are destroyed.
  ~JobList() {
    for (auto job = Take(); job;)
      job = std::move(job->next);
  }

  /// void(Display&). Must not throw. False when memory ran out.
  template <class Callable>
  [[nodiscard]] bool Add(Callable callable) noexcept {
    auto* job = new (std::nothrow) Holder<Callable>(std::move(callable));
    if (!job) return false;
    AcquireSRWLockExclusive(&m_lock);
    (m_last ? m_last->next : m_first).reset(job);
    m_last = job;
    ReleaseSRWLockExclusive(&m_lock);
    return true;
  }

  /// Runs what was added before, in that order. No lock is held meanwhile: a job may add another, which waits
  /// for the next call.
  void Run(Display& display) noexcept {
    for (auto job = Take(); job; job = std::move(job->next))
      job->Run(display);
  }

 private:
  struct Job {
    virtual ~Job() = default;
    virtual void Run(Display& display) = 0;
    std::unique_ptr<Job> next;
  };
  template <class Callable>
  struct Holder final : Job {
    explicit Holder(Callable c) : callable(std::move(c)) {}
    void Run(Display& display) override { callable(display); }
    Callable callable;
  };

  std::unique_ptr<Job> Take() noexcept {
    AcquireSRWLockExclusive(&m_lock);
    auto jobs = std::move(m_first);
    m_last = nullptr;
    ReleaseSRWLockExclusive(&m_lock);
    return jobs;
  }

  SRWLOCK m_lock = SRWLOCK_INIT;
  std::unique_ptr<Job> m_first;
  Job* m_last = nullptr;
};

enum class Rows { kTopDown, kBottomUp };

/// Pixels of 3 bytes (B, G, R) with `stride` pixels from row to row. An odd last column or row is left out.
inline void ToBgr24(const Frame& frame, uint32_t width, uint32_t height, uint8_t* bgr, uint32_t stride,
                    Rows rows = Rows::kTopDown) noexcept {
  NIVRAL_yv12_to_rgb24_c(bgr, stride, frame.y, frame.u, frame.v, frame.strideY, frame.strideUV, width,
                         rows == Rows::kTopDown ? height : 0U - height);
}

/// From bottom-up rows of exactly 3 * width bytes. Rows of u and v are strideY / 2 bytes apart.
inline void FromBgr24(const uint8_t* bgr, uint32_t width, uint32_t height, uint8_t* y, uint8_t* u, uint8_t* v,
                      uint32_t strideY) noexcept {
  NIVRAL_rgb24_to_yv12_c(y, u, v, bgr, width, height, strideY);
}

namespace detail {

constexpr DWORD kBmpHeaders = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);

inline void FillBmp(uint8_t* file, DWORD size, const Frame& frame, uint32_t width, uint32_t height) noexcept {
  BITMAPFILEHEADER fileHeader{};
  fileHeader.bfType = 0x4D42;
  fileHeader.bfSize = size;
  fileHeader.bfOffBits = kBmpHeaders;
  BITMAPINFOHEADER picture{};
  picture.biSize = sizeof(picture);
  picture.biWidth = static_cast<LONG>(width);
  picture.biHeight = static_cast<LONG>(height);
  picture.biPlanes = 1;
  picture.biBitCount = 24;
  std::memcpy(file, &fileHeader, sizeof(fileHeader));
  std::memcpy(file + sizeof(fileHeader), &picture, sizeof(picture));
  uint8_t* pixels = file + kBmpHeaders;
  ToBgr24(frame, width, height, pixels, width, Rows::kBottomUp);
  // Rows of the file are whole multiples of four bytes; from the last one on, none meets what is still to
  // move.
  const size_t packedRow = size_t{3} * width;
  const size_t fileRow = (size - kBmpHeaders) / height;
  for (size_t row = height; fileRow != packedRow && row-- > 0;) {
    std::memmove(pixels + row * fileRow, pixels + row * packedRow, packedRow);
    std::memset(pixels + row * fileRow + packedRow, 0, fileRow - packedRow);
  }
}

inline bool WriteFile(const wchar_t* path, const uint8_t* bytes, DWORD size) noexcept {
  const HANDLE file =
      CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool complete = ::WriteFile(file, bytes, size, &written, nullptr) && written == size;
  return CloseHandle(file) && complete;
}

}  // namespace detail

/// Writes a frame as a 24-bit BMP file, without an odd last column or row. It is the picture without
/// overlays: as decoded, or in a callable of OnFrame as it was shown, mirrored and adjusted. False, and no
/// file, for planes that hold no picture, as those of a refused frame.
[[nodiscard]] inline bool SaveBmp(const wchar_t* path, const Frame& frame, uint32_t width,
                                  uint32_t height) noexcept {
  width &= ~1U;
  height &= ~1U;
  const uint64_t row = (uint64_t{3} * width + 3) & ~uint64_t{3};
  if (width == 0 || height == 0 || row > (0x7FFFFFFFU - detail::kBmpHeaders) / height) return false;
  if (!frame.y || !frame.u || !frame.v || frame.strideY < width || frame.strideUV < width / 2) return false;
  const auto size = static_cast<DWORD>(detail::kBmpHeaders + row * height);
  const std::unique_ptr<uint8_t[]> file(new (std::nothrow) uint8_t[size]);
  if (!file) return false;
  detail::FillBmp(file.get(), size, frame, width, height);
  return detail::WriteFile(path, file.get(), size);
}

}  // namespace nivral

#endif
