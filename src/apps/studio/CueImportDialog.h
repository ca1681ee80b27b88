// SPDX-License-Identifier: BSD-3-Clause
// How a file of cues is read: its times, its bytes, and what becomes of the names in it. Says at once
// what comes of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <QDialog>

#include "host/cues/CueFile.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace studio {

class CueImportDialog : public QDialog {
public:
    // bytes: of the file with that name. timing: what to begin with.
    CueImportDialog(std::string name, std::string bytes, const host::CueTiming& timing,
                    QWidget* parent = nullptr);

    // As it is read with what is chosen; has cues when the dialog was accepted.
    const host::CueFile& File() const { return m_file; }
    bool WithNames() const; // who speaks is drawn, too

private:
    void Read();

    std::string m_name;
    std::string m_bytes;
    host::CueTiming m_timing;
    host::CueFile m_file;
    QComboBox* m_rate;
    QSpinBox* m_start;
    QComboBox* m_encoding;
    QCheckBox* m_names;
    QLabel* m_note;
    QPushButton* m_import;
};

} // namespace studio
