// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Commands.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "apps/telop/Console.h"
#include "apps/telop/ListsFile.h"
#include "apps/telop/LoadEffect.h"
#include "apps/telop/OptionText.h"
#include "host/document/ListsJson.h"
#include "host/frames/OutputFile.h"
#include "host/text/TextField.h"
#include "platform/TextEncoding.h"

namespace telop {

namespace {

struct ListsOptions {
    enum class Action { kShow, kLoad, kSave };
    Action action = Action::kShow;
    std::string file;                            // "-": standard input or output
    std::optional<std::string> encoding, plugin; // encoding: of the file's texts
    host::ListOf list = host::ListOf::kInfo;
    bool asJson = false; // show
    // load
    std::optional<std::string> into; // JSON of lists to start from; else the plug-in's defaults
    std::optional<std::string> output;
    // save; all but `json` read lines
    std::optional<std::string> from, fromEncoding, json;
    LineEnds lineEnds = LineEnds::kCr;
    bool cut = false;

    bool overwrite = false;
};

constexpr std::size_t kMaxFile = std::numeric_limits<std::int32_t>::max();
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr const char* kDescription =
    "Shows, takes in and makes the files of reusable texts that the list editor saves.\n"
    "Such a file is plain text: up to 20 entries of up to 63 bytes, each ended by a CR.";
constexpr const char* kExamples =
    "Examples:\n"
    "  telop lists show directions.txt                          what the list editor reads of it\n"
    "  telop lists show --encoding CP932 --json directions.txt\n"
    "  telop lists save --from old.txt --from-encoding CP932 new.txt     CP932 to UTF-8\n"
    "  telop lists load --list character names.txt -o lists.json         for a host's settings\n"
    "  printf 'PAN\\nFOLLOW\\n' | telop lists save directions.txt\n";

// Files and streams ------------------------------------------------------------------------------

std::string NameOf(const std::string& file) {
    return file == "-" ? "standard input" : file;
}

void WriteText(const std::string& file, std::string_view text, bool overwrite) {
    if (file == "-") {
        std::fwrite(text.data(), 1, text.size(), stdout);
        return;
    }
    const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    const auto existing = overwrite ? host::Existing::kOverwrite : host::Existing::kRefuse;
    std::string why;
    if (host::WriteWhole(file, bytes, existing, why) != host::OutputResult::kWritten)
        throw CommandError(
            ExitCode::kCannotWrite,
            why + (why.ends_with("exists already") ? "; --overwrite replaces it" : ""));
}

// Says which file a message is about.
template <class Work>
auto About(const std::string& file, Work work) {
    try {
        return work();
    } catch (const CommandError& error) {
        throw CommandError(error.Code(), NameOf(file) + ": " + error.what());
    }
}

// Show and load ----------------------------------------------------------------------------------

// What is lost on the way is told.
std::vector<std::string> LoadEntries(const std::string& file, Reading reading) {
    const auto text = ReadText(file, kMaxFile);
    std::vector<std::string> warnings;
    auto entries = ReadEntries(text, warnings, reading);
    for (const auto& warning : warnings)
        Console::Get().Warn(NameOf(file) + ": " + warning);
    if (entries.empty())
        throw CommandError(ExitCode::kBadInput,
                           NameOf(file) + (text.empty() ? ": is empty; a list has an entry at least"
                                                        : ": has no entry"));
    return entries;
}

void Show(const ListsOptions& options) {
    const auto entries = LoadEntries(options.file, Reading::kAsEditor);
    if (options.asJson) {
        std::fputs(host::EntriesToJson(entries).c_str(), stdout);
        return;
    }
    for (std::size_t i = 0; i < entries.size(); ++i)
        std::printf("%2zu  %s\n", i + 1, host::EscapeBytes(entries[i]).c_str());
}

_TEXT_DIALOG_PARAM DefaultLists(const std::optional<std::string>& plugin) {
    const auto effect = LoadEffect(plugin, std::nullopt);
    const auto settings = effect->Settings();
    _TEXT_DIALOG_PARAM lists {};
    if (settings.size() != sizeof lists)
        throw CommandError(ExitCode::kBadInput,
                           "the plug-in's dialog settings hold no lists of texts");
    std::memcpy(&lists, settings.data(), sizeof lists);
    return lists;
}

void ReadLists(const std::string& file, _TEXT_DIALOG_PARAM& lists) {
    std::string why;
    if (!host::ListsFromJson(ReadText(file, kMaxFile), lists, why))
        throw CommandError(ExitCode::kBadInput, NameOf(file) + ": " + why);
}

void Load(const ListsOptions& options) {
    const auto entries = LoadEntries(options.file, Reading::kAsMeant);
    auto lists = DefaultLists(options.plugin);
    if (options.into)
        ReadLists(*options.into, lists);
    auto& registered = host::PairOf(lists, options.list).szPreset;
    std::memset(registered, 0, sizeof registered);
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i].copy(registered[i], kEntryBytes);
    WriteText(options.output.value_or("-"), host::ListsToJson(lists), options.overwrite);
}

// Save -------------------------------------------------------------------------------------------

void CheckCount(const std::string& name, std::size_t count, bool cut) {
    if (count <= kListEntries)
        return;
    const auto has = name + ": has " + std::to_string(count) + " entries";
    if (!cut)
        throw CommandError(ExitCode::kBadInput,
                           has + ", and the limit is 20; --cut takes the first");
    Console::Get().Warn(has + "; the first 20 are taken");
}

// The lines as UTF-8, with their names.
std::vector<std::pair<std::string, std::string>> ReadLines(const ListsOptions& options) {
    const auto file = options.from.value_or("-");
    const auto text = ReadText(file, kMaxFile);
    std::string_view rest = text;
    if (rest.starts_with(kByteOrderMark))
        rest.remove_prefix(kByteOrderMark.size());
    if (!platform::SetApplicationTextEncoding(options.fromEncoding.value_or("UTF-8")))
        FailUsage("--from-encoding: '" + *options.fromEncoding + "' is no known encoding");
    const auto lines = SplitAtAnyEnd(rest);
    CheckCount(NameOf(file), lines.withText, options.cut);
    std::vector<std::pair<std::string, std::string>> entries;
    for (const auto& line : lines.first) {
        const auto name = NameOf(file) + ": line " + std::to_string(line.number);
        auto utf8 = platform::DecodeText(line.bytes);
        const auto back = platform::EncodeText(utf8);
        if (!back.complete || back.bytes != line.bytes)
            throw CommandError(ExitCode::kBadInput, name + ": '" + host::EscapeBytes(line.bytes) +
                                                        "' is no text in " +
                                                        platform::ApplicationTextEncoding() +
                                                        "; --from-encoding names its encoding");
        entries.emplace_back(name, std::move(utf8));
    }
    return entries;
}

// The limit of an entry in the file's encoding.
std::string Fitting(const std::string& name, const std::string& bytes, bool cut) {
    if (bytes.size() <= kEntryBytes)
        return bytes;
    const auto size =
        std::to_string(bytes.size()) + " bytes in " + platform::ApplicationTextEncoding();
    if (!cut)
        throw CommandError(ExitCode::kBadInput,
                           name + " has " + size + ", and the limit is 63; --cut shortens it");
    std::string fitting(platform::CutToWholeCharacters(bytes, kEntryBytes));
    Console::Get().Warn(name + " has " + size + " and is cut to '" + host::EscapeBytes(fitting) +
                        "'");
    return fitting;
}

std::vector<std::string> EntriesOfLines(const ListsOptions& options) {
    SetEncoding(options.encoding);
    const auto encoding = platform::ApplicationTextEncoding();
    const auto lines = ReadLines(options);
    SetEncoding(encoding);
    std::vector<std::string> entries;
    for (const auto& [name, utf8] : lines) {
        const auto encoded = platform::EncodeText(utf8);
        if (!encoded.complete)
            throw CommandError(ExitCode::kBadInput, name + ": " + host::LackReason(utf8));
        entries.push_back(Fitting(name, encoded.bytes, options.cut));
    }
    return entries;
}

std::vector<std::string> EntriesOfJson(const ListsOptions& options) {
    SetEncoding(options.encoding);
    const auto& file = *options.json;
    std::string why;
    auto parsed = host::EntriesFromJson(ReadText(file, kMaxFile), options.list, why);
    if (!parsed)
        throw CommandError(ExitCode::kBadInput, NameOf(file) + ": " + why);
    auto entries = *std::move(parsed);
    CheckCount(NameOf(file), entries.size(), options.cut);
    entries.resize(std::min(entries.size(), kListEntries));
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i] =
            Fitting(NameOf(file) + ": entry " + std::to_string(i + 1), entries[i], options.cut);
    return entries;
}

