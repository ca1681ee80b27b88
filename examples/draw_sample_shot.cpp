// SPDX-License-Identifier: BSD-3-Clause
// Draws a short shot as numbered PNG frames, to try the effect on: a car drives through the country
// while the camera pans. The same arguments give the same files on every machine.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/frames/Frame.h"
#include "host/frames/PngWriter.h"
#include "shot/Car.h"
#include "shot/Paint.h"
#include "shot/Scenery.h"

namespace {

constexpr float kPanPerFrame = 9;
constexpr float kCarMiddle = 300;
constexpr float kCarReach = 170; // how far the camera lets the car get ahead or behind

struct Options {
    std::int32_t frames = 24;
    std::int32_t first = 1;
    std::int32_t width = 960;
    std::filesystem::path folder;
    std::filesystem::path deepFolder;
};

shot::Canvas DrawFrame(std::int32_t width, std::int32_t index) {
    shot::Canvas canvas(width, width * 9 / 16);
    const float pan = kPanPerFrame * static_cast<float>(index);
    const float across = kCarReach * std::sin(static_cast<float>(index) / 28);
    shot::PaintBackground(canvas, pan);
    shot::PaintCar(canvas, { kCarMiddle + across, shot::kRoadLine }, pan + across);
    shot::PaintForeground(canvas, pan);
    shot::PaintGrain(canvas);
    shot::PaintToneRamp(canvas);
    return canvas;
}

// A value of 0 to 1 as an integer channel, rounded to the nearest.
template <typename Channel>
Channel Quantized(float value, Channel full) {
    return static_cast<Channel>(
        std::lround(std::clamp(value, 0.0F, 1.0F) * static_cast<float>(full)));
}

// The channels go in by copying bytes, for a row is bytes whatever the depth.
template <typename Channel>
void FillRow(const shot::Canvas& canvas, int y, std::span<std::uint8_t> row, std::size_t channels) {
    constexpr Channel kFull = static_cast<Channel>(~Channel { 0 });
    for (int x = 0; x < canvas.Width(); ++x) {
        const shot::Color& color = canvas.At(x, y);
        const Channel pixel[] { Quantized(color.red, kFull), Quantized(color.green, kFull),
                                Quantized(color.blue, kFull), kFull };
        const std::size_t bytes = channels * sizeof(Channel);
        std::memcpy(row.data() + static_cast<std::size_t>(x) * bytes, pixel, bytes);
    }
}

// Nothing when there is no memory for it.
std::optional<host::Frame> ToFrame(const shot::Canvas& canvas, std::int32_t bits) {
    host::Frame frame;
    frame.image = host::Image::Make(canvas.Width(), canvas.Height(),
                                    bits == 16 ? host::kRgba64 : host::kRgb24);
    if (!frame.image)
        return std::nullopt;
    for (int y = 0; y < canvas.Height(); ++y)
        if (bits == 16)
            FillRow<std::uint16_t>(canvas, y, frame.image->Row(y), 4);
        else
            FillRow<std::uint8_t>(canvas, y, frame.image->Row(y), 3);
    frame.header.color = host::ColorKind::kRgb;
    frame.header.bitDepth = bits;
    frame.header.metadata.push_back(
        { { 's', 'R', 'G', 'B' }, host::FrameChunk::Place::kBeforePalette, { 0 } });
    return frame;
}

bool Write(const shot::Canvas& canvas, std::int32_t bits, const std::filesystem::path& folder,
           std::int32_t number, std::string& why) {
    const std::optional<host::Frame> frame = ToFrame(canvas, bits);
    if (!frame) {
        why = "there is no memory for a frame of this size";
        return false;
    }
    char name[32];
    std::snprintf(name, sizeof name, "shot.%04d.png", number);
    host::PngWriter writer;
    return writer.Write(folder / name, *frame, {}, host::Existing::kOverwrite, why) ==
           host::OutputResult::kWritten;
}

bool DrawAndWrite(const Options& options, std::int32_t index, std::string& why) {
    const shot::Canvas canvas = DrawFrame(options.width, index);
    const std::int32_t number = options.first + index;
    return Write(canvas, 8, options.folder, number, why) &&
           (options.deepFolder.empty() || Write(canvas, 16, options.deepFolder, number, why));
}

// All frames on all cores; the first reason that stops one stops the others. Empty when all is well.
std::string DrawShot(const Options& options) {
    std::atomic<std::int32_t> next = 0;
    std::mutex mutex;
    std::string failure;
    const auto work = [&] {
        for (std::int32_t index = next++; index < options.frames; index = next++) {
            std::string why;
            if (!DrawAndWrite(options, index, why)) {
                const std::lock_guard lock(mutex);
                failure = why;
                next = options.frames;
            }
        }
    };
    {
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i)
            threads.emplace_back(work);
    }
    return failure;
}

bool MakeFolders(const Options& options, std::string& why) {
    for (const std::filesystem::path& folder : { options.folder, options.deepFolder }) {
        std::error_code error;
        if (!folder.empty())
            std::filesystem::create_directories(folder, error);
        if (error) {
            why = folder.string() + ": " + error.message();
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv) try {
    Options options;
    CLI::App app("Draws a short shot as FOLDER/shot.0001.png and so on, to try the effect on.");
    app.add_option("FOLDER", options.folder, "Where the frames go, 8 bits per channel")->required();
    app.add_option("--deep", options.deepFolder, "Also write them here, 16 bits per channel");
    app.add_option("--frames", options.frames, "How many")
        ->check(CLI::Range(1, 9999))
        ->capture_default_str();
    app.add_option("--first", options.first, "The number of the first")
        ->check(CLI::Range(0, 9999))
        ->capture_default_str();
    app.add_option("--width", options.width, "In pixels; the height is nine sixteenths of it")
        ->check(CLI::Range(160, 7680))
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);

    std::string why;
    if (MakeFolders(options, why))
        why = DrawShot(options);
    if (!why.empty()) {
        std::fprintf(stderr, "draw-sample-shot: %s\n", why.c_str());
        return 1;
    }
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "draw-sample-shot: %s\n", error.what());
    return 1;
}
