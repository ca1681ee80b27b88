// SPDX-License-Identifier: BSD-3-Clause
// A combo box over a menu. What the keyboard and the wheel do to it while it is closed is our own:
// items of a menu may be commands.
#include "platform/ui/menus/PopupButton.h"

#include <algorithm>
#include <cstdlib>

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include "platform/ui/controls/Control.h"
#include "platform/ui/menus/PopupDelegate.h"
#include "platform/ui/windows/Input.h"

namespace platform {
namespace {

constexpr int kVisibleRows = 24;
constexpr int kPageRows = 10;
constexpr int kLongestWay = 1 << 30;
constexpr int kWidestInCharacters = 24; // of the closed button; its popup is as wide as it takes

// How far an arrow or its neighbours move; 0 for other keys.
int StepsOf(const QKeyEvent& event) {
    if (event.modifiers() & ~Qt::KeypadModifier)
        return 0;
    switch (event.key()) {
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Down:
        return 1;
    case Qt::Key_PageUp:
        return -kPageRows;
    case Qt::Key_PageDown:
        return kPageRows;
    case Qt::Key_Home:
        return -kLongestWay;
    case Qt::Key_End:
        return kLongestWay;
    default:
        return 0;
    }
}

bool TypesText(const QKeyEvent& event) {
    const bool command =
        event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !command && event.key() != Qt::Key_Space && !event.text().isEmpty() &&
           event.text().front().isPrint();
}

} // namespace

PopupButton::PopupButton(QWidget* parent) : QComboBox(parent), m_rows(new PopupModel(this)) {
    setModel(m_rows);
    // A list below the button, with a scroll bar: some styles would fill the screen with thousands
    // of families instead.
    setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0; }"));
    setItemDelegate(new PopupDelegate(this)); // makes the list, which looks at the style once
    setMaxVisibleItems(kVisibleRows);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(6);
    setIconSize({ 0, 0 });
    setFocusPolicy(Qt::StrongFocus); // the wheel alone shall not take the focus
    m_rows->beforeReset = [this] { m_keptValue = Value(); };
    m_rows->afterReset = [this] {
        SetValue(m_keptValue);
        m_widestText = -1;
        updateGeometry();
        update();
    };
}

// The picked item --------------------------------------------------------------------------------

void PopupButton::SetValue(std::int32_t item) {
    setCurrentIndex(m_rows->At(item - 1) ? item - 1 : -1);
}

// Picking while the list is closed ---------------------------------------------------------------

bool PopupButton::HasPickable() const {
    const MenuItem* const item = m_rows->At(currentIndex());
    return item && item->IsPickable();
}

// The pickable row so many steps away, or the last one before a separator: what lies beyond is often
// a command, which nobody should meet by turning the wheel.
int PopupButton::RowAfter(int row, int steps) const {
    const int direction = steps < 0 ? -1 : 1;
    int reached = row;
    int left = std::abs(steps);
    const MenuItem* next = m_rows->At(row += direction);
    for (; next && !next->IsSeparator() && left > 0; next = m_rows->At(row += direction)) {
        if (!next->IsPickable())
            continue;
        reached = row;
        --left;
    }
    return reached;
}

void PopupButton::PickRow(int row) {
    if (row == currentIndex())
        return;
    setCurrentIndex(row);
    emit activated(row); // this button may be gone now
}

void PopupButton::PickBySteps(int steps) {
    if (HasPickable())
        PickRow(RowAfter(currentIndex(), steps));
    else
        showPopup();
}

bool PopupButton::HasSeparatorBetween(int row, int other) const {
    for (int i = std::min(row, other); i < std::max(row, other); ++i)
        if (m_rows->At(i)->IsSeparator())
            return true;
    return false;
}

void PopupButton::PickByText(const QString& typed) {
    const int from = currentIndex();
    view()->setCurrentIndex(model()->index(from, 0));
    view()->keyboardSearch(typed); // joins the characters that follow each other quickly
    const QModelIndex found = view()->currentIndex();
    if (HasPickable() && !HasSeparatorBetween(from, found.row())) {
        PickRow(found.row());
        return;
    }
    showPopup();
    view()->setCurrentIndex(found);
}

void PopupButton::keyPressEvent(QKeyEvent* event) {
    if (const int steps = StepsOf(*event))
        PickBySteps(steps);
    else if (TypesText(*event))
        PickByText(event->text());
    else
        QComboBox::keyPressEvent(event);
}

void PopupButton::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) {
        event->ignore(); // what lies around it may scroll
        return;
    }
    event->accept();
    m_wheel += event->angleDelta().y();
    const int notches = m_wheel / QWheelEvent::DefaultDeltasPerStep;
    m_wheel -= notches * QWheelEvent::DefaultDeltasPerStep;
    if (notches != 0 && HasPickable())
        PickRow(RowAfter(currentIndex(), -notches));
}

// Measures ---------------------------------------------------------------------------------------

// In front of the text and behind it included.
int PopupButton::WidestText() const {
    if (m_widestText >= 0)
        return m_widestText;
    const QFontMetrics metrics(font());
    m_widestText = 0;
    for (int i = 0; i < count(); ++i)
        m_widestText = std::max(m_widestText, metrics.horizontalAdvance(itemText(i)));
    m_widestText += PopupDelegate::WidthBesideText(metrics, m_rows->HasCheckMarks());
    return m_widestText;
}

void PopupButton::showPopup() {
    const int frame = 2 * view()->frameWidth() + 2;
    const int scrollBar =
        count() > kVisibleRows ? view()->verticalScrollBar()->sizeHint().width() : 0;
    view()->setMinimumWidth(
        std::min(WidestText() + frame + scrollBar, screen()->availableGeometry().width()));
    QComboBox::showPopup();
}

QSize PopupButton::sizeHint() const {
    const int character = fontMetrics().averageCharWidth();
    const int wanted = std::min(WidestText(), kWidestInCharacters * character);
    const int given = minimumContentsLength() * fontMetrics().horizontalAdvance(QLatin1Char('X'));
    return QComboBox::sizeHint() + QSize(std::max(0, wanted - given), 0);
}

void PopupButton::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m_widestText = -1;
    QComboBox::changeEvent(event);
}

// The control ------------------------------------------------------------------------------------

namespace {

class PopupControl final : public WidgetControl {
public:
    PopupControl(PopupButton& button, Window& owner)
        : WidgetControl(button, owner), m_button(button) {
        connect(&button, &QComboBox::activated, this,
                [this] { Guarded([this] { SendHit(kControlMenuPart); }); });
    }

    std::int32_t Value() const override { return m_button.Value(); }
    // The menu says how many values there are. A maximum that is set could only repeat that, and it
    // would be wrong after the next change of the menu.
    std::int32_t Maximum() const override { return PopupMenu()->Count(); }
    Menu* PopupMenu() const override { return &m_button.Rows().Shown(); }
    ControlPartCode FocusPart() const override { return kControlMenuPart; }

protected:
    void ApplyValue(std::int32_t value) override { m_button.SetValue(value); }

private:
    PopupButton& m_button;
};

} // namespace

Control* MakePopupControl(QWidget& widget, Window& owner) {
    auto* const button = dynamic_cast<PopupButton*>(&widget);
    return button ? new PopupControl(*button, owner) : nullptr;
}

} // namespace platform
