// SPDX-License-Identifier: BSD-3-Clause
// Asks where the frames go, which of them, and how many at once.
#pragma once

#include <optional>

#include <QDialog>

#include "apps/studio/Shot.h"
#include "host/jobs/DocumentExport.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace studio {

class ExportDialog : public QDialog {
public:
    // proposal: what the fields show at first.
    ExportDialog(const Shot& shot, const host::ExportOptions& proposal, QWidget* parent);

    host::ExportOptions Options() const;

private:
    void Browse();
    void Check();
    // Those of the field; nothing, where the field is empty, are all of them. False: no numbers.
    bool Ranges(std::optional<host::FrameRanges>& ranges) const;

    const Shot& m_shot;
    QLineEdit* m_output;
    QLineEdit* m_frames;
    QComboBox* m_existing;
    QSpinBox* m_jobs;
    QLabel* m_note;
    QPushButton* m_start;
};

} // namespace studio
