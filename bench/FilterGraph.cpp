// SPDX-License-Identifier: BSD-3-Clause
// Text by FFmpeg's drawtext filter: a graph of source, filter and sink, driven in this process on
// this thread. One frame goes round and round, so that nothing is ever copied.
#include <memory>
#include <stdexcept>
#include <string>

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/frame.h>
#include <libavutil/log.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

#include "Renderer.h"

namespace bench {

namespace {

struct FreeGraph {
    void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};

void Check(int status, const char* what) {
    if (status >= 0)
        return;
    char reason[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(status, reason, sizeof reason);
    throw std::runtime_error(std::string(what) + ": " + reason);
}

void SetOption(AVFilterContext* filter, const char* name, const std::string& value) {
    Check(av_opt_set(filter, name, value.c_str(), AV_OPT_SEARCH_CHILDREN), name);
}

// The counter written as an expression of the frame's number, with as many digits.
std::string WithCountingExpression(std::string text) {
    static constexpr const char* kDigits[] = { "%{eif:mod(n+12,10000):d:4}",
                                               "%{eif:mod(n+50012,10000000):d:7}" };
    const auto replace = [&text](std::string_view mark, const char* by) {
        if (const auto at = text.find(mark); at != std::string::npos)
            text.replace(at, mark.size(), by);
    };
    replace("#######", kDigits[1]);
    replace("####", kDigits[0]);
    replace("###", "005");
    return text;
}

class FilterGraph : public Renderer {
public:
    explicit FilterGraph(host::Image& image)
        : m_graph(avfilter_graph_alloc()), m_frame(av_frame_alloc()) {
        av_log_set_level(AV_LOG_ERROR);
        m_graph->nb_threads = 1;
        WrapImage(image);
        m_source = Add("buffer");
        SetOption(m_source, "video_size",
                  std::to_string(image.Width()) + "x" + std::to_string(image.Height()));
        SetOption(m_source, "pix_fmt", av_get_pix_fmt_name(AV_PIX_FMT_BGR0));
        SetOption(m_source, "time_base", "1/24");
        Check(avfilter_init_str(m_source, nullptr), "buffer");
        m_sink = Add("buffersink");
        Check(avfilter_init_str(m_sink, nullptr), "buffersink");
    }

    AVFilterContext* Add(const char* name) {
        AVFilterContext* const filter =
            avfilter_graph_alloc_filter(m_graph.get(), avfilter_get_by_name(name), name);
        if (!filter)
            throw std::runtime_error(std::string("no filter named ") + name);
        return filter;
    }

    void Connect(AVFilterContext* filter) {
        Check(avfilter_init_str(filter, nullptr), filter->name);
        Check(avfilter_link(m_source, 0, filter, 0), "link");
        Check(avfilter_link(filter, 0, m_sink, 0), "link");
        Check(avfilter_graph_config(m_graph.get(), nullptr), "graph");
        // A converter that FFmpeg put in between would be measured as well.
        if (m_graph->nb_filters != 3)
            throw std::runtime_error("the filter does not take the frame's layout");
    }

    void Draw(std::uint32_t) override {
        m_frame->pts = m_next++;
        Check(av_buffersrc_add_frame(m_source, m_frame.get()), "source");
        Check(av_buffersink_get_frame(m_sink, m_frame.get()), "sink");
    }

private:
    void WrapImage(host::Image& image) {
        m_frame->format = AV_PIX_FMT_BGR0;
        m_frame->width = image.Width();
        m_frame->height = image.Height();
        m_frame->data[0] = image.Bytes().data();
        m_frame->linesize[0] = image.RowBytes();
        const auto keep = [](void*, std::uint8_t*) {};
        m_frame->buf[0] =
            av_buffer_create(image.Bytes().data(), image.Bytes().size(), keep, nullptr, 0);
    }

    std::unique_ptr<AVFilterGraph, FreeGraph> m_graph;
    std::unique_ptr<AVFrame, FreeFrame> m_frame;
    AVFilterContext* m_source = nullptr;
    AVFilterContext* m_sink = nullptr;
    std::int64_t m_next = 0;
};

void SetText(AVFilterContext* filter, const TextCase& text, Content content) {
    const bool changing = content == Content::kChanging;
    SetOption(filter, "expansion", changing ? "normal" : "none");
    SetOption(filter, "text",
              changing ? WithCountingExpression(text.text) : CountedText(text.text).Bytes());
}

void SetLooks(AVFilterContext* filter, const TextCase& text) {
    const std::string opacity = "@" + std::to_string(text.opacity / 100.0);
    SetOption(filter, "font", text.family);
    SetOption(filter, "fontsize", std::to_string(text.sizePx));
    SetOption(filter, "fontcolor", "white" + opacity);
    SetOption(filter, "box", text.box ? "1" : "0");
    SetOption(filter, "boxcolor", "black" + opacity);
    SetOption(filter, "x", std::to_string(kLeft));
    SetOption(filter, "y", std::to_string(kTop));
}

} // namespace

std::unique_ptr<Renderer> MakeDrawtext(const TextCase& text, host::Image& frame, Content content) {
    auto graph = std::make_unique<FilterGraph>(frame);
    AVFilterContext* const filter = graph->Add("drawtext");
    SetLooks(filter, text);
    SetText(filter, text, content);
    graph->Connect(filter);
    return graph;
}

std::unique_ptr<Renderer> MakeNullGraph(const TextCase&, host::Image& frame, Content) {
    auto graph = std::make_unique<FilterGraph>(frame);
    graph->Connect(graph->Add("null"));
    return graph;
}

} // namespace bench
