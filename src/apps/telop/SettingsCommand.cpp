// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/SettingsCommand.h"

#include <array>
#include <cstdio>
#include <span>

#include <CLI/CLI.hpp>

#include "apps/telop/Console.h"
#include "apps/telop/LoadEffect.h"
#include "host/WholeFile.h"
#include "host/document/SettingsJson.h"
#include "host/text/TextField.h"

namespace telop {

namespace {

constexpr std::size_t kMaxJson = std::size_t { 1 } << 20;

constexpr const char* kDescription =
    "Shows a settings archive as JSON, and makes one from JSON. Without ARCHIVE it starts from "
    "the\n"
    "plug-in's defaults; a key that the JSON does not name keeps its value.";
constexpr const char* kExamples =
    "Examples:\n"
    "  telop settings shot.settings                             show it\n"
    "  telop settings shot.settings > shot.json                 edit it in a text file ...\n"
    "  telop settings --from shot.json -o new.settings          ... and make an archive of that\n"
    "  echo '{\"size\": 48}' | telop settings --from - -o big.settings shot.settings\n";

std::string ReadStandardInput() {
    std::string text;
    std::array<char, 4096> piece;
    while (auto const count = std::fread(piece.data(), 1, piece.size(), stdin)) {
        text.append(piece.data(), count);
        if (text.size() > kMaxJson)
            throw CommandError(ExitCode::kBadInput, "--from -: more than 1 MiB is no settings");
    }
    return text;
}

std::string ReadJson(const std::string& file) {
    if (file == "-")
        return ReadStandardInput();
    std::string why;
    auto const bytes = host::ReadWholeFile(file, kMaxJson, why);
    if (!bytes)
        throw CommandError(ExitCode::kBadInput, "--from: " + why);
    return { bytes->begin(), bytes->end() };
}

void ApplyJson(host::Effect& effect, const std::string& file) {
    std::string why;
    auto const params = host::SettingsFromJson(ReadJson(file), effect.CopyParams(), why);
    if (!params)
        throw CommandError(ExitCode::kBadInput, "--from " + file + ": " + why);
    effect.SetParams(*params);
}

// Such a field is drawn to its end, but its text does not fit when it comes back from JSON.
void WarnOfUnterminated(std::span<const char> field, const char* key) {
    if (host::FieldBytes(field).size() == field.size())
        Console::Get().Warn(std::string(key) + ": the text fills its whole field, without an end");
}

} // namespace

void AddSettingsOptions(CLI::App& command, SettingsOptions& options) {
    command.description(kDescription);
    command.add_option("ARCHIVE", options.archive, "Settings to start from, 480 bytes");
    command.add_option("--from", options.from, "JSON to take settings from; - is standard input")
        ->option_text("JSON|-");
    command
        .add_option("-o,--output", options.output,
                    "Archive to write; without it JSON goes to standard output")
        ->option_text("ARCHIVE");
    command.add_flag("--overwrite", options.overwrite, "Replace the output if it exists");
    command.add_option("--encoding", options.encoding, "Of the archive's texts; UTF-8, CP932, ...")
        ->option_text("NAME");
    command.add_option("--plugin", options.plugin, "The bundle to use")->option_text("BUNDLE");
    command.footer(std::string(kExamples) + "\n" + kExitCodeHelp);
}

ExitCode RunSettings(const SettingsOptions& options) {
    SetEncoding(options.encoding);
    auto const effect = LoadEffect(options.plugin, options.archive);
    if (options.from)
        ApplyJson(*effect, *options.from);
    if (options.output) {
        SaveSettings(*effect, *options.output, options.overwrite);
        return ExitCode::kSuccess;
    }
    auto const params = effect->CopyParams();
    WarnOfUnterminated(params.szFontName, "font");
    WarnOfUnterminated(params.szInfoText, "info");
    WarnOfUnterminated(params.szCharacter, "character");
    WarnOfUnterminated(params.szDialogue, "dialogue");
    std::fputs(host::SettingsToJson(params).c_str(), stdout);
    return ExitCode::kSuccess;
}

} // namespace telop
