// SPDX-License-Identifier: BSD-3-Clause
// The four information strings to type into, a switch for whether there are any, and below each what
// the shown frame makes of it or what is wrong with it.
#pragma once

#include <array>
#include <functional>

#include <QWidget>

#include "apps/studio/InfoStrings.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace studio {

class StringsPanel : public QWidget {
public:
    explicit StringsPanel(QWidget* parent = nullptr);

    // Fields that hold the text already keep their cursor.
    void SetStrings(const InfoStrings& strings);
    // The frame that tokens are shown for.
    void SetFrame(const host::TokenValues& values);
    QLineEdit& Field(std::size_t i) { return *m_fields[i]; }
    QCheckBox& Switch() { return *m_present; }
    // What stands below a field: its trouble, or what the frame makes of it.
    QString Note(std::size_t i) const;

    // The user changed one of the texts (0 to 3), or the switch (-1).
    std::function<void(const InfoStrings& strings, int which)> onChanged;

private:
    void AddField(std::size_t i, const QString& label, const QString& tip);
    InfoStrings Typed() const;
    void Change(int which);
    void ShowNotes();

    host::TokenValues m_values;
    QCheckBox* m_present;
    std::array<QLineEdit*, 4> m_fields {};
    std::array<QLabel*, 4> m_notes {};
    QWidget* m_body;
};

} // namespace studio
