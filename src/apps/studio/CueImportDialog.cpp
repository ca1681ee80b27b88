// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/CueImportDialog.h"

#include <algorithm>
#include <utility>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include "apps/studio/Player.h"
#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"
#include "host/frames/FrameRanges.h"
#include "platform/TextContext.h"

namespace studio {

CueImportDialog::CueImportDialog(std::string name, std::string bytes, const host::CueTiming& timing,
                                 QWidget* parent)
    : QDialog(parent), m_name(std::move(name)), m_bytes(std::move(bytes)), m_timing(timing),
      m_rate(new QComboBox(this)), m_start(new QSpinBox(this)), m_encoding(new QComboBox(this)),
      m_names(new QCheckBox(T("&Names on a track of their own"), this)), m_note(new QLabel(this)) {
    setWindowTitle(T("Import Cues"));
    for (const auto* const rate : kPlaybackRates)
        m_rate->addItem(QLatin1String(rate));
    m_rate->setCurrentText(QString::fromStdString(timing.timeCode.Rate().Name()));
    const auto most = static_cast<int>(host::kFrameMax);
    m_start->setRange(-most, most);
    m_start->setValue(static_cast<int>(timing.startFrame));
    m_encoding->addItem(T("As the file says, or UTF-8"));
    for (const auto* const encoding : { "UTF-8", "CP932", "EUC-JP", "EUC-KR", "GBK", "Big5" })
        m_encoding->addItem(QLatin1String(encoding), QByteArray(encoding));
    auto* const form = new QFormLayout(this);
    form->addRow(T("Frames a &second:"), m_rate);
    form->addRow(T("Frame at &time 0:"), m_start);
    form->addRow(T("&Encoding:"), m_encoding);
    form->addRow(m_names);
    form->addRow(m_note);
    m_note->setWordWrap(true);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_note->setMinimumHeight(4 * fontMetrics().lineSpacing());
    auto* const buttons = new QDialogButtonBox(this);
    m_import = buttons->addButton(T("&Import"), QDialogButtonBox::AcceptRole);
    buttons->addButton(T("Cancel"), QDialogButtonBox::RejectRole);
    form->addRow(buttons);
    resize(460, sizeHint().height());
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    for (auto* const choice : { m_rate, m_encoding })
        connect(choice, &QComboBox::currentIndexChanged, this, [this] { Read(); });
    connect(m_start, &QSpinBox::valueChanged, this, [this] { Read(); });
    Read();
}

bool CueImportDialog::WithNames() const {
    return m_names->isEnabled() && m_names->isChecked();
}

void CueImportDialog::Read() {
    std::string why;
    const auto rate = host::FrameRate::Parse(m_rate->currentText().toStdString(), why);
    if (rate && *rate != m_timing.timeCode.Rate())
        m_timing.timeCode = host::TimeCode(*rate);
    m_timing.startFrame = m_start->value();
    host::CueOptions options { .timing = m_timing,
                               .documentEncoding = platform::TextContext::Current().Encoding() };
    if (const auto encoding = m_encoding->currentData().toByteArray(); !encoding.isEmpty())
        options.encoding = platform::TextEncoding::Find(encoding.toStdString());
    m_file = host::ReadCues(m_bytes, m_name, options, why).value_or(host::CueFile());
    const auto& cues = m_file.cues;
    auto note = cues.empty() ? T("There is no cue in it that can be read.")
                             : T("%1 cues on frames %2 to %3.")
                                   .arg(cues.size())
                                   .arg(cues.front().first)
                                   .arg(std::ranges::max(cues, {}, &host::TimedCue::last).last);
    const auto problems = m_file.problems.size() + m_file.moreProblems;
    if (problems > 0)
        note += QLatin1Char('\n') + T("Problems: %1. They are listed afterwards.").arg(problems);
    if (cues.empty() && !m_file.problems.empty())
        why = m_file.problems.front().text;
    if (cues.empty() && !why.empty())
        note += QLatin1Char('\n') + QString::fromStdString(why);
    m_note->setText(note);
    cues.empty() ? SetAlarming(*m_note) : SetFaint(*m_note);
    m_import->setEnabled(!cues.empty());
    m_names->setEnabled(
        std::ranges::any_of(cues, [](const auto& cue) { return !cue.character.empty(); }));
}

} // namespace studio
