// SPDX-License-Identifier: BSD-3-Clause
// The four information strings to type into, a switch for whether there are any, and below each what
// the shown frame makes of it or what is wrong with it.
#pragma once

#include <array>
#include <functional>

#include <QWidget>

#include "apps/studio/ShotStrings.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace studio {

class StringsPanel : public QWidget {
public:
    explicit StringsPanel(QWidget* parent = nullptr);

    // Fields that hold the text already keep their cursor.
    void SetStrings(const ShotStrings& strings);
    // The frame that tokens are shown for.
    void SetFrame(const host::TokenValues& values);

    // The user changed one of the texts (0 to 3), or the switch (-1).
    std::function<void(const ShotStrings& strings, int which)> onChanged = [](const ShotStrings&,
                                                                              int) {};

private:
    void AddField(std::size_t i, const QString& label, const QString& tip);
    ShotStrings Typed() const;
    void Change(int which);
    void ShowNotes();

    host::TokenValues m_values;
    QCheckBox* m_present;
    std::array<QLineEdit*, 4> m_fields {};
    std::array<QLabel*, 4> m_notes {};
    QWidget* m_body;
};

} // namespace studio
