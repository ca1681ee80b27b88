// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/RenderCommand.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <thread>

#include "apps/telop/Console.h"
#include "apps/telop/FontWatch.h"
#include "apps/telop/FramePlan.h"
#include "apps/telop/FramePump.h"
#include "apps/telop/FrameRenderer.h"
#include "apps/telop/Interruption.h"
#include "apps/telop/LoadEffect.h"
#include "apps/telop/OptionText.h"
#include "apps/telop/Progress.h"
#include "host/text/TextField.h"

namespace telop {

namespace {

std::string Frames(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

host::FrameRanges ApplyRanges(const RenderOptions& options) {
    std::string why;
    auto ranges =
        options.apply ? host::FrameRanges::Parse(*options.apply, why) : host::FrameRanges::All();
    if (!ranges)
        FailUsage("--apply: " + why);
    return *std::move(ranges);
}

Placement PlacementOf(const RenderOptions& options) {
    Placement placement { .scale = options.scale };
    if (options.origin)
        placement.origin = ParsePoint("--origin", *options.origin);
    return placement;
}

ProgressStyle StyleOf(const RenderOptions& options) {
    if (options.quiet)
        return ProgressStyle::kNone;
    if (!options.progress)
        return Console::IsTerminal() ? ProgressStyle::kBar : ProgressStyle::kNone;
    return *options.progress == "bar"     ? ProgressStyle::kBar
           : *options.progress == "lines" ? ProgressStyle::kLines
                                          : ProgressStyle::kNone;
}

int JobsOf(const RenderOptions& options, const FrameSource& source) {
    int const wanted = options.jobs > 0
                           ? options.jobs
                           : static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    return source.Count() > 0 ? static_cast<int>(std::min<std::int64_t>(wanted, source.Count()))
                              : wanted;
}

// The settings in their own archive, by the plug-in itself.
void SaveText(host::Effect& effect, const FrameText& text, const RenderOptions& options) {
    if (auto const option = text.OptionWithTokens(); !option.empty())
        FailUsage("--save-settings keeps one text for all frames, and that of " + option +
                  " has tokens");
    if (options.text.strings)
        Console::Get().Warn("--save-settings: settings have no room for --strings; give them again "
                            "to each run");
    effect.SetParams(text.Params());
    SaveSettings(effect, *options.saveSettings, options.overwrite);
}

void CheckTokens(const FramePlan& plan, const FrameText& text) {
    if (plan.ReadsStream() && text.NeedsFile())
        FailUsage("{file}: the frames of a stream have no file names");
}

std::int64_t ReportMissing(const FramePlan& plan) {
    std::string text;
    for (auto const frame : plan.Missing())
        text += (text.empty() ? "" : ", ") + std::to_string(frame);
    if (!text.empty())
        Console::Get().Error("--frames asks for frames that the input does not have: " + text +
                             (plan.Missing().size() > 5 ? ", ..." : ""));
    return static_cast<std::int64_t>(plan.Missing().size());
}

void Summarize(const PumpResult& result) {
    auto text = Frames(result.written) + " written";
    if (result.skipped > 0)
        text += ", " + std::to_string(result.skipped) + " there already";
    if (result.failed > 0)
        text += ", " + std::to_string(result.failed) + " failed";
    Console::Get().Note(text);
}

ExitCode ReportInterruption(const FramePlan& plan, const PumpResult& result) {
    bool const terminated = Interruption::Signal() == SIGTERM;
    auto text =
        std::string(terminated ? "terminated" : "interrupted") + " after " + Frames(result.written);
    if (!plan.WritesStream())
        text += ", all of them whole; the same command with --skip-existing makes the rest";
    Console::Get().Error(text);
    return terminated ? ExitCode::kTerminated : ExitCode::kInterrupted;
}

ExitCode Conclude(const FramePlan& plan, const PumpResult& result, std::int64_t missing) {
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
    bool const nothingReadable = result.failed > 0 && result.failed == result.unreadable &&
                                 result.written + result.skipped == 0;
    return nothingReadable               ? ExitCode::kBadInput
           : result.failed + missing > 0 ? ExitCode::kFramesFailed
                                         : ExitCode::kSuccess;
}

// The process's end while a thread waits for a stream that may never come: nothing is being
// written, and nothing that the thread uses goes away before it.
void EndIfReaderWaits(const PumpResult& result, ExitCode code) {
    if (result.readerWaits)
        std::_Exit(static_cast<int>(code));
}

ExitCode RenderFrames(FramePlan& plan, const FrameRenderer& renderer,
                      const RenderOptions& options) {
    plan.PrepareFolder();
    Interruption const interruption;
    auto const missing = ReportMissing(plan);
    PumpResult result;
    ExitCode code;
    {
        Progress progress(StyleOf(options), plan.Source().Count());
        FramePump pump(plan.Source(), renderer, plan.Sink(), progress,
                       JobsOf(options, plan.Source()), options.compression);
        result = pump.Run();
        Console::Get().Status("");
        code = Conclude(plan, result, missing);
        EndIfReaderWaits(result, code);
    }
    return code;
}

void CheckOperands(const RenderOptions& options) {
    bool const none = options.input.empty() && options.output.empty();
    if (none && options.saveSettings)
        return;
    if (options.input.empty())
        FailUsage("INPUT and OUTPUT are missing");
    if (options.output.empty())
        FailUsage("OUTPUT is missing");
}

} // namespace

ExitCode RunRender(const RenderOptions& options) {
    CheckOperands(options);
    Console::Get().SetQuiet(options.quiet);
    SetEncoding(options.encoding);
    auto const placement = PlacementOf(options);
    auto const apply = ApplyRanges(options);
    std::optional<FramePlan> plan;
    if (!options.input.empty())
        plan.emplace(options);

    FontWatch fonts(options.strictFonts ? FontWatch::Policy::kStrict : FontWatch::Policy::kWarn);
    auto const effect = LoadEffect(options.plugin, options.settings);
    FrameText const text(options.text, effect->CopyParams());
    if (options.saveSettings)
        SaveText(*effect, text, options);
    if (!plan)
        return ExitCode::kSuccess;
    CheckTokens(*plan, text);
    fonts.CheckFamily(host::FieldBytes(text.Params().szFontName));
    if (auto const violation = fonts.Violation(); !violation.empty())
        throw CommandError(ExitCode::kStrictFonts, "--strict-fonts: " + violation);
    FrameRenderer const renderer(*effect, text, apply, placement, fonts);
    return RenderFrames(*plan, renderer, options);
}

} // namespace telop