void Save(const ListsOptions& options) {
    const auto entries = options.json ? EntriesOfJson(options) : EntriesOfLines(options);
    const auto source = options.json.value_or(options.from.value_or("-"));
    if (entries.empty())
        throw CommandError(ExitCode::kBadInput,
                           NameOf(source) + ": has no entry, and an empty list cannot be loaded");
    const auto file = About(source, [&] { return WriteEntries(entries, options.lineEnds); });
    WriteText(options.file, file, options.overwrite);
}

// Options ----------------------------------------------------------------------------------------

CLI::App& AddAction(CLI::App& command, ListsOptions& options, ListsOptions::Action action,
                    const char* name, const char* description, const char* fileIs) {
    auto& added = *command.add_subcommand(name, description);
    added.callback([&options, action] { options.action = action; });
    added.add_option("FILE", options.file, fileIs)->required();
    OptionGroup(added).Add(
        "--encoding", options.encoding, "NAME",
        "Of the file's texts; UTF-8, CP932, EUC-JP, ... (TELOP_TEXT_ENCODING, or UTF-8)");
    return added;
}

void AddList(CLI::App& action, ListsOptions& options, const char* what) {
    OptionGroup(action)
        .Add("--list", options.list, "NAME", std::string(what) + ": info (the start) or character")
        ->transform(PlaceAmong({ "info", "character" }));
}

