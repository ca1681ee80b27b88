// SPDX-License-Identifier: BSD-3-Clause
// "telop cues": a file of subtitles or dialogue becomes a track of a document, and a track such a file.
#include "apps/telop/Commands.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "apps/telop/Console.h"
#include "apps/telop/LoadEffect.h"
#include "apps/telop/OptionText.h"
#include "apps/telop/ShotOptions.h"
#include "host/Message.h"
#include "host/cues/CueFile.h"
#include "host/cues/CueTracks.h"
#include "host/cues/CueWriter.h"
#include "host/document/SettingsJson.h"
#include "host/frames/OutputFile.h"
#include "host/frames/Sequence.h"
#include "host/jobs/ShotText.h"
#include "platform/TextContext.h"

namespace telop {

namespace {

constexpr const char* kDescription =
    "Makes a document's track of a file of subtitles or dialogue, and such a file of a track.\n\n"
    "FILE is SubRip (.srt), WebVTT (.vtt), ASS (.ass, .ssa) or a table (.csv, .tsv); styles are "
    "left "
    "out.\nA table's first row names its columns: start, then end or duration, text and character, "
    "in any\norder. A time is a frame's number (1001), a time code (00:00:41:17) or a clock "
    "(0:41.7).\nOr FILE is a document, and -o names the .srt or .csv that its cues go to.";

constexpr const char* kExamples =
    "Where a cue ends at the moment that the next one begins, the frame is the next one's. What\n"
    "cannot be read is named with its line, and the rest is written. Tokens, such as {tc}, work "
    "in\n"
    "tables; in the other kinds a brace is a brace.\n\n"
    "Examples:\n"
    "  telop cues shot.srt -o shot.telop --fps 24 --start 1001\n"
    "  telop cues script.csv -o shot.telop --encoding CP932 --character-track Names\n"
    "  telop cues shot.srt --frames plates/shot.####.png -o shot.telop\n"
    "  telop render --document shot.telop out/\n"
    "  telop cues new.srt --into shot.telop              # the same look, other cues\n"
    "  telop cues shot.telop -o shot.srt\n"
    "  telop cues shot.telop --track Names -o names.csv\n\n"
    "Exit codes:\n"
    "  0    all is done\n"
    "  1    some cues are left out or cannot be drawn, each is named; the others are written\n"
    "  2    the command line cannot be understood\n"
    "  3    the file, the document or its frames cannot be used\n"
    "  5    the output exists already or cannot be written\n";

struct CuesOptions {
    std::string file;
    std::optional<std::string> output;
    ShotOptions shot;
    std::optional<std::int64_t> start;
    std::optional<std::string> encoding, frames, into, plugin;
    std::optional<std::string> name, characterTrack;
    std::optional<std::string> track; // on the way out
    bool overwrite = false;
};

void AddCuesOptions(CLI::App& command, CuesOptions& options) {
    command.description(kDescription);
    command.add_option("FILE", options.file, "Cues, or a document; - is standard input")
        ->required();
    OptionGroup group(command);
    group.Add("-o,--output", options.output, "FILE",
              "Document (.telop) to write, or of a document's cues an .srt or .csv");
    group.Flag("--overwrite", options.overwrite, "Replace the output if it exists");
    group.Add("--encoding", options.encoding, "NAME",
              "Of the cues' file; CP932, ... (its byte order mark, or UTF-8)");
    group
        .Add("--start", options.start, "FRAME",
             "The frame at time 0 (the first of the document's frames, or 1)")
        ->check(WholeNumber(-host::kFrameMax, host::kFrameMax));
    AddShotOptions(command, options.shot);
    OptionGroup document(command, "Document");
    document.Add("--name", options.name, "NAME", "Of the track that gets the cues (Dialogue)");
    document.Add("--character-track", options.characterTrack, "NAME",
                 "Another track, with the names of who speaks");
    document.Add("--frames", options.frames, "INPUT",
                 "Pictures that the document is of: picture, sequence or folder");
    document.Add("--into", options.into, "DOCUMENT",
                 "Change the tracks of these names in this document, or add them");
    document.Add("--track", options.track, "NAME",
                 "Of a document: the track to take cues from (the one with dialogue)");
    document.Add("--plugin", options.plugin, "BUNDLE", "The bundle whose look new tracks have");
    command.footer(kExamples);
}

// What both ways have in common ------------------------------------------------------------------

std::string Cues(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " cue" : " cues");
}

std::string NameOf(const std::string& file) {
    return file == "-" ? "standard input" : host::Printable(file);
}

bool IsNamed(const std::string& file, std::string_view extension) {
    auto found = std::filesystem::path(file).extension().string();
    std::ranges::transform(found, found.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    });
    return found == extension;
}

bool IsDocument(const std::string& file) {
    return IsNamed(file, host::Document::kExtension);
}

// The shot's frames; null where the document names none, or none that are there.
std::optional<host::Sequence> FramesOf(const host::Document& document) {
    std::string why;
    auto frames = document.input.empty() ? std::nullopt : host::Sequence::Open(document.input, why);
    if (!why.empty())
        Console::Get().Warn(why);
    return frames;
}

