// SPDX-License-Identifier: BSD-3-Clause
// What the caches and shortcuts of text and drawing save: each in the case that it is for, and in the same
// case where it finds nothing.
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Measurements.h"
#include "platform/Drawing.h"
#include "platform/LruCache.h"
#include "platform/TextEncoding.h"
#include "platform/drawing/Coloring.h"

namespace bench {

namespace {

using namespace platform;

struct Frame {
    std::string line = "C-005-0012";
    std::string measured = line;
    std::string family = "DejaVu Sans";
    std::uint32_t ground = 0; // two bytes of colour
};

std::string Counted(std::uint32_t number) {
    std::string digits = std::to_string(number % 10'000'000);
    return "C-" + std::string(7 - digits.size(), '0') + digits;
}

// As the effect draws a score line, without the blend.
void DrawFrame(const Frame& frame) {
    constexpr std::int16_t kWidth = 260, kHeight = 48;
    GWorldPtr world = nullptr;
    if (NewGWorld(&world, 32, { 0, 0, kHeight, kWidth }) != kNoErr)
        throw std::bad_alloc();
    SetGWorld(world, nullptr);
    const std::string counted = static_cast<char>(frame.family.size()) + frame.family;
    FontNumber font = 0;
    GetFNum(reinterpret_cast<const std::uint8_t*>(counted.data()), &font);
    TextFont(font);
    TextSize(36);
    const auto measured = static_cast<std::int32_t>(frame.measured.size());
    benchmark::DoNotOptimize(TextWidth(frame.measured.data(), 0, measured));
    RGBBackColor({ static_cast<std::uint16_t>((frame.ground & 0xFF) << 8),
                   static_cast<std::uint16_t>(frame.ground & 0xFF00), 0 });
    EraseRect({ 0, 0, kHeight, kWidth });
    MoveTo(0, 36);
    DrawText(frame.line.data(), 0, static_cast<std::int32_t>(frame.line.size()));
    LockPixels(GetGWorldPixMap(world));
    benchmark::DoNotOptimize(GetPixBaseAddr(GetGWorldPixMap(world)));
    SetGWorld(nullptr, nullptr);
    DisposeGWorld(world);
}

// make gives the frame of a number; no number comes twice in the process.
template <class Make>
void MeasureFrames(benchmark::State& state, const Make& make) {
    SetApplicationTextEncoding("UTF-8");
    static std::uint32_t number = 0;
    for (int i = 0; i < 3; ++i)
        DrawFrame(make(++number));
    for ([[maybe_unused]] auto _ : state)
        DrawFrame(make(++number));
}

void Pictures(benchmark::State& state, bool with) {
    MeasureFrames(state, [with](std::uint32_t number) {
        Frame frame;
        frame.ground = with ? 0 : number;
        return frame;
    });
}

void OlderPictures(benchmark::State& state, bool with) {
    MeasureFrames(state, [with](std::uint32_t number) {
        Frame frame;
        frame.line = frame.measured = Counted(number);
        frame.ground = with ? 0 : number;
        return frame;
    });
}

// A line is measured and then drawn, or another one is.
void Lines(benchmark::State& state, bool with) {
    MeasureFrames(state, [with](std::uint32_t number) {
        Frame frame;
        frame.line = Counted(number);
        frame.measured = with ? frame.line : frame.line + "/";
        return frame;
    });
}

// One name, or more spellings of it than are remembered.
void Names(benchmark::State& state, bool with) {
    MeasureFrames(state, [with](std::uint32_t number) {
        Frame frame;
        for (std::size_t i = 0; i < 10 && !with; ++i)
            frame.family[i] = static_cast<char>(frame.family[i] ^ (number >> i & 1 ? ' ' : 0));
        frame.family[6] = ' ';
        return frame;
    });
}

struct Value {
    std::uint64_t key;
    std::vector<std::uint8_t> bytes;

    bool Matches(std::uint64_t other) const { return key == other; }
    std::int64_t Bytes() const { return static_cast<std::int64_t>(bytes.size()); }
};

// Looking up what the thread used last, beside another thread.
void Recent(benchmark::State& state, bool with) {
    static LruCache<Value> cache(1 << 20, 16);
    RecentValues<Value, 512> recent(cache, 1 << 10);
    constexpr std::uint64_t kKeys = 48;
    for (std::uint64_t key = 0; key < kKeys; ++key) {
        const auto value = std::make_shared<const Value>(Value { key, {} });
        recent.Find(MixHash(0, key), key);
        recent.Keep(MixHash(0, key), value);
        cache.Insert(MixHash(0, key), value);
    }
    for ([[maybe_unused]] auto _ : state) {
        for (std::uint64_t key = 0; key < kKeys; ++key)
            if (with)
                benchmark::DoNotOptimize(recent.Find(MixHash(0, key), key));
            else
                benchmark::DoNotOptimize(cache.Find(MixHash(0, key), key));
    }
}

// Pictures that never come again go into the cache, or only those that came before.
void Admission(benchmark::State& state, bool with) {
    static LruCache<Value> cache(64 << 20, 2);
    static OnceTable once;
    static std::uint64_t key = 0;
    for ([[maybe_unused]] auto _ : state) {
        const auto hash = MixHash(0, ++key);
        auto value = std::make_shared<Value>(Value { key, std::vector<std::uint8_t>(50'000) });
        if (!with || once.SeenBefore(hash))
            cache.Insert(hash, std::move(value));
    }
    cache.Clear();
}

void Vectors(benchmark::State& state, bool with) {
    constexpr std::int64_t kWidth = 260, kHeight = 48;
    std::vector<std::uint8_t> pixels(kWidth * kHeight * 4), coverage(kWidth * kHeight, 99);
    const ColorFunction color = ColorWayAt(with ? kColorWays - 1 : 0).function;
    for ([[maybe_unused]] auto _ : state) {
        (color ? color : ColorWayAt(0).function)(
            { pixels.data(), kWidth * 4, coverage.data(), kWidth, kWidth, kHeight },
            { { 0, 254, 254, 254 }, { 0, 0, 0, 0 } });
        benchmark::ClobberMemory();
    }
}

} // namespace

void RegisterCaches() {
    struct Row {
        const char* name;
        void (*measure)(benchmark::State&, bool);
        int threads = 1;
    };
    for (const Row& row :
         { Row { "pictures", Pictures }, Row { "older-pictures", OlderPictures },
           Row { "lines", Lines }, Row { "names", Names }, Row { "recent", Recent, 2 },
           Row { "admission", Admission }, Row { "vectors", Vectors } }) {
        for (const bool with : { true, false }) {
            const auto name = std::string("cache/") + row.name + "/" + (with ? "with" : "without");
            benchmark::RegisterBenchmark(name.c_str(), row.measure, with)->Threads(row.threads);
        }
    }
}

} // namespace bench
