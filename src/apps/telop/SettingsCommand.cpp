// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Commands.h"

#include <cstdio>
#include <optional>
#include <span>
#include <string>

#include "apps/telop/Console.h"
#include "apps/telop/LoadEffect.h"
#include "apps/telop/WrongFile.h"
#include "host/document/SettingsJson.h"
#include "host/text/TextField.h"

namespace telop {

namespace {

struct SettingsOptions {
    std::optional<std::string> archive; // to start from; else the plug-in's defaults
    std::optional<std::string> from;    // JSON file, "-" for standard input
    std::optional<std::string> output;  // archive; else JSON on standard output
    std::optional<std::string> encoding, plugin;
    bool overwrite = false;
};

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

void ApplyJson(host::Effect& effect, const std::string& file) {
    std::string why;
    const auto params = host::SettingsFromJson(ReadText(file, kMaxJson), effect.CopyParams(), why);
    if (!params)
        throw CommandError(ExitCode::kBadInput,
                           "--from " + ExplainFile(file, Wanted::kJson, file + ": " + why));
    effect.SetParams(*params);
}

// Such a field is drawn to its end, but its text does not fit when it comes back from JSON.
void WarnOfUnterminated(std::span<const char> field, const char* key) {
    if (host::FieldBytes(field).size() == field.size())
        Console::Get().Warn(std::string(key) + ": the text fills its whole field, without an end");
}

void AddSettingsOptions(CLI::App& command, SettingsOptions& options) {
    command.description(kDescription);
    command.add_option("ARCHIVE", options.archive, "Settings to start from, 480 bytes");
    OptionGroup group(command);
    group.Add("--from", options.from, "JSON|-", "JSON to take settings from; - is standard input");
    group.Add("-o,--output", options.output, "ARCHIVE",
              "Archive to write; without it JSON goes to standard output");
    group.Flag("--overwrite", options.overwrite, "Replace the output if it exists");
    group.Add("--encoding", options.encoding, "NAME", "Of the archive's texts; UTF-8, CP932, ...");
    group.Add("--plugin", options.plugin, "BUNDLE", "The bundle to use");
    command.footer(std::string(kExamples) + "\n" + kExitCodeHelp);
}

ExitCode RunSettings(const SettingsOptions& options) {
    SetEncoding(options.encoding);
    const auto effect = LoadEffect(options.plugin, options.archive);
    if (options.from)
        ApplyJson(*effect, *options.from);
    if (options.output) {
        SaveSettings(*effect, *options.output, options.overwrite);
        return ExitCode::kSuccess;
    }
    const auto params = effect->CopyParams();
    WarnOfUnterminated(params.szFontName, "font");
    WarnOfUnterminated(params.szInfoText, "info");
    WarnOfUnterminated(params.szCharacter, "character");
    WarnOfUnterminated(params.szDialogue, "dialogue");
    std::fputs(host::SettingsToJson(params).c_str(), stdout);
    return ExitCode::kSuccess;
}

} // namespace

void AddSettings(CLI::App& program, ExitCode& code) {
    AddCommand(program, code, "settings", AddSettingsOptions, RunSettings);
}

} // namespace telop
