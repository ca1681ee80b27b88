// SPDX-License-Identifier: BSD-3-Clause
// Renders a document's frames into files, for front ends that need nothing else.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/Effect.h"
#include "host/document/Document.h"
#include "host/jobs/FramePlan.h"
#include "host/jobs/FramePump.h"
#include "host/jobs/FrameRenderer.h"
#include "platform/TextContext.h"

namespace host {

struct ExportOptions {
    std::string output = {}; // picture, pattern or folder, as SequenceOutput takes it
    std::optional<FrameRanges> frames = {}; // those to make; nothing: all
    Existing existing = Existing::kRefuse;
    int jobs = 0; // as PumpOptions
    int compression = kPngLevelDefault;
};

class DocumentExport {
public:
    // Copies what it needs of the document; the effect, which only renders, must outlive it. Null
    // with the problem. Reads folders and writes nothing.
    static std::unique_ptr<DocumentExport> Make(const Document& document, const Effect& effect,
                                                const ExportOptions& options, PlanProblem& problem);

    std::int64_t FrameCount() const { return m_plan->Source().Count(); }
    // Frames that the options name and the document does not have; the first of them.
    const std::vector<std::int64_t>& Missing() const { return m_plan->Missing(); }
    // Why texts will be on none of the frames, a sentence each.
    const std::vector<std::string>& Warnings() const { return m_warnings; }
    // Any thread, once. The outputs' folder is made where it is missing. The token stops it.
    RunResult Run(RunListener& listener, const CancelToken& cancel);
    // What could not be honoured to the letter so far. Any thread.
    std::vector<platform::Report> Reports() const { return m_met->Reports(); }

private:
    DocumentExport() = default;

    std::optional<FramePlan> m_plan;
    std::optional<platform::TextContext> m_met;
    ShotText m_text;
    std::optional<FrameRenderer> m_renderer;
    std::vector<std::string> m_warnings;
    PumpOptions m_options;
};

} // namespace host
