// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/ListsCommand.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <limits>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/telop/Console.h"
#include "apps/telop/LoadEffect.h"
#include "host/WholeFile.h"
#include "host/frames/OutputFile.h"
#include "host/text/TextField.h"
#include "platform/TextEncoding.h"

namespace telop {

namespace {

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

// ---------------------------------------------------------------------------- files and streams

std::string NameOf(const std::string& file) {
    return file == "-" ? "standard input" : file;
}

std::string ReadStandardInput() {
    std::string text;
    std::array<char, 65536> piece;
    while (auto const count = std::fread(piece.data(), 1, piece.size(), stdin)) {
        text.append(piece.data(), count);
        if (text.size() > kMaxFile)
            throw CommandError(ExitCode::kBadInput,
                               "standard input: more than " + std::to_string(kMaxFile) + " bytes");
    }
    return text;
}

std::string ReadText(const std::string& file) {
    if (file == "-")
        return ReadStandardInput();
    std::string why;
    auto const bytes = host::ReadWholeFile(file, kMaxFile, why);
    if (!bytes)
        throw CommandError(ExitCode::kBadInput, why);
    return { bytes->begin(), bytes->end() };
}

void WriteText(const std::string& file, std::string_view text, bool overwrite) {
    if (file == "-") {
        std::fwrite(text.data(), 1, text.size(), stdout);
        return;
    }
    auto const bytes = std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    auto const existing = overwrite ? host::Existing::kOverwrite : host::Existing::kRefuse;
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

// ------------------------------------------------------------------------------- show and load

// What the list editor has after loading the file; what it loses on the way is told.
std::vector<std::string> LoadEntries(const std::string& file) {
    auto const text = ReadText(file);
    std::vector<std::string> warnings;
    auto entries = ReadEntries(text, warnings);
    for (auto const& warning : warnings)
        Console::Get().Warn(NameOf(file) + ": " + warning);
    if (entries.empty())
        throw CommandError(ExitCode::kBadInput,
                           NameOf(file) + (text.empty() ? ": is empty; a list has an entry at least"
                                                        : ": has no entry"));
    return entries;
}

void Show(const ListsOptions& options) {
    auto const entries = LoadEntries(options.file);
    if (options.asJson) {
        std::fputs(host::EntriesToJson(entries).c_str(), stdout);
        return;
    }
    for (std::size_t i = 0; i < entries.size(); ++i)
        std::printf("%2zu  %s\n", i + 1, host::EscapeBytes(entries[i]).c_str());
}

_TEXT_DIALOG_PARAM DefaultLists(const std::optional<std::string>& plugin) {
    auto const effect = LoadEffect(plugin, std::nullopt);
    auto const settings = effect->Settings();
    _TEXT_DIALOG_PARAM lists {};
    if (settings.size() != sizeof lists)
        throw CommandError(ExitCode::kBadInput,
                           "the plug-in's dialog settings hold no lists of texts");
    std::memcpy(&lists, settings.data(), sizeof lists);
    return lists;
}

void ReadLists(const std::string& file, _TEXT_DIALOG_PARAM& lists) {
    std::string why;
    if (!host::ListsFromJson(ReadText(file), lists, why))
        throw CommandError(ExitCode::kBadInput, NameOf(file) + ": " + why);
}

void Load(const ListsOptions& options) {
    auto const entries = LoadEntries(options.file);
    auto lists = DefaultLists(options.plugin);
    if (options.into)
        ReadLists(*options.into, lists);
    auto& registered = host::PairOf(lists, options.list).szPreset;
    std::memset(registered, 0, sizeof registered);
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i].copy(registered[i], kEntryBytes);
    WriteText(options.output.value_or("-"), host::ListsToJson(lists), options.overwrite);
}

// ---------------------------------------------------------------------------------------- save

void CheckCount(const std::string& name, std::size_t count, bool cut) {
    if (count <= kListEntries)
        return;
    auto const has = name + ": has " + std::to_string(count) + " entries";
    if (!cut)
        throw CommandError(ExitCode::kBadInput,
                           has + ", and the limit is 20; --cut takes the first");
    Console::Get().Warn(has + "; the first 20 are taken");
}

// The lines as UTF-8, with their names.
std::vector<std::pair<std::string, std::string>> ReadLines(const ListsOptions& options) {
    auto const file = options.from.value_or("-");
    auto const text = ReadText(file);
    std::string_view rest = text;
    if (rest.starts_with(kByteOrderMark))
        rest.remove_prefix(kByteOrderMark.size());
    if (!platform::SetApplicationTextEncoding(options.fromEncoding.value_or("UTF-8")))
        FailUsage("--from-encoding: '" + *options.fromEncoding + "' is no known encoding");
    auto const lines = SplitAtAnyEnd(rest);
    CheckCount(NameOf(file), lines.withText, options.cut);
    std::vector<std::pair<std::string, std::string>> entries;
    for (auto const& line : lines.first) {
        auto const name = NameOf(file) + ": line " + std::to_string(line.number);
        auto utf8 = platform::DecodeText(line.bytes);
        auto const back = platform::EncodeText(utf8);
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
    auto const size =
        std::to_string(bytes.size()) + " bytes in " + platform::ApplicationTextEncoding();
    if (!cut)
        throw CommandError(ExitCode::kBadInput,
                           name + " has " + size + ", and the limit is 63; --cut shortens it");
    std::string fitting(platform::CutToWholeCharacters(bytes, kEntryBytes));
    Console::Get().Warn(name + " has " + size + " and is cut to '" + host::EscapeBytes(fitting) +
                        "'");
    return fitting;
}

std::string Lacking(std::string name, const std::string& utf8) {
    name.append(": '").append(utf8).append("' has characters that ");
    return name.append(platform::ApplicationTextEncoding()).append(" lacks");
}

std::vector<std::string> EntriesOfLines(const ListsOptions& options) {
    SetEncoding(options.encoding);
    auto const encoding = platform::ApplicationTextEncoding();
    auto const lines = ReadLines(options);
    SetEncoding(encoding);
    std::vector<std::string> entries;
    for (auto const& [name, utf8] : lines) {
        auto const encoded = platform::EncodeText(utf8);
        if (!encoded.complete)
            throw CommandError(ExitCode::kBadInput, Lacking(name, utf8));
        entries.push_back(Fitting(name, encoded.bytes, options.cut));
    }
    return entries;
}

std::vector<std::string> EntriesOfJson(const ListsOptions& options) {
    SetEncoding(options.encoding);
    auto const& file = *options.json;
    std::string why;
    auto parsed = host::EntriesFromJson(ReadText(file), options.list, why);
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
    auto const entries = options.json ? EntriesOfJson(options) : EntriesOfLines(options);
    auto const source = options.json.value_or(options.from.value_or("-"));
    if (entries.empty())
        throw CommandError(ExitCode::kBadInput,
                           NameOf(source) + ": has no entry, and an empty list cannot be loaded");
    auto const file = About(source, [&] { return WriteEntries(entries, options.lineEnds); });
    WriteText(options.file, file, options.overwrite);
}

// ------------------------------------------------------------------------------------- options

CLI::App& AddAction(CLI::App& command, ListsOptions& options, ListsOptions::Action action,
                    const char* name, const char* description, const char* fileIs) {
    auto& added = *command.add_subcommand(name, description);
    added.callback([&options, action] { options.action = action; });
    added.add_option("FILE", options.file, fileIs)->required();
    added
        .add_option(
            "--encoding", options.encoding,
            "Of the file's texts; UTF-8, CP932, EUC-JP, ... (TELOP_TEXT_ENCODING, or UTF-8)")
        ->option_text("NAME");
    return added;
}

void AddList(CLI::App& action, ListsOptions& options, const char* what) {
    static const std::map<std::string, host::ListOf> kLists {
        { "info", host::ListOf::kInfo }, { "character", host::ListOf::kCharacter }
    };
    action
        .add_option("--list", options.list, std::string(what) + ": info (the start) or character")
        ->transform(CLI::CheckedTransformer(kLists))
        ->option_text("NAME");
}

void AddLoad(CLI::App& command, ListsOptions& options) {
    auto& load = AddAction(command, options, ListsOptions::Action::kLoad, "load",
                           "Takes a file into the lists of a host's settings, as JSON.",
                           "List file to take in; - is standard input");
    AddList(load, options, "Which list the entries replace");
    load.add_option("--into", options.into,
                    "JSON of lists to start from; else the plug-in's defaults")
        ->option_text("JSON|-");
    load.add_option("-o,--output", options.output, "JSON to write; else standard output")
        ->option_text("JSON");
    load.add_flag("--overwrite", options.overwrite, "Replace the output if it exists");
    load.add_option("--plugin", options.plugin, "The bundle to use")->option_text("BUNDLE");
}

void AddSave(CLI::App& command, ListsOptions& options) {
    static const std::map<std::string, LineEnds> kEnds { { "cr", LineEnds::kCr },
                                                         { "crlf", LineEnds::kCrLf },
                                                         { "lf", LineEnds::kLf } };
    auto& save = AddAction(command, options, ListsOptions::Action::kSave, "save",
                           "Makes a file from lines of text or from JSON.",
                           "List file to write; - is standard output");
    auto* from = save.add_option("--from", options.from,
                                 "Text to take lines from, ended by CR, CR LF or LF; else standard "
                                 "input")
                     ->option_text("FILE|-");
    auto* fromEncoding =
        save.add_option("--from-encoding", options.fromEncoding, "Of that text (UTF-8)")
            ->option_text("NAME");
    save.add_option("--json", options.json,
                    "Take entries from JSON that 'show --json' or 'load' has made")
        ->excludes(from)
        ->excludes(fromEncoding)
        ->option_text("JSON|-");
    AddList(save, options, "Which list of 'load' to take");
    save.add_option("--line-ends", options.lineEnds,
                    "cr (the start), which the list editor reads; crlf or lf for other programs")
        ->transform(CLI::CheckedTransformer(kEnds, CLI::ignore_case))
        ->option_text("NAME");
    save.add_flag("--cut", options.cut,
                  "Shorten entries to 63 bytes and take the first 20, with a warning, instead of "
                  "refusing them");
    save.add_flag("--overwrite", options.overwrite, "Replace the file if it exists");
}

} // namespace

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

} // namespace telop
