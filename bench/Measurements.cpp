// SPDX-License-Identifier: BSD-3-Clause
#include "Measurements.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <barrier>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

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
    const host::PixelFormat& format = frame.Format();
    const auto step = static_cast<std::size_t>(format.BytesPerPixel());
    const auto high = static_cast<std::size_t>((format.red + 1) * format.BytesPerChannel() - 1);
    for (int y = kTop; y < kTop + kTextRows; ++y) {
        const auto row = frame.Row(y);
        for (std::size_t at = high; at < row.size(); at += step)
            if (row[at] > 100)
                return true;
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
    PinToCore(0);
    try {
        host::Image& frame = ThreadFrame(setting.size, setting.depth);
        const auto renderer = setting.make(setting.text, frame, setting.content);
        ExpectText(*renderer, frame, setting.drawsText);
        DrawFrames(state, *renderer, setting.content);
    } catch (const std::runtime_error& error) {
        state.SkipWithError(error.what());
    }
}

void Register(const std::string& name, const Setting& setting) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [setting](benchmark::State& state) { Measure(state, setting); });
}

// Two threads on two cores beside one of them alone ----------------------------------------------

// What else runs on the machine may slow a core for a while. So turns are short: the first thread
// alone, the second one alone, both at once, and only the three of one round are compared.
constexpr auto kTurn = std::chrono::milliseconds(4);
constexpr int kRounds = 8;

struct Turns {
    std::barrier<> begin { 3 }, end { 3 }; // of the two threads and the one that tells them
    unsigned active = 0;                   // a bit for each thread; none ends them
    std::array<double, 2> rates {};        // frames a second of its last turn
    std::array<std::string, 2> errors;
};

double FramesASecond(Renderer& renderer, Content content) {
    constexpr int kStep = 8;
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    std::chrono::duration<double> taken {};
    double frames = 0;
    while (taken < kTurn) {
        const std::uint32_t counter = TakeCounters(kStep);
        for (std::uint32_t i = 0; i < kStep; ++i)
            renderer.Draw(content == Content::kChanging ? counter + i : kStillCounter);
        frames += kStep;
        taken = Clock::now() - start;
    }
    return frames / taken.count();
}

void TakeTurns(Turns& turns, unsigned index, const Setting& setting) {
    PinToCore(static_cast<int>(index));
    std::unique_ptr<Renderer> renderer;
    try {
        host::Image& frame = ThreadFrame(setting.size, setting.depth);
        renderer = setting.make(setting.text, frame, setting.content);
        ExpectText(*renderer, frame, setting.drawsText);
    } catch (const std::runtime_error& error) {
        turns.errors[index] = error.what();
        renderer = nullptr;
    }
    for (;;) {
        turns.begin.arrive_and_wait();
        if (turns.active == 0)
            return;
        if (renderer && (turns.active & (1u << index)) != 0)
            turns.rates[index] = FramesASecond(*renderer, setting.content);
        turns.end.arrive_and_wait();
    }
}

// Frames a second of the threads whose bits are set.
double RateOf(Turns& turns, unsigned active) {
    turns.active = active;
    turns.rates = {};
    turns.begin.arrive_and_wait();
    turns.end.arrive_and_wait();
    return turns.rates[0] + turns.rates[1];
}

void MeasureThreads(benchmark::State& state, const Setting& setting) {
    Turns turns;
    std::array<std::jthread, 2> threads;
    for (unsigned i = 0; i < threads.size(); ++i)
        threads[i] = std::jthread([&turns, i, &setting] { TakeTurns(turns, i, setting); });
    std::vector<double> gains;
    for ([[maybe_unused]] auto _ : state) {
        const double alone = (RateOf(turns, 1) + RateOf(turns, 2)) / 2;
        gains.push_back(RateOf(turns, 3) / alone);
    }
    turns.active = 0;
    turns.begin.arrive_and_wait();
    std::ranges::sort(gains);
    state.counters["gain"] = gains[gains.size() / 2];
    for (const std::string& error : turns.errors)
        if (!error.empty())
            state.SkipWithError(error.c_str());
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

void RegisterThreads(const Setting& setting) {
    const std::string name =
        std::string("threads/") + setting.text.name + "/" + NameOf(setting.content);
    benchmark::RegisterBenchmark(name.c_str(), [setting](benchmark::State& state) {
        MeasureThreads(state, setting);
    })->Iterations(kRounds);
}

} // namespace

std::span<const RendererEntry> Renderers() {
    return kRenderers;
}

void RegisterRenderers() {
    for (const TextCase& text : Cases()) {
        for (const RendererEntry& renderer : kRenderers) {
            RegisterRenderer(renderer, text, 32);
            if (renderer.sixteen)
                RegisterRenderer(renderer, text, 64);
        }
    }
}

void RegisterFrameSizes() {
    for (const TextCase& text : Cases()) {
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
            const Setting setting { .text = text, .size = { 3840, 2160 } };
            benchmark::RegisterBenchmark(
                (std::string("area/") + text.name + "/" + std::to_string(sizePx)).c_str(),
                [setting](benchmark::State& state) {
                    Measure(state, setting);
                    const PictureSize size = TextRectangle(setting.text);
                    state.counters["pixels"] = static_cast<double>(size.width) * size.height;
                });
        }
    }
}

void RegisterThreads() {
    for (const TextCase& text : Cases())
        for (Content content : { Content::kUnchanged, Content::kChanging })
            RegisterThreads({ .text = text, .content = content });
}

void PinToCore(int index) {
    static const cpu_set_t allowed = [] {
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