void AddLoad(CLI::App& command, ListsOptions& options) {
    auto& load = AddAction(command, options, ListsOptions::Action::kLoad, "load",
                           "Takes a file into the lists of a host's settings, as JSON.",
                           "List file to take in, with CR, CR LF or LF at its lines' ends; - is "
                           "standard input");
    AddList(load, options, "Which list the entries replace");
    OptionGroup group(load);
    group.Add("--into", options.into, "JSON|-",
              "JSON of lists to start from; else the plug-in's defaults");
    group.Add("-o,--output", options.output, "JSON", "JSON to write; else standard output");
    group.Flag("--overwrite", options.overwrite, "Replace the output if it exists");
    group.Add("--plugin", options.plugin, "BUNDLE", "The bundle to use");
}

void AddSave(CLI::App& command, ListsOptions& options) {
    auto& save = AddAction(command, options, ListsOptions::Action::kSave, "save",
                           "Makes a file from lines of text or from JSON.",
                           "List file to write; - is standard output");
    OptionGroup group(save);
    auto* from =
        group.Add("--from", options.from, "FILE|-",
                  "Text to take lines from, ended by CR, CR LF or LF; else standard input");
    auto* fromEncoding =
        group.Add("--from-encoding", options.fromEncoding, "NAME", "Of that text (UTF-8)");
    group
        .Add("--json", options.json, "JSON|-",
             "Take entries from JSON that 'show --json' or 'load' has made")
        ->excludes(from)
        ->excludes(fromEncoding);
    AddList(save, options, "Which list of 'load' to take");
    group
        .Add("--line-ends", options.lineEnds, "NAME",
             "cr (the start), which the list editor reads; crlf or lf for other programs")
        ->transform(PlaceAmong({ "cr", "crlf", "lf" }));
    group.Flag("--cut", options.cut,
               "Shorten entries to 63 bytes and take the first 20, with a warning, instead of "
               "refusing them");
    group.Flag("--overwrite", options.overwrite, "Replace the file if it exists");
}

void AddListsOptions(CLI::App& command, ListsOptions& options) {
    command.description(kDescription);
    command.require_subcommand(1);
    auto& show = AddAction(command, options, ListsOptions::Action::kShow, "show",
                           "Shows what the list editor reads of a file.",
                           "List file to show; - is standard input");
    show.add_flag("--json", options.asJson, "As JSON, which save takes");
    AddLoad(command, options);
    AddSave(command, options);
    for (auto* action : command.get_subcommands({}))
        action->footer(std::string(kExamples) + "\n" + kExitCodeHelp);
    command.footer(std::string(kExamples) + "\n" + kExitCodeHelp);
}

ExitCode RunLists(const ListsOptions& options) {
    if (options.action == ListsOptions::Action::kSave) {
        Save(options);
        return ExitCode::kSuccess;
    }
    SetEncoding(options.encoding);
    if (options.action == ListsOptions::Action::kLoad)
        Load(options);
    else
        Show(options);
    return ExitCode::kSuccess;
}

} // namespace

void AddLists(CLI::App& program, ExitCode& code) {
    AddCommand(program, code, "lists", AddListsOptions, RunLists);
}

} // namespace telop
