// SPDX-License-Identifier: BSD-3-Clause
// The widget of a popup button: shows the picked item of a menu and opens the menu as a list.
#pragma once

#include <QComboBox>

#include "platform/ui/menus/PopupModel.h"

namespace platform {

// The signal activated comes for each item that the user picks, the current one included.
class PopupButton final : public QComboBox {
public:
    explicit PopupButton(QWidget* parent = nullptr);

    PopupModel& Rows() const { return *m_rows; }
    std::int32_t Value() const { return currentIndex() + 1; } // the picked item, from 1; 0: none
    void SetValue(std::int32_t item);                         // one that the menu lacks: none

    void showPopup() override;
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool HasPickable() const;
    int RowAfter(int row, int steps) const;
    bool HasSeparatorBetween(int row, int other) const;
    void PickRow(int row);
    void PickBySteps(int steps);
    void PickByText(const QString& typed);
    int WidestText() const;

    PopupModel* m_rows;
    std::int32_t m_keptValue = 0;  // while the rows change
    int m_wheel = 0;               // eighths of a degree that made no step yet
    mutable int m_widestText = -1; // below 0: not measured since the menu changed
};

} // namespace platform
