// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/ExportBar.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/studio/Texts.h"

namespace studio {

namespace {

constexpr std::chrono::milliseconds kInterval { 100 };
// Before so much time has gone by, a rate would be a guess.
constexpr qint64 kRateAfter = 500; // milliseconds

QString TimeText(double seconds) {
    const auto whole = static_cast<int>(std::ceil(seconds));
    return whole < 60 ? T("%1 s").arg(whole) : T("%1 min %2 s").arg(whole / 60).arg(whole % 60);
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

QStringList Failures(const host::RunResult& result, const std::vector<std::int64_t>& missing) {
    QStringList lines;
    if (!result.writeError.empty())
        lines += QString::fromStdString(result.writeError);
    for (const auto& failure : result.failures)
        lines += QString::fromStdString(failure.what);
    for (const auto frame : missing)
        lines += T("Frame %1: the shot does not have it").arg(frame);
    return lines;
}

} // namespace

ExportBar::ExportBar(QWidget* parent)
    : QFrame(parent), m_text(new QLabel(this)), m_progress(new QProgressBar(this)) {
    setFrameShape(QFrame::StyledPanel);
    auto* const cancel = new QPushButton(T("Cancel Export"), this);
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(8);
    m_progress->setAccessibleName(T("Progress of the export"));
    auto* const column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(m_text);
    column->addWidget(m_progress);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(10, 6, 10, 6);
    row->setSpacing(12);
    row->addLayout(column, 1);
    row->addWidget(cancel);
    connect(cancel, &QPushButton::clicked, this, [this] {
        m_timer.stop();
        m_text->setText(T("Ending the export; frames that are begun are finished…"));
        m_cancel->Cancel();
    });
    connect(&m_timer, &QTimer::timeout, this, [this] { ShowDone(); });
    hide();
}

ExportBar::~ExportBar() {
    if (!IsRunning())
        return;
    m_cancel->Cancel();
    m_thread.join();
}

bool ExportBar::Start(const host::Document& document, const host::Effect& effect,
                      const host::ExportOptions& options, host::PlanProblem& problem) {
    m_export = host::DocumentExport::Make(document, effect, options, problem);
    if (!m_export)
        return false;
    m_cancel = std::make_unique<host::CancelToken>();
    m_done = m_failed = 0;
    m_thread = std::thread([this] {
        m_result = m_export->Run(*this, *m_cancel);
        QMetaObject::invokeMethod(
            this, [this] { End(); }, Qt::QueuedConnection);
    });
    m_progress->setRange(0, static_cast<int>(std::max<std::int64_t>(m_export->FrameCount(), 1)));
    m_clock.start();
    m_timer.start(kInterval);
    ShowDone();
    show();
    return true;
}

void ExportBar::FrameFailed(const host::FrameFailure&) {
    ++m_failed;
    ++m_done;
}

void ExportBar::ShowDone() {
    const auto total = m_export->FrameCount();
    const std::int64_t done = m_done;
    m_progress->setValue(static_cast<int>(done));
    auto text = T("Exporting: %1 of %2").arg(done).arg(FramesText(total));
    const auto elapsed = m_clock.elapsed();
    if (elapsed >= kRateAfter && done > 0) {
        const auto rate = static_cast<double>(done) * 1000 / static_cast<double>(elapsed);
        text += T(", %1 per second, %2 left")
                    .arg(rate, 0, 'f', rate < 10 ? 1 : 0)
                    .arg(TimeText(static_cast<double>(total - done) / rate));
    }
    if (m_failed > 0)
        text += T(", %1 failed").arg(m_failed.load());
    m_text->setText(text);
}

void ExportBar::End() {
    m_thread.join();
    m_timer.stop();
    hide();
    QStringList reports;
    for (const auto& warning : m_export->Warnings())
        reports += QString::fromStdString(warning);
    for (const auto& report : m_export->Reports())
        reports += QString::fromStdString(platform::Describe(report));
    onEnd(Summary(m_result), Failures(m_result, m_export->Missing()), reports);
}

} // namespace studio
