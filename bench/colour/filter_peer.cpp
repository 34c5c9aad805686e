// SPDX-License-Identifier: MIT
#include "colour/filter_peer.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/frame.h>
}

namespace {

void Require(bool ok, const char* what) {
  if (ok) return;
  std::fprintf(stderr, "libavfilter: %s failed\n", what);
  std::exit(1);
}

AVFrame* CopyPicture(int width, int height, const uint8_t* planes) {
  AVFrame* frame = av_frame_alloc();
  frame->format = AV_PIX_FMT_YUV420P;
  frame->width = width;
  frame->height = height;
  Require(av_frame_get_buffer(frame, 0) == 0, "picture");
  for (int plane = 0; plane < 3; ++plane) {
    const int rowBytes = plane ? width / 2 : width;
    for (int row = 0; row < (plane ? height / 2 : height); ++row, planes += rowBytes)
      std::memcpy(frame->data[plane] + row * frame->linesize[plane], planes, static_cast<size_t>(rowBytes));
  }
  return frame;
}

}  // namespace

FilterPeer::FilterPeer(int width, int height, const uint8_t* planes, const char* filters)
    : m_graph(avfilter_graph_alloc()), m_picture(CopyPicture(width, height, planes)) {
  m_graph->nb_threads = 1;
  char args[128];
  std::snprintf(args, sizeof(args), "video_size=%dx%d:pix_fmt=%d:time_base=1/25", width, height,
                AV_PIX_FMT_YUV420P);
  Require(avfilter_graph_create_filter(&m_source, avfilter_get_by_name("buffer"), "in", args, nullptr,
                                       m_graph) >= 0,
          "source");
  Require(avfilter_graph_create_filter(&m_sink, avfilter_get_by_name("buffersink"), "out", nullptr, nullptr,
                                       m_graph) >= 0,
          "sink");
  AVFilterInOut* output = avfilter_inout_alloc();
  *output = {av_strdup("in"), m_source, 0, nullptr};
  AVFilterInOut* input = avfilter_inout_alloc();
  *input = {av_strdup("out"), m_sink, 0, nullptr};
  Require(avfilter_graph_parse_ptr(m_graph, filters, &input, &output, nullptr) >= 0, "parse");
  Require(avfilter_graph_config(m_graph, nullptr) >= 0, "config");
  avfilter_inout_free(&input);
  avfilter_inout_free(&output);
}

FilterPeer::~FilterPeer() {
  av_frame_free(&m_picture);
  avfilter_graph_free(&m_graph);
}

void FilterPeer::Run() {
  Require(av_buffersrc_add_frame_flags(m_source, m_picture, AV_BUFFERSRC_FLAG_KEEP_REF) >= 0, "send");
  AVFrame* result = av_frame_alloc();
  Require(av_buffersink_get_frame(m_sink, result) >= 0, "receive");
  av_frame_free(&result);
  m_picture->pts++;
}
