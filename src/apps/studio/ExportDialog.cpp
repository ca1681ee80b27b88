// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/ExportDialog.h"

#include <algorithm>
#include <thread>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"

namespace studio {

ExportDialog::ExportDialog(const Shot& shot, const std::string& output, QWidget* parent)
    : QDialog(parent), m_shot(shot), m_output(new QLineEdit(this)), m_frames(new QLineEdit(this)),
      m_existing(new QComboBox(this)), m_jobs(new QSpinBox(this)), m_note(new QLabel(this)) {
    setWindowTitle(T("Export Frames"));
    auto* const browse = new QPushButton(T("&Choose Folder…"), this);
    browse->setAutoDefault(false);
    auto* const place = new QHBoxLayout;
    place->addWidget(m_output, 1);
    place->addWidget(browse);
    m_output->setText(QString::fromStdString(output));
    m_output->setToolTip(T("A folder, or a pattern such as burned/shot.####.png"));
    m_frames->setPlaceholderText(T("All frames"));
    m_frames->setToolTip(T("Numbers and ranges, such as 1-24, 30, 40-50:2"));
    m_existing->addItem(T("Stop before anything is written"),
                        static_cast<int>(host::Existing::kRefuse));
    m_existing->addItem(T("Replace them"), static_cast<int>(host::Existing::kOverwrite));
    m_existing->addItem(T("Keep them and make the others"),
                        static_cast<int>(host::Existing::kSkip));
    m_jobs->setRange(0, 64);
    m_jobs->setSpecialValueText(
        T("One for each core (%1)").arg(std::max(1U, std::thread::hardware_concurrency())));

    auto* const form = new QFormLayout;
    auto* const to = new QLabel(T("&To:"), this);
    to->setBuddy(m_output);
    form->addRow(to, place);
    form->addRow(T("&Frames:"), m_frames);
    form->addRow(T("Files that e&xist:"), m_existing);
    form->addRow(T("Frames at &once:"), m_jobs);
    m_note->setWordWrap(true);
    m_note->setMinimumHeight(2 * fontMetrics().lineSpacing());
    m_note->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* const buttons = new QDialogButtonBox(this);
    m_start = buttons->addButton(T("&Export"), QDialogButtonBox::AcceptRole);
    buttons->addButton(T("Cancel"), QDialogButtonBox::RejectRole);
    m_start->setDefault(true);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(m_note);
    column->addStretch(1);
    column->addWidget(buttons);
    resize(620, sizeHint().height());

    connect(browse, &QPushButton::clicked, this, [this] { Browse(); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    for (auto* const field : { m_output, m_frames })
        connect(field, &QLineEdit::textChanged, this, [this] { Check(); });
    m_output->selectAll();
    Check();
}

host::ExportOptions ExportDialog::Options() const {
    host::ExportOptions options;
    options.output = m_output->text().trimmed().toStdString();
    options.frames = Ranges();
    options.existing = static_cast<host::Existing>(m_existing->currentData().toInt());
    options.jobs = m_jobs->value();
    return options;
}

std::optional<host::FrameRanges> ExportDialog::Ranges() const {
    const auto text = m_frames->text().trimmed().toStdString();
    std::string why;
    return text.empty() ? host::FrameRanges::All() : host::FrameRanges::Parse(text, why);
}

void ExportDialog::Browse() {
    const auto folder =
        QFileDialog::getExistingDirectory(this, T("Folder for the Frames"), m_output->text());
    if (!folder.isEmpty())
        m_output->setText(folder + QLatin1Char('/'));
}

// Says what will happen, or why nothing can.
void ExportDialog::Check() {
    const auto ranges = Ranges();
    const auto count = ranges ? ranges->Among(m_shot.Numbers()).size() : 0;
    QString trouble;
    if (!ranges)
        trouble = T("These are no frame numbers. Write them as in 1-24, 30, 40-50:2.");
    else if (count == 0)
        trouble = T("The shot has none of these frames.");
    else if (m_output->text().trimmed().isEmpty())
        trouble = T("Choose where the frames go.");
    m_note->setText(
        trouble.isEmpty()
            ? T("%1 will be written as PNG files.").arg(FramesText(static_cast<qint64>(count)))
            : trouble);
    trouble.isEmpty() ? SetFaint(*m_note) : SetAlarming(*m_note);
    m_start->setEnabled(trouble.isEmpty());
}

} // namespace studio
