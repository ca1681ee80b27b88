// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/ExportBar.h"

#include <algorithm>
#include <cmath>

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/studio/Texts.h"

namespace studio {

namespace {

// Before so much time has gone by, a rate would be a guess.
constexpr qint64 kRateAfter = 500; // milliseconds

QString TimeText(double seconds) {
    auto const whole = static_cast<int>(std::ceil(seconds));
    return whole < 60 ? T("%1 s").arg(whole) : T("%1 min %2 s").arg(whole / 60).arg(whole % 60);
}

} // namespace

ExportBar::ExportBar(QWidget* parent)
    : QFrame(parent), m_text(new QLabel(this)), m_progress(new QProgressBar(this)) {
    setFrameShape(QFrame::StyledPanel);
    auto* const cancel = new QPushButton(T("Cancel Export"), this);
    cancel->setObjectName(QStringLiteral("cancelExport"));
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
        m_text->setText(T("Ending the export; frames that are begun are finished…"));
        if (onCancel)
            onCancel();
    });
    hide();
}

void ExportBar::Begin(std::int64_t frames) {
    m_frames = frames;
    m_clock.start();
    m_progress->setRange(0, static_cast<int>(std::max<std::int64_t>(frames, 1)));
    SetDone(0, 0);
    show();
}

void ExportBar::SetDone(std::int64_t frames, std::int64_t failed) {
    m_progress->setValue(static_cast<int>(frames));
    auto text = T("Exporting: %1 of %2").arg(frames).arg(FramesText(m_frames));
    auto const elapsed = m_clock.elapsed();
    if (elapsed >= kRateAfter && frames > 0) {
        auto const rate = static_cast<double>(frames) * 1000 / static_cast<double>(elapsed);
        text += T(", %1 per second, %2 left")
                    .arg(rate, 0, 'f', rate < 10 ? 1 : 0)
                    .arg(TimeText(static_cast<double>(m_frames - frames) / rate));
    }
    if (failed > 0)
        text += T(", %1 failed").arg(failed);
    m_text->setText(text);
}

void ExportBar::End() {
    hide();
}

QString ExportBar::Text() const {
    return isHidden() ? QString() : m_text->text();
}

} // namespace studio
