// SPDX-License-Identifier: BSD-3-Clause
// An export that goes on in the background while the user works.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

#include <QString>

#include "apps/studio/Mailbox.h"
#include "host/jobs/DocumentExport.h"

namespace studio {

class Exporter : private host::RunListener {
public:
    // Null with the problem when it cannot begin. The effect must outlive it; the document is
    // copied. finished is called on the thread of the maker, from its event loop.
    static std::unique_ptr<Exporter> Start(const host::Document& document,
                                           const host::Effect& effect,
                                           const host::ExportOptions& options,
                                           std::function<void()> finished,
                                           host::PlanProblem& problem);
    Exporter(const Exporter&) = delete;
    Exporter& operator=(const Exporter&) = delete;
    ~Exporter() override; // cancels, and waits for the frames that are begun

    void Cancel() { m_cancel.Cancel(); }
    std::int64_t Total() const { return m_export->FrameCount(); }
    // Written, skipped or failed so far.
    std::int64_t Done() const { return m_done; }
    std::int64_t Failed() const { return m_failed; }
    // Once it has finished.
    const host::RunResult& Result() const { return m_result; }
    const std::vector<std::int64_t>& Missing() const { return m_export->Missing(); }

private:
    Exporter() = default;
    void FrameWritten(std::int64_t frame, const std::string& output) override;
    void FrameSkipped(std::int64_t frame, const std::string& output) override;
    void FrameFailed(const host::FrameFailure& failure) override;

    std::unique_ptr<host::DocumentExport> m_export;
    host::CancelToken m_cancel;
    host::RunResult m_result;
    std::atomic<std::int64_t> m_done { 0 };
    std::atomic<std::int64_t> m_failed { 0 };
    Mailbox m_mailbox;
    std::thread m_thread;
};

// One line on what became of it, and the failures a line each (empty when there were none).
QString Summary(const host::RunResult& result);
QString Failures(const host::RunResult& result, const std::vector<std::int64_t>& missing);

} // namespace studio
