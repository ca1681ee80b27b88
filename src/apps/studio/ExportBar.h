// SPDX-License-Identifier: BSD-3-Clause
// An export that goes on in the background while the user works: how far it is, and a button that
// ends it.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

#include <QElapsedTimer>
#include <QFrame>
#include <QTimer>

#include "host/jobs/DocumentExport.h"

class QLabel;
class QProgressBar;

namespace studio {

class ExportBar : public QFrame, private host::RunListener {
public:
    explicit ExportBar(QWidget* parent = nullptr);
    ~ExportBar() override; // cancels, and waits for the frames that are begun

    // While none runs. The effect must outlive the run; the document is copied. False with the
    // problem when it cannot begin.
    bool Start(const host::Document& document, const host::Effect& effect,
               const host::ExportOptions& options, host::PlanProblem& problem);
    bool IsRunning() const { return m_thread.joinable(); }

    // One line on what became of it, and what the user should know a line each: failures, and what
    // was not drawn to the letter.
    std::function<void(const QString& summary, const QStringList& failures,
                       const QStringList& reports)>
        onEnd;

private:
    void FrameWritten(std::int64_t, const std::string&) override { ++m_done; }
    void FrameSkipped(std::int64_t, const std::string&) override { ++m_done; }
    void FrameFailed(const host::FrameFailure& failure) override;
    void ShowDone();
    void End();

    QLabel* m_text;
    QProgressBar* m_progress;
    QTimer m_timer;
    QElapsedTimer m_clock;

    std::unique_ptr<host::DocumentExport> m_export;
    std::unique_ptr<host::CancelToken> m_cancel;
    host::RunResult m_result;
    std::atomic<std::int64_t> m_done { 0 }; // written, skipped or failed
    std::atomic<std::int64_t> m_failed { 0 };
    std::thread m_thread;
};

} // namespace studio
