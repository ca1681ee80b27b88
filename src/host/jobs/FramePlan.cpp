// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FramePlan.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <utility>

#include <unistd.h>

#include "host/Message.h"

namespace host {

namespace {

using Kind = PlanProblem::Kind;

std::string Span(const std::vector<FrameFile>& frames) {
    const auto first = std::to_string(frames.front().number);
    return frames.size() == 1 ? "only " + first
                              : first + " to " + std::to_string(frames.back().number);
}

// False when one of the outputs is there already.
bool CheckExisting(const std::vector<std::filesystem::path>& existing, PlanProblem& problem) {
    if (existing.empty())
        return true;
    std::string text = existing.size() == 1
                           ? "this output exists already:"
                           : std::to_string(existing.size()) + " outputs exist already:";
    for (std::size_t i = 0; i < std::min(existing.size(), FramePlan::kNamed); ++i)
        text += "\n  " + Printable(existing[i].native());
    if (existing.size() > FramePlan::kNamed)
        text += "\n  and " + std::to_string(existing.size() - FramePlan::kNamed) + " more";
    problem = { Kind::kExists, text };
    return false;
}

// All of the shot's frames count, whichever are wanted.
std::shared_ptr<const RunValues> RunOf(const PlanOptions& options,
                                       std::span<const std::int64_t> numbers,
                                       const std::filesystem::path& folder) {
    RunValues run;
    run.SetShot(numbers, folder);
    run.SetClock(options.clock);
    run.SetDate(std::time(nullptr));
    return std::make_shared<RunValues>(std::move(run));
}

} // namespace

FramePlan::FramePlan(const PlanOptions& options)
    : m_wanted(options.frames), m_readsStream(options.input == kStream),
      m_writesStream(options.output == kStream) {}

std::optional<FramePlan> FramePlan::Make(const PlanOptions& options, PlanProblem& problem) {
    FramePlan plan(options);
    if (!plan.OpenInput(options, problem) || !plan.OpenOutput(options, problem))
        return std::nullopt;
    return plan;
}

bool FramePlan::OpenInput(const PlanOptions& options, PlanProblem& problem) {
    if (m_readsStream) {
        m_run = RunOf(options, std::array { options.start }, {});
        m_source = std::make_unique<StreamSource>(STDIN_FILENO, m_run, m_wanted);
        return true;
    }
    std::string why;
    m_input = Sequence::Open(options.input, why);
    if (!m_input) {
        problem = { Kind::kInput, why };
        return false;
    }
    for (const auto& file : m_input->Frames())
        if (m_wanted.Contains(file.number))
            m_files.push_back(file);
    if (m_files.empty()) {
        problem = { Kind::kNoFrames, Printable(options.input) + " has none of them, it has " +
                                         Span(m_input->Frames()) };
        return false;
    }
    const auto numbers = m_input->Numbers();
    m_missing = m_wanted.Missing(numbers, kNamed + 1);
    m_run = RunOf(options, numbers, m_files.front().path.parent_path());
    m_source = std::make_unique<FileSource>(m_files, m_run);
    return true;
}

bool FramePlan::OpenOutput(const PlanOptions& options, PlanProblem& problem) {
    if (m_writesStream) {
        m_sink = std::make_unique<StreamSink>(STDOUT_FILENO);
        return true;
    }
    return m_readsStream ? OpenNumberedFiles(options, problem) : OpenFiles(options, problem);
}

bool FramePlan::OpenFiles(const PlanOptions& options, PlanProblem& problem) {
    std::string why;
    const auto output = SequenceOutput::Open(*m_input, options.output, why);
    if (!output) {
        problem = { Kind::kOutput, why };
        return false;
    }
    m_folder = output->Folder();
    std::vector<std::filesystem::path> found;
    for (const auto& file : m_files) {
        std::error_code ignored;
        const auto path = output->PathOf(file);
        const auto status = std::filesystem::status(path, ignored);
        // A device or a pipe takes what comes.
        if (options.existing == Existing::kRefuse && std::filesystem::exists(status) &&
            !std::filesystem::is_other(status))
            found.push_back(path);
    }
    m_sink = std::make_unique<FileSink>(
        [output = *output](const Ticket& ticket) {
            return output.PathOf({ ticket.values.frame, ticket.input });
        },
        m_folder, options.existing);
    return CheckExisting(found, problem);
}

bool FramePlan::OpenNumberedFiles(const PlanOptions& options, PlanProblem& problem) {
    std::string why;
    const auto pattern = FramePattern::LooksLikeOne(options.output)
                             ? FramePattern::Parse(options.output, why)
                             : std::nullopt;
    if (!pattern) {
        problem = { Kind::kOutput, why.empty()
                                       ? Printable(options.output) +
                                             ": the frames of a stream need numbered names, such "
                                             "as out.%04d.png, or - for a stream"
                                       : why };
        return false;
    }
    m_folder = pattern->Folder();
    const auto there =
        options.existing == Existing::kRefuse ? Sequence::Open(options.output, why) : std::nullopt;
    // How long the stream is shows only at its end: any frame that it could write counts.
    std::vector<std::filesystem::path> found;
    for (const auto& file : there ? there->Frames() : std::vector<FrameFile>())
        if (file.number >= options.start && m_wanted.Contains(file.number))
            found.push_back(file.path);
    m_sink = std::make_unique<FileSink>(
        [pattern = *pattern](const Ticket& ticket) {
            return std::filesystem::path(pattern.PathOf(ticket.values.frame));
        },
        m_folder, options.existing);
    return CheckExisting(found, problem);
}

bool FramePlan::PrepareFolder(std::string& why) const {
    if (m_writesStream)
        return true;
    RemoveLeftovers(m_folder);
    return MakeFolder(m_folder, why);
}

} // namespace host
