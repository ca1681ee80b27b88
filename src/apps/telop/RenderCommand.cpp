// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Commands.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <unistd.h>

#include "apps/telop/Console.h"
#include "apps/telop/Interruption.h"
#include "apps/telop/LoadEffect.h"
#include "apps/telop/Nearest.h"
#include "apps/telop/OptionText.h"
#include "apps/telop/Progress.h"
#include "apps/telop/RenderOptions.h"
#include "host/Message.h"
#include "host/document/Document.h"
#include "host/jobs/FramePlan.h"
#include "host/jobs/FramePump.h"
#include "host/jobs/FrameRenderer.h"
#include "host/jobs/TextCheck.h"
#include "host/text/TextField.h"
#include "platform/Fonts.h"
#include "platform/TextContext.h"

namespace telop {

namespace {

std::string Frames(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

constexpr auto kStream = host::FramePlan::kStream;

host::Existing ExistingPolicy(const RenderOptions& options) {
    return options.overwrite      ? host::Existing::kOverwrite
           : options.skipExisting ? host::Existing::kSkip
                                  : host::Existing::kRefuse;
}

void CheckStreams(const RenderOptions& options) {
    if (options.start && options.input != kStream)
        FailUsage("--start numbers the frames of a stream; those of files have numbers");
    if (options.input == kStream && isatty(STDIN_FILENO))
        FailUsage("INPUT is - and standard input is a terminal; pipe PAM pictures into it");
    if (options.output == kStream && isatty(STDOUT_FILENO))
        FailUsage("OUTPUT is - and standard output is a terminal; pipe it or send it to a file");
}

[[noreturn]] void Refuse(const host::PlanProblem& problem, const RenderOptions& options) {
    using Kind = host::PlanProblem::Kind;
    switch (problem.kind) {
    case Kind::kNoFrames:
        throw CommandError(ExitCode::kBadInput,
                           "--frames " + options.frames.value_or("") + ": " + problem.text +
                               (options.frames.value_or("").starts_with('-')
                                    ? "; a minus is a number's sign, and all up to 9 are ..9"
                                    : ""));
    case Kind::kOutput:
        FailUsage(problem.text);
    case Kind::kExists:
        throw CommandError(ExitCode::kCannotWrite,
                           problem.text + "\n--overwrite replaces them, --skip-existing makes only "
                                          "the others");
    default:
        throw CommandError(ExitCode::kBadInput, problem.text);
    }
}

// Reads folders, no picture, and writes nothing.
host::FramePlan PlanRun(const RenderOptions& options, const host::ShotClock& clock) {
    const auto frames =
        options.frames ? ParseRanges("--frames", *options.frames) : host::FrameRanges::All();
    CheckStreams(options);
    host::PlanProblem problem;
    auto plan = host::FramePlan::Make({ .input = options.input,
                                        .output = options.output,
                                        .frames = frames,
                                        .start = options.start.value_or(1),
                                        .clock = clock,
                                        .existing = ExistingPolicy(options) },
                                      problem);
    if (!plan)
        Refuse(problem, options);
    return *std::move(plan);
}

void PrepareFolder(const host::FramePlan& plan) {
    std::string why;
    if (!plan.PrepareFolder(why))
        throw CommandError(ExitCode::kCannotWrite, why);
}

using MaybeDocument = std::optional<host::Document>;

ProgressStyle StyleOf(const RenderOptions& options) {
    if (options.quiet)
        return ProgressStyle::kNone;
    if (!options.progress)
        return Console::IsTerminal() ? ProgressStyle::kBar : ProgressStyle::kNone;
    return *options.progress == "bar"     ? ProgressStyle::kBar
           : *options.progress == "lines" ? ProgressStyle::kLines
                                          : ProgressStyle::kNone;
}

// What is drawn ----------------------------------------------------------------------------------

// Of the document those that are picked, of the settings theirs.
void PickTracks(host::Document& document, const RenderOptions& options) {
    for (const auto& name : options.tracks)
        if (std::ranges::find(document.tracks, name, &host::Track::name) == document.tracks.end())
            FailUsage("--track: the document has no track '" + name + "'; it has " +
                      TrackNames(document));
    if (!options.tracks.empty())
        std::erase_if(document.tracks, [&](const host::Track& track) {
            return std::ranges::find(options.tracks, track.name) == options.tracks.end();
        });
}

// The text that the options change is the only track; they cannot know which of several is meant. The
// others follow.
void ApplyTexts(host::Document& document, const RenderOptions& options) {
    auto texts = options.earlier;
    texts.push_back(options.text);
    if (texts == std::vector { TextOptions {} })
        return;
    if (document.tracks.size() > 1)
        FailUsage(
            "the document has several tracks; --track says which of them the options change: " +
            TrackNames(document));
    auto track = std::exchange(document.tracks.front(), {});
    document.tracks.clear();
    for (const auto& text : texts) {
        track = MakeTrack(text, std::move(track), document.defines);
        document.tracks.push_back(track);
        // The next one has its look.
        track.name.clear();
        track.on = host::FrameRanges::All();
        track.cues.clear();
    }
}

host::Document WhatIsDrawn(const MaybeDocument& loaded, const RenderOptions& options,
                           host::Effect& effect) {
    host::Document document;
    if (loaded)
        document = *loaded;
    else
        document.TakeFrom(effect);
    document.clock = ClockOf(options.shot, document.clock);
    AddDefines(options.shot, document.defines);
    PickTracks(document, options);
    ApplyTexts(document, options);
    if (options.strings)
        SetStrings(document, *options.strings);
    return document;
}

// The settings in their own archive, by the plug-in itself.
void SaveText(host::Effect& effect, const host::Document& document, const RenderOptions& options) {
    if (document.tracks.size() > 1 || !document.tracks.front().cues.empty())
        FailUsage("--save-settings keeps one text; --save-document keeps all");
    if (options.strings)
        Console::Get().Warn("--save-settings: settings have no room for --strings; give them again "
                            "to each run, or use --save-document");
    if (document.clock != host::ShotClock() || !document.defines.empty())
        Console::Get().Warn("--save-settings: settings have no room for --fps, --timecode and "
                            "--define; give them again to each run, or use --save-document");
    effect.SetParams(document.tracks.front().settings);
    SaveSettings(effect, *options.saveSettings, options.overwrite);
}

// With the words and the fonts of this run, wherever it is drawn then.
void SaveDocument(host::Document document, const RenderOptions& options) {
    const auto& context = platform::TextContext::Current();
    document.language = context.Language();
    document.fallbacks = context.Fallbacks().families;
    std::string why;
    if (options.input != kStream && !options.input.empty())
        document.input = options.input;
    RefuseExisting(*options.saveDocument, options.overwrite);
    if (!document.Save(*options.saveDocument, why))
        throw CommandError(ExitCode::kCannotWrite, why);
}

// Only files have names, and only the end of a stream tells where it is.
void RefuseTokensOfFiles(const host::ShotText& text) {
    using host::Token;
    constexpr std::array<std::pair<Token, const char*>, 4> kOfFiles {
        { { Token::kFile, "{file}: the frames of a stream have no file names" },
          { Token::kName, "{name}: the frames of a stream have no folder" },
          { Token::kLast, "{last}: which frame of a stream is the last shows only at its end" },
          { Token::kCount, "{count}: how many frames a stream has shows only at its end" } }
    };
    for (const auto& [token, reason] : kOfFiles)
        if (text.Uses(token))
            FailUsage(reason);
}

host::ShotText PrepareText(const host::Document& document, const host::FramePlan& plan,
                           const RenderOptions& options) {
    std::vector<std::string> problems;
    auto text = host::ShotText::Of(document, problems);
    if (!problems.empty())
        throw CommandError(ExitCode::kBadInput, options.document
                                                    ? *options.document + ": " + problems.front()
                                                    : problems.front());
    if (plan.ReadsStream())
        RefuseTokensOfFiles(text);
    return text;
}

// A picture that is given by itself may have no number, and a text may show none either.
void WarnOfNoNumber(const host::FramePlan& plan, const host::ShotText& shot) {
    if (plan.Files().size() != 1)
        return;
    const auto& [number, path] = plan.Files().front();
    const auto stem = path.stem().string();
    const auto showsNumber = [&, &frame = number](const host::TrackText& track) {
        const auto* text = track.At(frame);
        host::ResolvedText first, second;
        std::string ignored;
        return text && text->Resolve({ frame, stem }, first, ignored) &&
               text->Resolve({ frame + 1, stem }, second, ignored) &&
               std::memcmp(&first, &second, sizeof first) != 0;
    };
    if (host::NumbersIn(stem).empty() && std::ranges::any_of(shot.Tracks(), showsNumber))
        Console::Get().Warn(host::Printable(path.native()) +
                            ": its name has no number, so {frame} is 1");
}

// The run ----------------------------------------------------------------------------------------

std::int64_t ReportMissing(const host::FramePlan& plan) {
    std::string text;
    for (const auto frame : plan.Missing())
        text += (text.empty() ? "" : ", ") + std::to_string(frame);
    if (!text.empty())
        Console::Get().Error("--frames asks for frames that the input does not have: " + text +
                             (plan.Missing().size() > 5 ? ", ..." : ""));
    return static_cast<std::int64_t>(plan.Missing().size());
}

void Summarize(const host::RunResult& result) {
    auto text = Frames(result.written) + " written";
    if (result.skipped > 0)
        text += ", " + std::to_string(result.skipped) + " there already";
    if (result.failed > 0)
        text += ", " + std::to_string(result.failed) + " failed";
    Console::Get().Note(text);
}

ExitCode ReportInterruption(const host::FramePlan& plan, const host::RunResult& result) {
    const bool terminated = Interruption::Signal() == SIGTERM;
    auto text =
        std::string(terminated ? "terminated" : "interrupted") + " after " + Frames(result.written);
    if (!plan.WritesStream())
        text += ", all of them whole; the same command with --skip-existing makes the rest";
    Console::Get().Error(text);
    return terminated ? ExitCode::kTerminated : ExitCode::kInterrupted;
}

ExitCode Conclude(const host::FramePlan& plan, const host::RunResult& result,
                  std::int64_t missing) {
    auto& console = Console::Get();
    if (!result.fontViolation.empty()) {
        console.Error("--strict-fonts: " + result.fontViolation);
        return ExitCode::kStrictFonts;
    }
    if (!result.writeError.empty()) {
        console.Error(result.writeError + "; given up after " + Frames(result.written));
        return ExitCode::kCannotWrite;
    }
    if (Interruption::Signal())
        return ReportInterruption(plan, result);
    if (result.written + result.skipped + result.failed == 0) {
        console.Error(plan.ReadsStream() ? "the input stream ended before a frame that is wanted"
                                         : "there was no frame to make");
        return ExitCode::kBadInput;
    }
    Summarize(result);
    const bool nothingReadable = result.failed > 0 && result.failed == result.unreadable &&
                                 result.written + result.skipped == 0;
    return nothingReadable               ? ExitCode::kBadInput
           : result.failed + missing > 0 ? ExitCode::kFramesFailed
                                         : ExitCode::kSuccess;
}

ExitCode RenderFrames(const host::FramePlan& plan, const host::FrameRenderer& renderer,
                      const RenderOptions& options) {
    PrepareFolder(plan);
    host::CancelToken cancel;
    const Interruption interruption(cancel);
    const auto missing = ReportMissing(plan);
    Progress progress(StyleOf(options));
    host::FramePump pump(
        plan.Source(), renderer, plan.Sink(), progress, cancel,
        { .jobs = options.jobs, .compression = options.compression, .memory = options.memory });
    const auto result = pump.Run();
    const auto code = Conclude(plan, result, missing);
    // The process's end while a thread waits for a stream that nobody gives or takes: nothing that the
    // thread uses goes away before it.
    if (result.isStuck)
        std::_Exit(static_cast<int>(code));
    return code;
}

// A document has its own INPUT, so that a single operand is OUTPUT.
RenderOptions WithOperandsOf(const MaybeDocument& document, RenderOptions options) {
    if (!document || !options.output.empty())
        return options;
    options.output = std::exchange(options.input, document->input);
    if (options.output.empty())
        options.input.clear();
    else if (options.input.empty())
        throw CommandError(ExitCode::kBadInput,
                           *options.document + ": has no frames; name them before OUTPUT");
    return options;
}

void CheckOperands(const RenderOptions& options) {
    const bool none = options.input.empty() && options.output.empty();
    if (options.output.empty() && (options.saveDocument || (none && options.saveSettings)))
        return;
    if (options.input.empty())
        FailUsage(options.document ? "OUTPUT is missing" : "INPUT and OUTPUT are missing");
    if (options.output.empty())
        FailUsage("OUTPUT is missing");
}

// A name that stands for another family counts too; no name means the default family.
void CheckFamily(const _TEXTPARAM& settings) {
    const auto name = platform::DecodeText(host::FieldBytes(settings.szFontName));
    const auto resolution = platform::ResolveFontFamily(name);
    if (!name.empty() && resolution.match != platform::FontMatch::kInstalled)
        throw CommandError(ExitCode::kStrictFonts,
                           "--strict-fonts: font '" + name + "' is not installed; " +
                               (resolution.family.empty()
                                    ? "no font is"
                                    : "'" + resolution.family + "' would stand in for it") +
                               SuggestedFamily(name));
}

// Empty for the environment's.
std::string LanguageOf(const MaybeDocument& document, const RenderOptions& options) {
    if (options.language &&
        (options.language->empty() || options.language->find('/') != std::string::npos))
        FailUsage("--language: '" + *options.language + "' is no language, such as en or ja");
    return options.language.value_or(document ? document->language : "");
}

std::vector<std::string> FallbacksOf(const MaybeDocument& document, const RenderOptions& options) {
    if (options.fallback)
        return SplitNames("--fallback", *options.fallback);
    return document ? document->fallbacks : std::vector<std::string>();
}

// Under --strict-fonts the first violation ends the run, and its error says what a warning would.
void Warn(const platform::Report& report, host::FontPolicy fonts) {
    const bool isName = report.kind == platform::ReportKind::kFontSubstituted;
    if (fonts == host::FontPolicy::kWarn || !host::IsFontViolation(report))
        Console::Get().Warn(platform::Describe(report) +
                            (isName ? SuggestedFamily(report.asked) : ""));
}

ExitCode RunRender(const RenderOptions& typed) {
    Console::Get().SetQuiet(typed.quiet);
    SetEncoding(typed.encoding);
    const auto loaded =
        typed.document ? MaybeDocument(LoadDocument(*typed.document)) : std::nullopt;
    auto options = WithOperandsOf(loaded, typed);
    CheckOperands(options);
    if (options.origin)
        options.view.origin = ParsePoint("--origin", *options.origin);
    std::optional<host::FramePlan> plan;
    if (!options.input.empty() && !options.output.empty())
        plan.emplace(
            PlanRun(options, ClockOf(options.shot, loaded ? loaded->clock : host::ShotClock())));

    const auto fonts = options.strictFonts ? host::FontPolicy::kStrict : host::FontPolicy::kWarn;
    auto& process = platform::TextContext::Current();
    platform::TextContext run(
        loaded ? loaded->encoding : process.Encoding(),
        [fonts](const platform::Report& report) { Warn(report, fonts); },
        LanguageOf(loaded, options), FallbacksOf(loaded, options));
    for (const auto& report : process.Reports())
        run.Tell(report);
    const platform::TextScope scope(run);
    const auto effect = LoadEffect(options.plugin, options.settings);
    const auto document = WhatIsDrawn(loaded, options, *effect);
    if (options.saveSettings)
        SaveText(*effect, document, options);
    if (options.saveDocument)
        SaveDocument(document, options);
    if (!plan)
        return ExitCode::kSuccess;
    const auto text = PrepareText(document, *plan, options);
    if (options.strictFonts)
        for (const auto& track : text.Tracks())
            CheckFamily(track.TheTrack().settings);
    WarnOfNoNumber(*plan, text);
    const host::FrameRenderer renderer(*effect, text, run, options.view, fonts);
    for (const auto& sentence : host::WhyOnNoFrame(renderer, text, plan->Files(), plan->Run()))
        Console::Get().Warn(sentence);
    return RenderFrames(*plan, renderer, options);
}

} // namespace

void AddRender(CLI::App& program, ExitCode& code, const std::vector<TextOptions>& earlier) {
    auto& command = *program.add_subcommand("render");
    const auto options = std::make_shared<RenderOptions>();
    AddRenderOptions(command, *options);
    command.callback([options, &earlier, &code] {
        options->earlier = earlier;
        code = RunRender(*options);
    });
}

} // namespace telop
