// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/DocumentExport.h"

#include "host/jobs/TextCheck.h"

namespace host {

std::unique_ptr<DocumentExport> DocumentExport::Make(const Document& document, const Effect& effect,
                                                     const ExportOptions& options,
                                                     PlanProblem& problem) {
    if (document.input.empty()) {
        problem = { PlanProblem::Kind::kInput, "the document has no frames" };
        return nullptr;
    }
    std::unique_ptr<DocumentExport> made(new DocumentExport);
    made->m_plan = FramePlan::Make({ .input = document.input,
                                     .output = options.output,
                                     .frames = options.frames.value_or(FrameRanges::All()),
                                     .clock = document.clock,
                                     .existing = options.existing },
                                   problem);
    if (!made->m_plan)
        return nullptr;
    // Such a thread could not be called back, and the process goes on.
    if (made->m_plan->Source().MayWait() || made->m_plan->Sink().MayWait()) {
        problem = { PlanProblem::Kind::kOutput, "a document's frames are files, not streams" };
        return nullptr;
    }
    made->m_met.emplace(document.encoding, nullptr, document.language, document.fallbacks);
    const platform::TextScope scope(*made->m_met);
    std::vector<std::string> problems;
    made->m_text = ShotText::Of(document, problems);
    if (!problems.empty()) {
        problem = { PlanProblem::Kind::kText, problems.front() };
        return nullptr;
    }
    made->m_renderer.emplace(effect, made->m_text, *made->m_met);
    made->m_warnings =
        WhyOnNoFrame(*made->m_renderer, made->m_text, made->m_plan->Files(), made->m_plan->Run());
    made->m_options = { .jobs = options.jobs, .compression = options.compression };
    return made;
}

RunResult DocumentExport::Run(RunListener& listener, const CancelToken& cancel) {
    RunResult result;
    if (!m_plan->PrepareFolder(result.writeError)) {
        listener.Started(FrameCount());
        listener.Finished(result);
        return result;
    }
    return FramePump(m_plan->Source(), *m_renderer, m_plan->Sink(), listener, cancel, m_options)
        .Run();
}

} // namespace host
