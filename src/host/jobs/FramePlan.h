// SPDX-License-Identifier: BSD-3-Clause
// Which frames a run makes of what, and where they go: the source and the sink for an input and an
// output.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/jobs/FrameEnds.h"

namespace host {

struct PlanOptions {
    std::string input;  // as Sequence::Open takes it; "-" is standard input
    std::string output; // as SequenceOutput::Open takes it; "-" is standard output
    FrameRanges frames = FrameRanges::All(); // those that are wanted
    std::int64_t start = 1;                  // the number of a stream's first frame
    ShotClock clock {};                      // of tokens
    Existing existing = Existing::kRefuse;
};

// Why there is no plan. The text is whole, and front ends put before or behind it what their user can
// do about it.
struct PlanProblem {
    enum class Kind {
        kInput,    // has no frame
        kNoFrames, // has none of those that are wanted
        kOutput,   // cannot take the frames
        kExists,   // outputs are there already, and kRefuse was said
        kText,     // cannot be drawn in any frame
    };
    Kind kind = Kind::kInput;
    std::string text;
};

class FramePlan {
public:
    // Nothing, with the problem. Reads folders, no picture, and writes nothing.
    static std::optional<FramePlan> Make(const PlanOptions& options, PlanProblem& problem);

    // Makes the outputs' folder where it is missing, and removes from it what a killed run left there
    // unfinished. False with the reason.
    bool PrepareFolder(std::string& why) const;

    FrameSource& Source() const { return *m_source; }
    FrameSink& Sink() const { return *m_sink; }
    bool ReadsStream() const { return m_readsStream; }
    bool WritesStream() const { return m_writesStream; }
    // Those that are made, ascending; none for a stream.
    const std::vector<FrameFile>& Files() const { return m_files; }
    // What all of them have in common.
    const std::shared_ptr<const RunValues>& Run() const { return m_run; }
    // Frames that are wanted by number and that the input does not have; the first kNamed + 1.
    const std::vector<std::int64_t>& Missing() const { return m_missing; }

    static constexpr const char* kStream = "-";
    static constexpr std::size_t kNamed = 5; // how many of many a message names

private:
    explicit FramePlan(const PlanOptions& options);
    bool OpenInput(const PlanOptions& options, PlanProblem& problem);
    bool OpenOutput(const PlanOptions& options, PlanProblem& problem);
    bool OpenFiles(const PlanOptions& options, PlanProblem& problem);
    bool OpenNumberedFiles(const PlanOptions& options, PlanProblem& problem);

    FrameRanges m_wanted;
    std::optional<Sequence> m_input; // none for a stream
    std::vector<FrameFile> m_files;  // of it, those that are wanted
    std::shared_ptr<const RunValues> m_run;
    std::filesystem::path m_folder; // of the outputs; empty for the current one, or a stream
    std::vector<std::int64_t> m_missing;
    std::unique_ptr<FrameSource> m_source;
    std::unique_ptr<FrameSink> m_sink;
    bool m_readsStream = false;
    bool m_writesStream = false;
};

} // namespace host