host::CueTiming TimingOf(const CuesOptions& options, const host::Document& document,
                         const std::optional<host::Sequence>& frames) {
    const auto first = frames ? frames->Frames().front().number : 1;
    return { .timeCode = document.clock.timeCode,
             .startFrame = options.start.value_or(first),
             .startCode = document.clock.startCode };
}

// Brings back how many of them are cues that are not in what is written. place is what stands before a
// problem.
template <class Place>
std::size_t Tell(const std::vector<host::CueProblem>& problems, const Place& place) {
    std::size_t lost = 0;
    for (const auto& problem : problems) {
        const auto text = place(problem.line) + ": " + problem.text;
        problem.lost ? Console::Get().Error(text) : Console::Get().Warn(text);
        lost += problem.lost ? 1 : 0;
    }
    return lost;
}

std::string LeftOut(std::size_t lost) {
    return lost > 0 ? ", " + std::to_string(lost) + " left out" : "";
}

// Into a document --------------------------------------------------------------------------------

void OpenFrames(host::Document& document, const std::string& input) {
    std::string why;
    const auto frames = host::Sequence::Open(input, why);
    if (!frames)
        throw CommandError(ExitCode::kBadInput, "--frames: " + why);
    document.input = input;
    document.currentFrame = frames->Frames().front().number;
}

host::Document DocumentToFill(const CuesOptions& options) {
    host::Document document;
    if (options.into)
        document = LoadDocument(*options.into);
    else
        document.TakeFrom(*LoadEffect(options.plugin, std::nullopt));
    document.clock = ClockOf(options.shot, document.clock);
    AddDefines(options.shot, document.defines);
    if (options.frames)
        OpenFrames(document, *options.frames);
    return document;
}

host::CueFile ReadFile(const CuesOptions& options, const host::Document& document,
                       const host::CueTiming& timing) {
    host::CueOptions reading { .timing = timing,
                               .documentEncoding = document.encoding,
                               .defines = document.defines };
    if (options.encoding) {
        reading.encoding = platform::TextEncoding::Find(*options.encoding);
        if (!reading.encoding)
            FailUsage("--encoding: '" + *options.encoding + "' is no known encoding");
    }
    std::string why;
    auto file = host::ReadCues(ReadText(options.file, host::CueFile::kMaxBytes), options.file,
                               reading, why);
    if (!file)
        throw CommandError(ExitCode::kBadInput, NameOf(options.file) + ": " + why);
    return *std::move(file);
}

// Into the track of that name, or into a new one that looks like the document's first text.
const host::Track& FillTrack(host::Document& document, const std::string& name, host::TextKind kind,
                             const std::vector<host::TimedCue>& cues) {
    auto& tracks = document.tracks;
    auto found = std::ranges::find(tracks, name, &host::Track::name);
    if (found == tracks.end())
        found = tracks.insert(found, host::TrackForCues(kind, name, tracks.front()));
    found->cues = host::CuesForTrack(kind, cues);
    return *found;
}

void Fill(host::Document& document, const std::vector<host::TimedCue>& cues,
          const CuesOptions& options) {
    FillTrack(document, options.name.value_or("Dialogue"), host::TextKind::kDialogue, cues);
    if (options.characterTrack &&
        FillTrack(document, *options.characterTrack, host::TextKind::kCharacter, cues).cues.empty())
        Console::Get().Warn(NameOf(options.file) + ": no cue says who speaks");
    // A new document began with the effect's own text.
    if (!options.into)
        document.tracks.erase(document.tracks.begin());
}

void WarnOfOthersFrames(const std::vector<host::TimedCue>& cues,
                        const std::optional<host::Sequence>& frames) {
    if (!frames)
        return;
    const auto numbers = frames->Numbers();
    const auto lost = host::CuesBeside(cues, numbers);
    if (lost > 0)
        Console::Get().Warn(std::to_string(lost) + " of " + std::to_string(cues.size()) +
                            " cues are on none of the shot's frames " +
                            std::to_string(numbers.front()) + " to " +
                            std::to_string(numbers.back()) + "; --start is the frame at time 0");
}

// A text that does not fit keeps its whole track from being drawn.
bool CanBeDrawn(const host::Document& document) {
    platform::TextContext context(document.encoding);
    const platform::TextScope scope(context);
    std::vector<std::string> problems;
    host::ShotText::Of(document, problems);
    for (const auto& problem : problems)
        Console::Get().Error("cannot be drawn before it is mended: " + problem);
    return problems.empty();
}

