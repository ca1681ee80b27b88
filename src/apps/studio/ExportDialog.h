// SPDX-License-Identifier: BSD-3-Clause
// Asks where the frames go, which of them, and how many at once.
#pragma once

#include <optional>
#include <string>

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
    // output: the folder that is proposed.
    ExportDialog(const Shot& shot, const std::string& output, QWidget* parent);

    host::ExportOptions Options() const;

private:
    void Browse();
    void Check();
    // Those of the field; all when it is empty. Nothing: these are no numbers.
    std::optional<host::FrameRanges> Ranges() const;

    const Shot& m_shot;
    QLineEdit* m_output;
    QLineEdit* m_frames;
    QComboBox* m_existing;
    QSpinBox* m_jobs;
    QLabel* m_note;
    QPushButton* m_start;
};

} // namespace studio
