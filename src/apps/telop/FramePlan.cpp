// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/FramePlan.h"

#include <algorithm>
#include <utility>

#include <unistd.h>

#include "apps/telop/CommandError.h"
#include "apps/telop/FileSink.h"
#include "apps/telop/FileSource.h"
#include "apps/telop/StreamSink.h"
#include "apps/telop/StreamSource.h"

namespace telop {

namespace {

constexpr const char* kStream = "-";
constexpr std::size_t kNamed = 5; // how many of many a message names

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

std::string Span(const std::vector<host::FrameFile>& frames) {
    auto const first = std::to_string(frames.front().number);
    return frames.size() == 1 ? "only " + first
                              : first + " to " + std::to_string(frames.back().number);
}

} // namespace

FramePlan::FramePlan(const RenderOptions& options) : m_wanted(ParseRanges(options.frames)) {
    OpenInput(options);
    OpenOutput(options);
}

FramePlan::~FramePlan() = default;

void FramePlan::OpenInput(const RenderOptions& options) {
    m_readsStream = options.input == kStream;
    if (options.start && !m_readsStream)
        FailUsage("--start numbers the frames of a stream; those of files have numbers");
    if (m_readsStream) {
        if (isatty(STDIN_FILENO))
            FailUsage("INPUT is - and standard input is a terminal; pipe PAM pictures into it");
        m_source =
            std::make_unique<StreamSource>(STDIN_FILENO, options.start.value_or(1), m_wanted);
        return;
    }
    std::string why;
    m_input = host::Sequence::Open(options.input, why);
    if (!m_input)
        throw CommandError(ExitCode::kBadInput, why);
    for (auto const& file : m_input->Frames()) {
        if (m_wanted.Contains(file.number))
            m_files.push_back(file);
    }
    if (m_files.empty())
        throw CommandError(ExitCode::kBadInput, "--frames " + *options.frames + ": " +
                                                    options.input + " has none of them, it has " +
                                                    Span(m_input->Frames()));
    m_missing = m_wanted.Missing(m_input->Numbers(), kNamed + 1);
    m_source = std::make_unique<FileSource>(m_files);
}

void FramePlan::OpenOutput(const RenderOptions& options) {
    m_writesStream = options.output == kStream;
    if (m_writesStream && isatty(STDOUT_FILENO))
        FailUsage("OUTPUT is - and standard output is a terminal; pipe it or send it to a file");
    if (m_writesStream)
        m_sink = std::make_unique<StreamSink>(STDOUT_FILENO);
    else if (m_readsStream)
        OpenNumberedFiles(options);
    else
        OpenFiles(options);
}

void FramePlan::OpenFiles(const RenderOptions& options) {
    std::string why;
    m_output = host::SequenceOutput::Open(*m_input, options.output, why);
    if (!m_output)
        FailUsage(why);
    m_folder = m_output->Folder();
    auto const existing = ExistingPolicy(options);
    if (existing == host::Existing::kRefuse) {
        std::vector<std::string> found;
        for (auto const& file : m_files) {
            std::error_code ignored;
            if (auto const path = m_output->PathOf(file); std::filesystem::exists(path, ignored))
                found.push_back(path.string());
        }
        RefuseExisting(found);
    }
    m_sink = std::make_unique<FileSink>(
        [output = *m_output](const Ticket& ticket) {
            return output.PathOf({ ticket.values.frame, ticket.input });
        },
        existing);
}

void FramePlan::OpenNumberedFiles(const RenderOptions& options) {
    std::string why;
    auto const pattern = host::FramePattern::LooksLikeOne(options.output)
                             ? host::FramePattern::Parse(options.output, why)
                             : std::nullopt;
    if (!pattern)
        FailUsage(why.empty() ? options.output + ": the frames of a stream need numbered names, "
                                                 "such as out.%04d.png, or - for a stream"
                              : why);
    m_folder = pattern->Folder();
    auto const existing = ExistingPolicy(options);
    auto const there = existing == host::Existing::kRefuse
                           ? host::Sequence::Open(options.output, why)
                           : std::nullopt;
    if (there) {
        // How long the stream is shows only at its end: any frame that it could write counts.
        std::vector<std::string> found;
        for (auto const& file : there->Frames()) {
            if (file.number >= options.start.value_or(1) && m_wanted.Contains(file.number))
                found.push_back(file.path.string());
        }
        RefuseExisting(found);
    }
    m_sink = std::make_unique<FileSink>(
        [pattern = *pattern](const Ticket& ticket) {
            return std::filesystem::path(pattern.PathOf(ticket.values.frame));
        },
        existing);
}

void FramePlan::RefuseExisting(const std::vector<std::string>& existing) const {
    if (existing.empty())
        return;
    std::string text = existing.size() == 1
                           ? "this output exists already:"
                           : std::to_string(existing.size()) + " outputs exist already:";
    for (std::size_t i = 0; i < std::min(existing.size(), kNamed); ++i)
        text += "\n  " + existing[i];
    if (existing.size() > kNamed)
        text += "\n  and " + std::to_string(existing.size() - kNamed) + " more";
    throw CommandError(ExitCode::kCannotWrite,
                       text + "\n--overwrite replaces them, --skip-existing makes only the others");
}

void FramePlan::PrepareFolder() const {
    std::string why;
    if (!host::MakeFolder(m_folder, why))
        throw CommandError(ExitCode::kCannotWrite, why);
}

} // namespace telop
