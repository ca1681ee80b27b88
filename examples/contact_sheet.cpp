// SPDX-License-Identifier: BSD-3-Clause
// Lays labelled pictures on one sheet and has the effect write the captions, which also shows what a
// host needs to use it: load the bundle, make an effect, set its parameters, render into an image.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <epi/epi.h>

#include "host/Effect.h"
#include "host/Plugin.h"
#include "host/frames/PngReader.h"
#include "host/frames/PngWriter.h"
#include "sheet/Resample.h"

namespace {

constexpr std::int32_t kMargin = 36;
constexpr std::int32_t kGap = 24;
constexpr std::int32_t kTitleHeight = 58;
constexpr std::int32_t kCaptionHeight = 52;
constexpr std::int32_t kFrame = 1; // the line around a picture

using Rgb = std::array<std::uint8_t, 3>;
constexpr Rgb kPaper { 0x1E, 0x20, 0x25 };
constexpr Rgb kFrameColor { 0x4A, 0x4F, 0x59 };
constexpr Rgb kTitleColor { 0xFF, 0xFF, 0xFF };
constexpr Rgb kCaptionColor { 0xEC, 0xEE, 0xF1 };
constexpr Rgb kNoteColor { 0x9C, 0xA4, 0xB2 };

struct Tile {
    std::string caption;
    std::string note; // smaller, below the caption
    std::unique_ptr<host::Image> picture;
};

struct Options {
    std::string title;
    std::int32_t columns = 3;
    std::int32_t tileWidth = 480;
    std::filesystem::path output;
    std::vector<std::string> pictures; // "caption=file" or "caption|note=file"
};

struct Text {
    std::string_view text;
    tagPOINT at;
    std::int32_t size;
    Rgb color;
};

// One line of text in the default font, blended.
_TEXTPARAM LineOfText(const Text& line, const _TEXTPARAM& defaults) {
    _TEXTPARAM params = defaults;
    params.ptPos = line.at;
    params.nFontSize = line.size;
    params.crText = static_cast<COLORREF>(line.color[0] | line.color[1] << 8 | line.color[2] << 16);
    params.nOpacity = 100;
    params.dwFlags = TEXT_DIALOGUE;
    const std::size_t length = std::min(line.text.size(), sizeof params.szDialogue - 1);
    std::memcpy(params.szDialogue, line.text.data(), length);
    params.szDialogue[length] = '\0';
    return params;
}

class Sheet {
public:
    // Null with the reason when there is no plug-in or no memory.
    static std::unique_ptr<Sheet> Make(std::int32_t width, std::int32_t height, std::string& why) {
        auto sheet = std::unique_ptr<Sheet>(new Sheet);
        const std::shared_ptr<host::Plugin> plugin = host::Plugin::LoadByName("TextOverlay", why);
        if (plugin)
            sheet->m_effect = host::Effect::Make(plugin, why);
        if (!sheet->m_effect)
            return nullptr;
        sheet->m_frame.image = host::Image::Make(width, height, host::kRgb24);
        if (!sheet->m_frame.image) {
            why = "there is no memory for the sheet";
            return nullptr;
        }
        sheet->Fill(0, 0, width, height, kPaper);
        return sheet;
    }

    void Place(const host::Image& picture, std::int32_t left, std::int32_t top) {
        Fill(left - kFrame, top - kFrame, picture.Width() + 2 * kFrame,
             picture.Height() + 2 * kFrame, kFrameColor);
        for (std::int32_t y = 0; y < picture.Height(); ++y)
            std::ranges::copy(picture.Row(y), Pixels(left, top + y));
    }

    bool Write(const Text& line, std::string& why) {
        return m_effect->RenderWith(LineOfText(line, m_effect->CopyParams()), *m_frame.image, {},
                                    why);
    }

    bool Save(const std::filesystem::path& file, std::string& why) const {
        host::PngWriter writer(host::kPngLevelMax);
        const host::PixelRect all { 0, 0, m_frame.image->Width(), m_frame.image->Height() };
        return writer.Write(file, m_frame, all, host::Existing::kOverwrite, why) ==
               host::OutputResult::kWritten;
    }

private:
    Sheet() = default;

    std::uint8_t* Pixels(std::int32_t x, std::int32_t y) {
        return m_frame.image->Row(y).data() + static_cast<std::size_t>(x) * kPaper.size();
    }

