// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/FontsCommand.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/telop/Console.h"
#include "apps/telop/FontSample.h"
#include "apps/telop/LoadEffect.h"
#include "apps/telop/OptionChecks.h"
#include "apps/telop/OptionText.h"
#include "host/frames/PngWriter.h"
#include "host/frames/Sequence.h"
#include "platform/Fonts.h"

namespace telop {

namespace {

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
    auto const filter = options.filter.value_or("");
    std::erase_if(families, [&](auto const& family) { return !Matches(family, filter); });
    return families;
}

void List(const std::vector<platform::FontFamily>& families, bool files) {
    for (auto const& family : families) {
        std::string line = family.name;
        for (auto const& alias : family.aliases)
            line += (&alias == &family.aliases.front() ? " (" : ", ") + alias;
        line += family.aliases.empty() ? "" : ")";
        if (files)
            line += "\t" + family.file;
        std::puts(line.c_str());
    }
}

void WriteSample(const std::vector<platform::FontFamily>& families, const FontsOptions& options) {
    SampleStyle const style { options.text.value_or(kSampleText), options.size };
    CheckUtf8("--text", style.text);
    std::vector<std::string> names;
    names.reserve(families.size());
    for (auto const& family : families)
        names.push_back(family.name);
    if (names.size() > kMaxSampleFamilies) {
        Console::Get().Warn("the sample shows the first " + std::to_string(kMaxSampleFamilies) +
                            " of " + std::to_string(names.size()) + " families; filter them");
        names.resize(kMaxSampleFamilies);
    }
    auto const frame = DrawFontSample(*LoadEffect(options.plugin, std::nullopt), names, style);
    std::string why;
    auto const existing = options.overwrite ? host::Existing::kOverwrite : host::Existing::kRefuse;
    if (host::PngWriter().Write(*options.sample, frame, {}, existing, why) !=
        host::OutputResult::kWritten)
        throw CommandError(ExitCode::kCannotWrite, why);
}

} // namespace

void AddFontsOptions(CLI::App& command, FontsOptions& options) {
    command.description(
        "Lists the font families that texts can be drawn in, with their other names.");
    command.add_option("FILTER", options.filter, "Only families with this in one of their names");
    command.add_flag("--files", options.files, "Show each family's file too");
    auto* sample =
        command
            .add_option("--sample", options.sample, "Draw a text in each family into a PNG file")
            ->option_text("FILE.png");
    command.add_option("--text", options.text, "The sample's text, one line")
        ->needs(sample)
        ->option_text("TEXT");
    command
        .add_option("--size", options.size,
                    "The sample's size in points (" + std::to_string(options.size) + ")")
        ->check(WholeNumber(4, 400))
        ->needs(sample)
        ->option_text("POINTS");
    command.add_flag("--overwrite", options.overwrite, "Replace the sample if it exists")
        ->needs(sample);
    command.add_option("--plugin", options.plugin, "The bundle to use")->option_text("BUNDLE");
    command.footer("Examples:\n"
                   "  telop fonts\n"
                   "  telop fonts cjk --files\n"
                   "  telop fonts mono --sample mono.png --text 'C-012-0034'\n");
}

ExitCode RunFonts(const FontsOptions& options) {
    if (options.sample && !host::MayHoldPng(*options.sample))
        FailUsage("--sample: " + *options.sample +
                  ": samples are written as PNG; let the name end in .png");
    auto const families = MatchingFamilies(options);
    if (families.empty())
        throw CommandError(ExitCode::kBadInput,
                           options.filter ? "no installed family has '" + *options.filter +
                                                "' in its name; 'telop fonts' lists them all"
                                          : "no font is installed");
    if (options.sample)
        WriteSample(families, options);
    else
        List(families, options.files);
    return ExitCode::kSuccess;
}

} // namespace telop
