// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Commands.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "apps/telop/Console.h"
#include "apps/telop/LoadEffect.h"
#include "apps/telop/Nearest.h"
#include "apps/telop/OptionText.h"
#include "host/Effect.h"
#include "host/Message.h"
#include "host/frames/PngWriter.h"
#include "host/frames/Sequence.h"
#include "host/text/TextField.h"
#include "platform/Fonts.h"

namespace telop {

namespace {

struct FontsOptions {
    std::optional<std::string> filter; // part of a family's name, in any case
    bool files = false;
    std::optional<std::string> sample; // PNG file
    std::optional<std::string> text;   // of the sample
    int size = 32;
    bool overwrite = false;
    std::optional<std::string> plugin;
};

constexpr std::size_t kMaxSampleFamilies = 100;
constexpr const char* kSampleText = "Cut 12 PAN ÀÉg ひらがな漢字";

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool ContainsFolded(const std::string& text, const std::string& part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(),
                       [](char a, char b) { return Lower(a) == Lower(b); }) != text.end();
}

bool Matches(const platform::FontFamily& family, const std::string& filter) {
    return ContainsFolded(family.name, filter) ||
           std::any_of(family.aliases.begin(), family.aliases.end(),
                       [&](const std::string& alias) { return ContainsFolded(alias, filter); });
}

std::vector<platform::FontFamily> MatchingFamilies(const FontsOptions& options) {
    auto families = platform::InstalledFontFamilies();
    const auto filter = options.filter.value_or("");
    std::erase_if(families, [&](const auto& family) { return !Matches(family, filter); });
    return families;
}

void List(const std::vector<platform::FontFamily>& families, bool files) {
    for (const auto& family : families) {
        std::string line = host::Printable(family.name);
        for (const auto& alias : family.aliases)
            line += (&alias == &family.aliases.front() ? " (" : ", ") + host::Printable(alias);
        line += family.aliases.empty() ? "" : ")";
        if (files)
            line += "\t" + host::Printable(family.file);
        std::puts(line.c_str());
    }
}

constexpr std::int32_t kWidth = 1280;
constexpr std::int32_t kMargin = 16;
constexpr std::int32_t kTextColumn = 400;
constexpr std::int32_t kNameSize = 16;
constexpr std::size_t kMaxNameBytes = 36; // what fits beside the text

// A line of a family's own ascent and descent rarely needs more.
std::int32_t RowHeight(int sizePx) {
    return std::max(sizePx * 7 / 4, kNameSize * 2);
}

void SetText(std::span<char> field, std::string_view name, std::string_view text) {
    std::string why;
    if (!host::SetField(field, name, text, why))
        throw CommandError(ExitCode::kUsage, why);
}

void Draw(const host::Effect& effect, host::Image& image, const _TEXTPARAM& params) {
    std::string why;
    if (!effect.RenderWith(params, image, {}, why))
        throw CommandError(ExitCode::kBadInput, why);
}

_TEXTPARAM BlackText(std::int32_t x, std::int32_t y, int sizePx) {
    _TEXTPARAM params {};
    params.dwFlags = TEXT_INFO;
    params.nOpacity = 100;
    params.ptPos = { x, y };
    params.nFontSize = sizePx;
    return params;
}

// Black on white, each family's text beside its name.
host::Frame DrawFontSample(const host::Effect& effect, std::span<const std::string> families,
                           const std::string& sample, int sizePx) {
    const auto rowHeight = RowHeight(sizePx);
    const auto rows = static_cast<std::int32_t>(families.size());
    host::Frame frame;
    frame.image = host::Image::Make(kWidth, rows * rowHeight + 2 * kMargin, host::kRgb24);
    if (!frame.image)
        throw CommandError(ExitCode::kUsage, "the sample would be too large; filter the families");
    for (std::int32_t y = 0; y < frame.image->Height(); ++y)
        std::ranges::fill(frame.image->Row(y), std::uint8_t { 255 });
    for (std::int32_t row = 0; row < rows; ++row) {
        const auto top = kMargin + row * rowHeight;
        auto name = BlackText(kMargin, top + (sizePx - kNameSize) / 2, kNameSize);
        SetText(name.szInfoText, "name", families[row].substr(0, kMaxNameBytes));
        Draw(effect, *frame.image, name);
        auto text = BlackText(kTextColumn, top, sizePx);
        SetText(text.szFontName, "family", families[row]);
        SetText(text.szInfoText, "--text", sample);
        Draw(effect, *frame.image, text);
    }
    return frame;
}

void WriteSample(const std::vector<platform::FontFamily>& families, const FontsOptions& options) {
    const auto text = options.text.value_or(kSampleText);
    CheckUtf8("--text", text);
    std::vector<std::string> names;
    names.reserve(families.size());
    for (const auto& family : families)
        names.push_back(family.name);
    if (names.size() > kMaxSampleFamilies) {
        Console::Get().Warn("the sample shows the first " + std::to_string(kMaxSampleFamilies) +
                            " of " + std::to_string(names.size()) + " families; filter them");
        names.resize(kMaxSampleFamilies);
    }
    const auto frame =
        DrawFontSample(*LoadEffect(options.plugin, std::nullopt), names, text, options.size);
    std::string why;
    const auto existing = options.overwrite ? host::Existing::kOverwrite : host::Existing::kRefuse;
    if (host::PngWriter().Write(*options.sample, frame, {}, existing, why) !=
        host::OutputResult::kWritten)
        throw CommandError(ExitCode::kCannotWrite, why);
}

void AddFontsOptions(CLI::App& command, FontsOptions& options) {
    command.description(
        "Lists the font families that texts can be drawn in, with their other names.");
    command.add_option("FILTER", options.filter, "Only families with this in one of their names");
    command.add_flag("--files", options.files, "Show each family's file too");
    OptionGroup group(command);
    auto* sample = group.Add("--sample", options.sample, "FILE.png",
                             "Draw a text in each family into a PNG file");
    group.Add("--text", options.text, "TEXT", "The sample's text, one line")->needs(sample);
    group
        .Add("--size", options.size, "POINTS",
             "The sample's size in points (" + std::to_string(options.size) + ")")
        ->check(WholeNumber(4, 400))
        ->needs(sample);
    group.Flag("--overwrite", options.overwrite, "Replace the sample if it exists")->needs(sample);
    group.Add("--plugin", options.plugin, "BUNDLE", "The bundle to use");
    command.footer("Examples:\n"
                   "  telop fonts\n"
                   "  telop fonts cjk --files\n"
                   "  telop fonts mono --sample mono.png --text 'C-012-0034'\n");
}

ExitCode RunFonts(const FontsOptions& options) {
    if (options.sample && !host::MayHoldPng(*options.sample))
        FailUsage("--sample: " + *options.sample +
                  ": samples are written as PNG; let the name end in .png");
    const auto families = MatchingFamilies(options);
    if (families.empty())
        throw CommandError(ExitCode::kBadInput,
                           options.filter ? "no installed family has '" + *options.filter +
                                                "' in its name; 'telop fonts' lists them all" +
                                                SuggestedFamily(*options.filter)
                                          : "no font is installed");
    if (options.sample)
        WriteSample(families, options);
    else
        List(families, options.files);
    return ExitCode::kSuccess;
}

} // namespace

void AddFonts(CLI::App& program, ExitCode& code) {
    AddCommand(program, code, "fonts", AddFontsOptions, RunFonts);
}

} // namespace telop
