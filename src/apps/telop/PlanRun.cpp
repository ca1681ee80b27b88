// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/PlanRun.h"

#include <utility>

#include <unistd.h>

#include "apps/telop/CommandError.h"

namespace telop {

namespace {

constexpr auto kStream = host::FramePlan::kStream;

host::FrameRanges ParseRanges(const std::optional<std::string>& text) {
    std::string why;
    auto ranges = text ? host::FrameRanges::Parse(*text, why) : host::FrameRanges::All();
    if (!ranges)
        FailUsage("--frames: " + why);
    return *std::move(ranges);
}

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
}

void CheckOutput(const RenderOptions& options) {
    if (options.output == kStream && isatty(STDOUT_FILENO))
        FailUsage("OUTPUT is - and standard output is a terminal; pipe it or send it to a file");
}

[[noreturn]] void Refuse(const host::PlanProblem& problem, const RenderOptions& options) {
    using Kind = host::PlanProblem::Kind;
    switch (problem.kind) {
    case Kind::kNoFrames:
        throw CommandError(ExitCode::kBadInput,
                           "--frames " + options.frames.value_or("") + ": " + problem.text);
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

} // namespace

host::FramePlan PlanRun(const RenderOptions& options) {
    auto const frames = ParseRanges(options.frames);
    CheckStreams(options);
    CheckOutput(options);
    host::PlanProblem problem;
    auto plan = host::FramePlan::Make({ .input = options.input,
                                        .output = options.output,
                                        .frames = frames,
                                        .start = options.start.value_or(1),
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

} // namespace telop
