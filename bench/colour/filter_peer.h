// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

struct AVFilterContext;
struct AVFilterGraph;
struct AVFrame;

/// A chain of libavfilter's filters over one YUV 4:2:0 picture, on one thread.
class FilterPeer {
 public:
  /// `planes` are Y, U and V without padding.
  FilterPeer(int width, int height, const uint8_t* planes, const char* filters);
  ~FilterPeer();
  FilterPeer(const FilterPeer&) = delete;
  FilterPeer& operator=(const FilterPeer&) = delete;

  /// Sends the picture through and drops the result.
  void Run();

 private:
  AVFilterGraph* m_graph;
  AVFilterContext* m_source = nullptr;
  AVFilterContext* m_sink = nullptr;
  AVFrame* m_picture;
};
