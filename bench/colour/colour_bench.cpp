// SPDX-License-Identifier: MIT
// Colour conversion, adjustment and mirror against libyuv, libswscale, libavfilter and plain code, one
// thread. Prints a table of ratios.
//   colour_bench [rounds] [part of the names of the cells wanted, as in "mirror mode 1/704"]
#include <libyuv.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "backends/yuvdraw/yuv2rgb.h"
#include "colour/convert.h"
#include "colour/filter_peer.h"
#include "colour/ratio_table.h"
#include "core/colour/reference.h"
#include "display/working_frame.h"
#include "util/cpu.h"

extern "C" {
#include <libswscale/swscale.h>
}

using namespace libnivral;

namespace {

struct Size {
  int width;
  int height;
  std::string Name() const { return std::to_string(width).append("x").append(std::to_string(height)); }
};
Ways g_ways;

constexpr Size kSizes[] = {{704, 576}, {1920, 1080}, {3840, 2160}};

struct FreeMemory {
  void operator()(uint8_t* memory) const { std::free(memory); }
};
/// Starts on a cache line, as decoders' frames do.
using Bytes = std::unique_ptr<uint8_t[], FreeMemory>;
Bytes Noise(size_t bytes) {
  constexpr size_t kAlignment = 64;
  Bytes noise(static_cast<uint8_t*>(std::aligned_alloc(kAlignment, bytes)));
  uint32_t seed = 1;
  for (size_t i = 0; i < bytes; ++i)
    noise[i] = static_cast<uint8_t>((seed = seed * 1664525 + 1013904223) >> 24);
  return noise;
}

/// Luma of noise; chroma of gradients with a little noise, for it changes slowly in decoded video too.
Bytes Planes(int width, int height) {
  const auto luma = static_cast<size_t>(width * height);
  const auto row = static_cast<size_t>(width / 2);
  const size_t all = luma + luma / 2;
  Bytes planes = Noise(all);
  for (size_t i = luma; i < all; ++i) {
    const size_t x = (i - luma) % row;
    const size_t y = (i - luma) / row;
    planes[i] = static_cast<uint8_t>(64 + (x + y) * 128 / (row + luma / row / 2) + planes[i] % 8);
  }
  return planes;
}

/// Planes of 4:2:0 one behind the other.
FrameView Packed(uint8_t* y, int w, int h) {
  return {y, w, y + w * h, w / 2, y + w * h * 5 / 4, w / 2};
}

/// The pictures that all ways of one size work on. Whatever makes planes of planes writes to the memory of
/// the same working frame, since pages lie better or worse for the caches.
struct Pictures {
  explicit Pictures(Size s)
      : w(s.width),
        h(s.height),
        yuv(Planes(w, h)),
        bgr(Noise(PixelBytes())),
        out(Noise(PixelBytes())),
        copy(Packed(Prepare(1, {}).y, w, h)) {}
  size_t PlaneBytes() const { return static_cast<size_t>(w * h * 3 / 2); }
  size_t PixelBytes() const { return static_cast<size_t>(w * h * 3); }
  const uint8_t* Y() const { return yuv.get(); }
  const uint8_t* U() const { return Y() + w * h; }
  const uint8_t* V() const { return U() + w * h / 4; }
  uint8_t* OutU() { return out.get() + w * h; }
  uint8_t* OutV() { return OutU() + w * h / 4; }
  FrameView Frame() { return Packed(yuv.get(), w, h); }
  FrameView Prepare(uint32_t mirror, const ColourValues& colours) {
    return working.Prepare(Frame(), static_cast<uint32_t>(w), static_cast<uint32_t>(h), mirror, colours);
  }
  int w;
  int h;
  Bytes yuv;
  Bytes bgr;
  Bytes out;
  WorkingFrame working;
  FrameView copy;
};

constexpr uint32_t kEveryFeature = ~uint32_t{0};

/// Our forms obey our mask and libyuv's its own; both sides use all that the processor has.
void Register(const char* name, Size size, Work work, uint32_t ourMask = kEveryFeature, int theirMask = -1) {
  const auto prepare = [=] {
    SetCpuMask(ourMask);
    libyuv::MaskCpuFlags(theirMask);
  };
  g_ways[WayName(name, size.Name())] = {prepare, std::move(work)};
}

void RegisterToBgr(Size s, const std::shared_ptr<Pictures>& p) {
  const Work ours = [p] {
    Yv12ToRgb24(p->out.get(), p->w, p->Y(), p->U(), p->V(), p->w, p->w / 2, p->w, p->h);
  };
  const Work theirs = [p] {
    libyuv::I420ToRGB24(p->Y(), p->w, p->U(), p->w / 2, p->V(), p->w / 2, p->out.get(), p->w * 3, p->w, p->h);
  };
  constexpr int kTheirSsse3 = ~libyuv::kCpuHasAVX2 & ~libyuv::kCpuHasAVX512BW & ~libyuv::kCpuHasAVX512VL;
  Register("YV12 to BGR24", s, ours);
  Register("YV12 to BGR24, SSSE3", s, ours, kCpuSsse3);
  Register("YV12 to BGR24, plain code", s, ours, 0);
  Register("libyuv I420ToRGB24", s, theirs);
  Register("libyuv I420ToRGB24, SSSE3", s, theirs, kEveryFeature, kTheirSsse3);
  Register("memset of the pixels", s, [p] { std::memset(p->out.get(), 1, p->PixelBytes()); });
  Register("snapshot", s, [p] { YuvToBottomUpBgr24(p->out.get(), p->Frame(), p->w, p->h); });
  Register("libyuv I420ToRGB24, flipped", s, [p] {
    libyuv::I420ToRGB24(p->Y(), p->w, p->U(), p->w / 2, p->V(), p->w / 2, p->out.get(), p->w * 3, p->w,
                        -p->h);
  });
}

void RegisterFromBgr(Size s, const std::shared_ptr<Pictures>& p) {
  const Work ours = [p] { Rgb24ToYv12(p->out.get(), p->OutU(), p->OutV(), p->bgr.get(), p->w, p->h, p->w); };
  Register("BGR24 to YV12", s, ours);
  Register("BGR24 to YV12, plain code", s, ours, 0);
  Register("libyuv RGB24ToI420", s, [p] {
    libyuv::RGB24ToI420(p->bgr.get(), p->w * 3, p->out.get(), p->w, p->OutU(), p->w / 2, p->OutV(), p->w / 2,
                        p->w, -p->h);
  });
  const std::shared_ptr<SwsContext> scaler(
      sws_getContext(p->w, p->h, AV_PIX_FMT_BGR24, p->w, p->h, AV_PIX_FMT_YUV420P, SWS_FAST_BILINEAR, nullptr,
                     nullptr, nullptr),
      sws_freeContext);
  Register("libswscale", s, [p, scaler] {
    const uint8_t* in[4] = {p->bgr.get() + p->w * 3 * (p->h - 1)};
    const int inStride[4] = {-p->w * 3};
    uint8_t* out[4] = {p->out.get(), p->OutU(), p->OutV()};
    const int outStride[4] = {p->w, p->w / 2, p->w / 2};
    sws_scale(scaler.get(), in, inStride, 0, p->h, out, outStride);
  });
}

Work Prepare(const std::shared_ptr<Pictures>& p, uint32_t mirror, const ColourValues& colours) {
  return [p, mirror, colours] { p->Prepare(mirror, colours); };
}

void RegisterMirror(Size s, const std::shared_ptr<Pictures>& p) {
  Register("mirror mode 1", s, Prepare(p, 1, {}));
  Register("mirror mode 2", s, Prepare(p, 2, {}));
  Register("libyuv I420Mirror", s, [p] {
    libyuv::I420Mirror(p->Y(), p->w, p->U(), p->w / 2, p->V(), p->w / 2, p->copy.y, p->w, p->copy.u, p->w / 2,
                       p->copy.v, p->w / 2, p->w, p->h);
  });
  Register("libyuv I420Rotate(180)", s, [p] {
    libyuv::I420Rotate(p->Y(), p->w, p->U(), p->w / 2, p->V(), p->w / 2, p->copy.y, p->w, p->copy.u, p->w / 2,
                       p->copy.v, p->w / 2, p->w, p->h, libyuv::kRotate180);
  });
  Register("memcpy", s, [p] { std::memcpy(p->copy.y, p->Y(), p->PlaneBytes()); });
}

/// The picture settings sample by sample, sine and cosine included.
void AdjustAsWritten(Pictures& p, const reference::Settings& s) {
  const auto luma = static_cast<size_t>(p.w * p.h);
  std::memcpy(p.copy.y, p.Y(), p.PlaneBytes());
  for (size_t i = 0; i < luma; ++i)
    p.copy.y[i] = reference::AdjustLuma(p.copy.y[i], s);
  for (size_t i = 0; i < luma / 4; ++i)
    reference::AdjustChroma(p.copy.u[i], p.copy.v[i], s);
}

void RegisterAdjust(Size s, const std::shared_ptr<Pictures>& p) {
  constexpr ColourValues kPlain{.brightness = 12, .contrast = 20, .saturation = 30, .hue = 0};
  constexpr ColourValues kHue{.brightness = 12, .contrast = 20, .saturation = 30, .hue = 30};
  const auto eq =
      std::make_shared<FilterPeer>(p->w, p->h, p->Y(), "eq=brightness=0.05:contrast=1.2:saturation=1.3");
  const auto hue =
      std::make_shared<FilterPeer>(p->w, p->h, p->Y(), "eq=brightness=0.05:contrast=1.2,hue=h=30:s=1.3");
  Register("adjustment without hue", s, Prepare(p, 0, kPlain));
  Register("adjustment without hue, mirror 1", s, Prepare(p, 1, kPlain));
  Register("adjustment without hue, mirror 2", s, Prepare(p, 2, kPlain));
  Register("adjustment with hue", s, Prepare(p, 0, kHue));
  Register("adjustment with hue, mirror 1", s, Prepare(p, 1, kHue));
  Register("adjustment with hue, mirror 2", s, Prepare(p, 2, kHue));
  Register("ffmpeg eq", s, [eq] { eq->Run(); });
  Register("ffmpeg eq + hue", s, [hue] { hue->Run(); });
  Register("arithmetic as written", s, [p] { AdjustAsWritten(*p, {12, 20, 30, 0}); });
}

const std::vector<Ratio> kRatios = {
    {"YV12 to BGR24", "YV12 to BGR24", "libyuv I420ToRGB24", 1.30},
    {"YV12 to BGR24", "YV12 to BGR24", "YV12 to BGR24, plain code", 8},
    {"YV12 to BGR24", "YV12 to BGR24", "memset of the pixels", kNoBar},
    {"YV12 to BGR24, SSSE3", "YV12 to BGR24, SSSE3", "libyuv I420ToRGB24, SSSE3", 0.75},
    {"BGR24 to YV12", "BGR24 to YV12", "libyuv RGB24ToI420", 1.35},
    {"BGR24 to YV12", "BGR24 to YV12", "libswscale", 5},
    {"BGR24 to YV12", "BGR24 to YV12", "BGR24 to YV12, plain code", 9},
    {"mirror mode 1", "mirror mode 1", "libyuv I420Mirror", 1},
    {"mirror mode 2", "mirror mode 2", "libyuv I420Rotate(180)", 1.2},
    {"mirror mode 1", "mirror mode 1", "memcpy", 0.9},
    {"mirror mode 2", "mirror mode 2", "memcpy", 0.9},
    {"adjustment without hue", "adjustment without hue", "ffmpeg eq", 1.0},
    {"adjustment without hue", "adjustment without hue", "arithmetic as written", 25},
    {"adjustment without hue", "adjustment without hue", "memcpy", kNoBar},
    {"adjustment with hue", "adjustment with hue", "ffmpeg eq + hue", 1.4},
    {"and mirror 1, without hue", "adjustment without hue, mirror 1", "adjustment without hue", 1 / 1.15},
    {"and mirror 2, without hue", "adjustment without hue, mirror 2", "adjustment without hue", 1 / 1.15},
    {"and mirror 1, with hue", "adjustment with hue, mirror 1", "adjustment with hue", 1 / 1.15},
    {"and mirror 2, with hue", "adjustment with hue, mirror 2", "adjustment with hue", 1 / 1.15},
    {"snapshot", "snapshot", "libyuv I420ToRGB24, flipped", 1.1},
};

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> sizes;
  for (const Size& size : kSizes) {
    const auto pictures = std::make_shared<Pictures>(size);
    RegisterToBgr(size, pictures);
    RegisterFromBgr(size, pictures);
    RegisterMirror(size, pictures);
    RegisterAdjust(size, pictures);
    sizes.push_back(size.Name());
  }
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 45;
  const char* const cells = argc > 2 ? argv[2] : "";
  return std::fputs(RatioTable(g_ways, kRatios, sizes, rounds, cells).c_str(), stdout) < 0;
}
