// SPDX-License-Identifier: BSD-3-Clause
// What makes radio buttons exclude each other, wherever in a window they lie. Shows nothing itself.
#pragma once

#include <QButtonGroup>
#include <QRadioButton>
#include <QWidget>

namespace platform {

class RadioGroup : public QWidget {
public:
    explicit RadioGroup(QWidget* parent);

    // The group that the button was added to, or null.
    static RadioGroup* Of(const QAbstractButton& button);
    void Add(QRadioButton& button); // at the end; nothing when it is in this group already
    QList<QAbstractButton*> Buttons() const { return m_buttons.buttons(); }
    const QButtonGroup& Signals() const { return m_buttons; }

    int Value() const;        // counts from 1, in the order of adding; 0 when none is checked
    void SetValue(int value); // others than 1 to the count check none
    void Uncheck(QAbstractButton& button); // which an exclusive group does not do by itself

private:
    QButtonGroup m_buttons;
};

} // namespace platform