ExitCode TakeIn(const CuesOptions& options) {
    const auto output = options.output ? *options.output : *options.into;
    if (options.output)
        RefuseExisting(output, options.overwrite);
    auto document = DocumentToFill(options);
    const auto frames = FramesOf(document);
    const auto file = ReadFile(options, document, TimingOf(options, document, frames));
    const auto name = NameOf(options.file);
    const auto lost = Tell(file.problems, [&](std::size_t line) {
        return line > 0 ? name + ":" + std::to_string(line) : name;
    });
    if (file.moreProblems > 0)
        Console::Get().Error(name + ": " + std::to_string(file.moreProblems) + " more problems");
    if (file.cues.empty())
        throw CommandError(ExitCode::kBadInput, name + ": no cue is left, and nothing is written");
    WarnOfOthersFrames(file.cues, frames);
    if (document.input.empty())
        document.currentFrame = file.cues.front().first;
    Fill(document, file.cues, options);
    std::string why;
    if (!document.Save(output, why))
        throw CommandError(ExitCode::kCannotWrite, why);
    const bool whole = CanBeDrawn(document) && lost == 0 && file.moreProblems == 0;
    Console::Get().Note(Cues(file.cues.size()) + " in " + host::Printable(output) +
                        ", the first one on frame " + std::to_string(file.cues.front().first) +
                        LeftOut(lost));
    return whole ? ExitCode::kSuccess : ExitCode::kFramesFailed;
}

// Out of a document ------------------------------------------------------------------------------

// The one that is named, or else the only one with dialogue, or with cues at all.
const host::Track& TrackToTake(const host::Document& document, const CuesOptions& options) {
    std::vector<const host::Track*> dialogues, others;
    for (const auto& track : document.tracks) {
        if (options.track == track.name)
            return track;
        const bool isDialogue = host::KindOf(track.settings) == host::TextKind::kDialogue;
        if (!track.cues.empty())
            (isDialogue ? dialogues : others).push_back(&track);
    }
    if (options.track)
        FailUsage("--track: the document has no track '" + *options.track + "'; it has " +
                  TrackNames(document));
    if (dialogues.size() == 1 || (dialogues.empty() && others.size() == 1))
        return dialogues.empty() ? *others.front() : *dialogues.front();
    if (dialogues.empty() && others.empty())
        throw CommandError(ExitCode::kBadInput,
                           NameOf(options.file) + ": none of its tracks has cues");
    FailUsage("several tracks have cues; --track says which: " + TrackNames(document));
}

ExitCode TakeOut(const CuesOptions& options) {
    RefuseExisting(*options.output, options.overwrite);
    auto document = LoadDocument(options.file);
    document.clock = ClockOf(options.shot, document.clock);
    const auto& track = TrackToTake(document, options);
    if (track.cues.empty())
        throw CommandError(ExitCode::kBadInput, "track '" + track.name + "' has no cues");
    const bool isTable = IsNamed(*options.output, ".csv");
    const auto cues = host::CuesOfTrack(track, !isTable);
    std::vector<host::CueProblem> problems;
    const auto file =
        isTable
            ? host::WriteCueTable(cues)
            : host::WriteSubRip(cues, TimingOf(options, document, FramesOf(document)), problems);
    const auto lost = Tell(problems, [&](std::size_t number) {
        return NameOf(options.file) + ": cue " + std::to_string(number) + " of '" + track.name +
               "'";
    });
    std::string why;
    const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(file.data()), file.size());
    if (host::WriteWhole(*options.output, bytes,
                         options.overwrite ? host::Existing::kOverwrite : host::Existing::kRefuse,
                         why) != host::OutputResult::kWritten)
        throw CommandError(ExitCode::kCannotWrite, why);
    Console::Get().Note(Cues(cues.size() - lost) + " of track '" + track.name + "' in " +
                        host::Printable(*options.output) + LeftOut(lost));
    return lost == 0 ? ExitCode::kSuccess : ExitCode::kFramesFailed;
}

// Which way --------------------------------------------------------------------------------------

void CheckWayIn(const CuesOptions& options) {
    if (IsDocument(options.file))
        FailUsage(options.file + " is a document; -o names the .srt or .csv that its cues go to");
    if (options.track)
        FailUsage("--track is of a document's cues; --name names the track that gets them");
    if (!options.output && !options.into)
        FailUsage("-o is missing, which names the document to write");
    if (options.output && !IsDocument(*options.output))
        FailUsage("-o: '" + *options.output +
                  "' is no document's name, such as shot.telop; cues of "
                  "a document go to .srt or .csv");
}

void CheckWayOut(const CuesOptions& options) {
    if (!IsDocument(options.file))
        FailUsage("-o: cues go to .srt or .csv from a document, and '" + options.file +
                  "' is no document's name, such as shot.telop");
    if (options.name || options.characterTrack || options.frames || options.into ||
        options.encoding || !options.shot.defines.empty())
        FailUsage("--name, --character-track, --frames, --into, --encoding and --define are of "
                  "cues that go into a document");
}

ExitCode RunCues(const CuesOptions& options) {
    const bool isOut =
        options.output && (IsNamed(*options.output, ".srt") || IsNamed(*options.output, ".csv"));
    isOut ? CheckWayOut(options) : CheckWayIn(options);
    return isOut ? TakeOut(options) : TakeIn(options);
}

} // namespace

void AddCues(CLI::App& program, ExitCode& code) {
    AddCommand(program, code, "cues", AddCuesOptions, RunCues);
}

} // namespace telop