    void Fill(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height,
              const Rgb& color) {
        for (std::int32_t y = top; y < top + height; ++y)
            for (std::int32_t x = left; x < left + width; ++x)
                std::ranges::copy(color, Pixels(x, y));
    }

    std::unique_ptr<host::Effect> m_effect;
    host::Frame m_frame;
};

bool ReadTile(const std::string& argument, std::int32_t width, Tile& tile, std::string& why) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos) {
        why = "'" + argument + "' is not CAPTION=FILE";
        return false;
    }
    const std::string label = argument.substr(0, equals);
    const std::size_t bar = std::min(label.find('|'), label.size());
    tile.caption = label.substr(0, bar);
    tile.note = label.substr(std::min(bar + 1, label.size()));

    host::Frame frame;
    if (!host::PngReader().Read(argument.substr(equals + 1), frame, why))
        return false;
    const double ratio = static_cast<double>(frame.image->Height()) / frame.image->Width();
    const auto height = static_cast<std::int32_t>(std::clamp(width * ratio, 1.0, 8.0 * width));
    tile.picture = sheet::Resample(*frame.image, width, height);
    if (!tile.picture)
        why = "there is no memory for a picture";
    return tile.picture != nullptr;
}

// The tiles from left to right and from top to bottom; a row is as high as its highest picture.
class Layout {
public:
    Layout(const std::vector<Tile>& tiles, const Options& options)
        : m_top(kMargin + (options.title.empty() ? 0 : kTitleHeight)) {
        const std::int32_t columns =
            std::min(options.columns, static_cast<std::int32_t>(tiles.size()));
        m_width = 2 * kMargin + columns * (options.tileWidth + kGap) - kGap;
        std::int32_t rowHeight = 0;
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            const auto column = static_cast<std::int32_t>(i) % columns;
            if (column == 0)
                m_top += std::exchange(rowHeight, 0);
            rowHeight = std::max(rowHeight, tiles[i].picture->Height() + kCaptionHeight + kGap);
            m_places.push_back({ kMargin + column * (options.tileWidth + kGap), m_top });
        }
        m_height = m_top + rowHeight - kGap + kMargin / 2;
    }

    std::int32_t Width() const { return m_width; }
    std::int32_t Height() const { return m_height; }
    tagPOINT Place(std::size_t tile) const { return m_places[tile]; }

private:
    std::vector<tagPOINT> m_places;
    std::int32_t m_top;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
};

bool MakeSheet(const Options& options, std::string& why) {
    std::vector<Tile> tiles(options.pictures.size());
    for (std::size_t i = 0; i < tiles.size(); ++i)
        if (!ReadTile(options.pictures[i], options.tileWidth, tiles[i], why))
            return false;
    const Layout layout(tiles, options);
    const std::unique_ptr<Sheet> sheet = Sheet::Make(layout.Width(), layout.Height(), why);
    if (!sheet)
        return false;
    if (!options.title.empty() &&
        !sheet->Write({ options.title, { kMargin, kMargin - 6 }, 28, kTitleColor }, why))
        return false;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const auto [left, top] = layout.Place(i);
        sheet->Place(*tiles[i].picture, left, top);
        const std::int32_t below = top + tiles[i].picture->Height();
        if (!sheet->Write({ tiles[i].caption, { left, below + 7 }, 16, kCaptionColor }, why) ||
            !sheet->Write({ tiles[i].note, { left, below + 28 }, 13, kNoteColor }, why))
            return false;
    }
    return sheet->Save(options.output, why);
}

} // namespace

int main(int argc, char** argv) try {
    Options options;
    CLI::App app("Lays pictures on one sheet, each with its caption, and writes it as a PNG file.");
    app.add_option("OUTPUT", options.output, "The sheet")->required();
    app.add_option("PICTURES", options.pictures, "CAPTION=FILE or 'CAPTION|NOTE=FILE', PNG files")
        ->required();
    app.add_option("--title", options.title, "A line above the pictures");
    app.add_option("--columns", options.columns, "How many pictures stand side by side")
        ->check(CLI::Range(1, 16))
        ->capture_default_str();
    app.add_option("--tile", options.tileWidth, "The width of a picture on the sheet, in pixels")
        ->check(CLI::Range(64, 1920))
        ->capture_default_str();
    CLI11_PARSE(app, argc, argv);

    std::string why;
    if (!MakeSheet(options, why)) {
        std::fprintf(stderr, "contact-sheet: %s\n", why.c_str());
        return 1;
    }
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "contact-sheet: %s\n", error.what());
    return 1;
}
