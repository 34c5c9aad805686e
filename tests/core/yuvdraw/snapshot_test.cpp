// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

#include "backends/yuvdraw/bmp_file.h"
#include "backends/yuvdraw/yuv2rgb.h"
#include "support/frames.h"

namespace {

namespace fs = std::filesystem;

/// A file name that is free before and after a test.
class TempName {
 public:
  TempName() { fs::remove(m_path); }
  ~TempName() { fs::remove(m_path); }
  const char* Name() const { return m_text.c_str(); }
  bool Exists() const { return fs::exists(m_path); }

  std::vector<uint8_t> Content() const {
    std::ifstream file(m_path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  fs::path m_path = fs::temp_directory_path() / ("nivral-" + std::to_string(std::random_device{}()) + ".bmp");
  std::string m_text = m_path.string();
};

std::vector<uint8_t> SaveFrame(TestFrame& frame) {
  TempName name;
  EXPECT_FALSE(YUV2RGB().SaveFrame(name.Name(), frame.View(), static_cast<uint32_t>(frame.width),
                                   static_cast<uint32_t>(frame.height)));
  return name.Content();
}

TEST(Snapshot, WritesHeadersAndPixels) {
  TestFrame grey = FlatFrame(16, 16, 128, 128, 128);
  const std::vector<uint8_t> file = SaveFrame(grey);
  ASSERT_EQ(file.size(), 822u);
  EXPECT_THAT(std::vector(file.begin(), file.begin() + 54),
              testing::ElementsAre('B', 'M', 0x36, 3, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0,            //
                                   40, 0, 0, 0, 16, 0, 0, 0, 16, 0, 0, 0, 1, 0, 24, 0,          //
                                   0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  //
                                   0, 0, 0, 0));
  EXPECT_THAT(std::vector<uint8_t>(file.begin() + 54, file.end()), testing::Each(130));
}

TEST(Snapshot, ReadsStridesAndPackedBuffersAlike) {
  std::mt19937 random(7);
  TestFrame frame = RandomFrame(20, 10, random, 13);
  // U follows Y, V starts half a luma plane later, so a quarter plane between them is not used.
  std::vector<uint8_t> packed(200 + 100 + 50);
  for (size_t row = 0; row < 10; ++row)
    std::copy_n(&frame.y[row * 33], 20, &packed[row * 20]);
  for (size_t row = 0; row < 5; ++row) {
    std::copy_n(&frame.u[row * 23], 10, &packed[200 + row * 10]);
    std::copy_n(&frame.v[row * 23], 10, &packed[300 + row * 10]);
  }
  TempName name;
  EXPECT_FALSE(YUV2RGB().SaveBuffer(name.Name(), packed.data(), 20, 10));
  EXPECT_EQ(name.Content().size(), 54u + 600);
  EXPECT_EQ(name.Content(), SaveFrame(frame));
}

TEST(Snapshot, PadsRowsOfOtherWidths) {
  TestFrame frame = FlatFrame(5, 3, 235, 128, 128);
  const std::vector<uint8_t> file = SaveFrame(frame);
  ASSERT_EQ(file.size(), 54u + 3 * 16);
  EXPECT_TRUE(file[2] == 102 && file[34] == 48);
  for (size_t i = 0; i < 48; ++i)
    EXPECT_EQ(file[54 + i], i % 16 < 15 ? 254 : 0) << i;
}

TEST(Snapshot, LeavesNoFileForPicturesItCannotTake) {
  TestFrame frame = FlatFrame(16, 16, 128, 128, 128);
  TempName name;
  const auto save = [&](const FrameView& view, uint32_t width, uint32_t height) {
    EXPECT_FALSE(YUV2RGB().SaveFrame(name.Name(), view, width, height));
  };
  FrameView view = frame.View();
  save(view, 0, 16);
  save(view, 16, 0);
  view.strideY = 15;
  save(view, 16, 16);
  view = frame.View();
  view.v = nullptr;
  save(view, 16, 16);
  EXPECT_FALSE(YUV2RGB().SaveBuffer(name.Name(), nullptr, 16, 16));
  for (const uint32_t size : {0x80000000u, 40000u})
    EXPECT_FALSE(YUV2RGB().SaveBuffer(name.Name(), frame.y.data(), size, size));
  EXPECT_FALSE(name.Exists());
  EXPECT_FALSE(YUV2RGB().SaveFrame("/no/such/folder/x.bmp", frame.View(), 16, 16));
}

#ifndef _WIN32
TEST(Snapshot, RemovesAFileThatTheDiskCouldNotTake) {
  TestFrame frame = FlatFrame(64, 64, 128, 128, 128);
  TempName name;
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  for (const rlim_t limit : {20u, 100u, 12341u}) {
    const rlimit small{limit, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    YUV2RGB().SaveFrame(name.Name(), frame.View(), 64, 64);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(name.Exists()) << limit;
  }
  YUV2RGB().SaveFrame(name.Name(), frame.View(), 64, 64);
  EXPECT_EQ(name.Content().size(), 12342u);
}
#endif

TEST(Rgb565, PlacesChannelsIntoTheirMasks) {
  const struct {
    uint8_t y, u, v;
    uint16_t expected;
  } cases[] = {{0, 128, 128, 0},      {255, 128, 128, 0xFFFF}, {128, 128, 128, 0x8410}, {0, 128, 255, 0xB000},
               {0, 255, 128, 0x001C}, {200, 128, 255, 0xFB79}, {255, 0, 0, 0x4FE3}};
  for (const auto& c : cases) {
    TestFrame frame = FlatFrame(4, 2, 255, c.u, c.v);
    frame.y[2] = c.y;
    uint16_t out[8]{};
    YuvToBottomUpRgb565(out, frame.View(), 4, 2);
    EXPECT_EQ(out[6], c.expected) << int{c.y} << " " << int{c.u} << " " << int{c.v};
  }
}

}  // namespace
