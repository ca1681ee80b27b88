// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Exporter.h"

#include <utility>

#include "apps/studio/Texts.h"

namespace studio {

std::unique_ptr<Exporter> Exporter::Start(const host::Document& document,
                                          const host::Effect& effect,
                                          const host::ExportOptions& options,
                                          std::function<void()> finished,
                                          host::PlanProblem& problem) {
    std::unique_ptr<Exporter> exporter(new Exporter);
    exporter->m_export = host::DocumentExport::Make(document, effect, options, problem);
    if (!exporter->m_export)
        return nullptr;
    exporter->m_thread = std::thread([self = exporter.get(), finished = std::move(finished)] {
        self->m_result = self->m_export->Run(*self, self->m_cancel);
        self->m_mailbox.Post(finished);
    });
    return exporter;
}

Exporter::~Exporter() {
    Cancel();
    if (m_thread.joinable())
        m_thread.join();
}

void Exporter::FrameWritten(std::int64_t, const std::string&) {
    ++m_done;
}

void Exporter::FrameSkipped(std::int64_t, const std::string&) {
    ++m_done;
}

void Exporter::FrameFailed(const host::FrameFailure&) {
    ++m_failed;
    ++m_done;
}

QString Summary(const host::RunResult& result) {
    auto text = T("%1 written").arg(FramesText(result.written));
    if (result.skipped > 0)
        text += T(", %1 there already").arg(result.skipped);
    if (result.failed > 0)
        text += T(", %1 failed").arg(result.failed);
    if (!result.writeError.empty())
        return T("The export was given up: %1.").arg(text);
    return result.cancelled ? T("The export was cancelled: %1.").arg(text)
                            : T("The export is done: %1.").arg(text);
}

QString Failures(const host::RunResult& result, const std::vector<std::int64_t>& missing) {
    QStringList lines;
    if (!result.writeError.empty())
        lines += QString::fromStdString(result.writeError);
    for (auto const& failure : result.failures)
        lines += QString::fromStdString(failure.what);
    for (auto const frame : missing)
        lines += T("Frame %1: the shot does not have it").arg(frame);
    return lines.join(QLatin1Char('\n'));
}

} // namespace studio
