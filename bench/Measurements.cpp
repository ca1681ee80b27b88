// SPDX-License-Identifier: BSD-3-Clause
#include "Measurements.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <sched.h>

#include "Frames.h"
#include "Renderer.h"

namespace bench {

namespace {

constexpr std::array kRenderers {
    RendererEntry { "effect", MakeEffect, true, true, true },
    RendererEntry { "blend", MakeBlend, false, true, true },
    RendererEntry { "cairo", MakeCairo, true, false, true },
    RendererEntry { "cairo-kept", MakeCairoKept, false, false, true },
    RendererEntry { "qt", MakeQt, true, true, true },
    RendererEntry { "drawtext", MakeDrawtext, true, false, true },
    RendererEntry { "null-graph", MakeNullGraph, false, false, false },
};

struct Setting {
    TextCase text;
    MakeRenderer make = MakeEffect;
    bool drawsText = true;
    Content content = Content::kUnchanged;
    int depth = 32; // bits in a pixel
    FrameSize size {};
};

const char* NameOf(Content content) {
    return content == Content::kChanging ? "changing" : "unchanged";
}

// A text that comes a second time may be found in a cache, so no two changing frames of a run are
// given the same counter.
std::uint32_t TakeCounters(benchmark::IterationCount count) {
    static std::atomic<std::uint32_t> next { 100'0000 };
    return next.fetch_add(static_cast<std::uint32_t>(count));
}

constexpr int kTextRows = 64; // hold a part of every text

void BlackenTextRows(host::Image& frame) {
    for (int y = kTop; y < kTop + kTextRows; ++y)
        std::ranges::fill(frame.Row(y), std::uint8_t { 0 });
}

// Only the colour tells: the alpha is set under a box without glyphs as well.
bool HasLightPixel(const host::Image& frame) {
    host::PixelFormat const& format = frame.Format();
    auto const step = static_cast<std::size_t>(format.BytesPerPixel());
    auto const high = static_cast<std::size_t>((format.red + 1) * format.BytesPerChannel() - 1);
    for (int y = kTop; y < kTop + kTextRows; ++y) {
        auto const row = frame.Row(y);
        for (std::size_t at = high; at < row.size(); at += step) {
            if (row[at] > 100)
                return true;
        }
    }
    return false;
}

// A renderer that draws nothing is fast, so it is asked for a text first. That fills its caches too.
void ExpectText(Renderer& renderer, host::Image& frame, bool drawsText) {
    BlackenTextRows(frame);
    for (int i = 0; i < 3; ++i)
        renderer.Draw(kStillCounter);
    if (drawsText && !HasLightPixel(frame))
        throw std::runtime_error("no text was drawn");
}

void DrawFrames(benchmark::State& state, Renderer& renderer, Content content) {
    if (content == Content::kUnchanged) {
        for ([[maybe_unused]] auto _ : state)
            renderer.Draw(kStillCounter);
    } else {
        std::uint32_t counter = TakeCounters(state.max_iterations);
        for ([[maybe_unused]] auto _ : state)
            renderer.Draw(counter++);
    }
    state.SetItemsProcessed(state.iterations());
}

void Measure(benchmark::State& state, const Setting& setting) {
    PinToCore(state.thread_index());
    try {
        host::Image& frame = ThreadFrame(setting.size, setting.depth);
        auto const renderer = setting.make(setting.text, frame, setting.content);
        ExpectText(*renderer, frame, setting.drawsText);
        DrawFrames(state, *renderer, setting.content);
    } catch (const std::runtime_error& error) {
        state.SkipWithError(error.what());
    }
}

benchmark::internal::Benchmark* Register(const std::string& name, const Setting& setting) {
    return benchmark::RegisterBenchmark(
        name.c_str(), [setting](benchmark::State& state) { Measure(state, setting); });
}

void RegisterRenderer(const RendererEntry& renderer, const TextCase& text, int depth) {
    for (Content content : { Content::kUnchanged, Content::kChanging }) {
        if (content == Content::kChanging && !renderer.changes)
            continue;
        Register(std::string("text/") + text.name + (depth == 64 ? "/16/" : "/8/") + renderer.name +
                     "/" + NameOf(content),
                 { text, renderer.make, renderer.drawsText, content, depth });
    }
}

} // namespace

std::span<const RendererEntry> Renderers() {
    return kRenderers;
}

void RegisterRenderers() {
    for (TextCase const& text : Cases()) {
        for (RendererEntry const& renderer : kRenderers) {
            RegisterRenderer(renderer, text, 32);
            if (renderer.sixteen)
                RegisterRenderer(renderer, text, 64);
        }
    }
}

void RegisterFrameSizes() {
    for (TextCase const& text : Cases()) {
        for (FrameSize size : { FrameSize { 1280, 720 }, { 1920, 1080 }, { 3840, 2160 } })
            Register(std::string("frame/") + text.name + "/" + std::to_string(size.width) + "x" +
                         std::to_string(size.height),
                     { .text = text, .size = size });
    }
}

void RegisterAreas() {
    // The Japanese lines would not fit into the frame at the largest size.
    for (TextCase text : Cases().first(3)) {
        for (int sizePx : { 18, 36, 72, 144 }) {
            text.sizePx = sizePx;
            Setting const setting { .text = text, .size = { 3840, 2160 } };
            benchmark::RegisterBenchmark(
                (std::string("area/") + text.name + "/" + std::to_string(sizePx)).c_str(),
                [setting](benchmark::State& state) {
                    Measure(state, setting);
                    PictureSize const size = TextRectangle(setting.text);
                    state.counters["pixels"] = static_cast<double>(size.width) * size.height;
                });
        }
    }
}

void RegisterThreads() {
    for (TextCase const& text : Cases()) {
        for (Content content : { Content::kUnchanged, Content::kChanging })
            Register(std::string("threads/") + text.name + "/" + NameOf(content),
                     { .text = text, .content = content })
                ->ThreadRange(1, 2)
                ->UseRealTime();
    }
}

void PinToCore(int index) {
    static cpu_set_t const allowed = [] {
        cpu_set_t set;
        CPU_ZERO(&set);
        sched_getaffinity(0, sizeof set, &set);
        return set;
    }();
    for (int core = CPU_SETSIZE - 1; core >= 0; --core) {
        if (!CPU_ISSET(core, &allowed) || index-- > 0)
            continue;
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(core, &one);
        sched_setaffinity(0, sizeof one, &one);
        return;
    }
}

} // namespace bench
