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

#include "platform/ui/menus/PopupDelegate.h"

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
    m_rows->beforeReset = [this] { KeepPick(); };
    m_rows->afterReset = [this] { RestorePick(); };
}

// The picked item --------------------------------------------------------------------------------

std::int32_t PopupButton::Value() const {
    const PopupModel::Row* const row = m_rows->At(currentIndex());
    return row ? row->topItem : 0;
}

void PopupButton::SetValue(std::int32_t item) {
    setCurrentIndex(m_rows->RowOfTopItem(item));
}

void PopupButton::KeepPick() {
    const PopupModel::Row* const row = m_rows->At(currentIndex());
    m_keptValue = row ? row->topItem : 0;
    m_keptMenu = row && row->depth > 0 ? row->menu : nullptr;
    m_keptItem = row ? row->item : MenuItemIndex { 0 };
}

void PopupButton::RestorePick() {
    const int below = m_keptMenu ? m_rows->RowOf(m_keptMenu, m_keptItem) : -1;
    const PopupModel::Row* const row = m_rows->At(below);
    const bool same = row && row->topItem == m_keptValue;
    setCurrentIndex(same ? below : m_rows->RowOfTopItem(m_keptValue));
    m_widestText = -1;
    updateGeometry();
    update();
}

// Picking while the list is closed ---------------------------------------------------------------

bool PopupButton::HasPickable() const {
    const PopupModel::Row* const row = m_rows->At(currentIndex());
    return row && row->pickable;
}

// The pickable row so many steps away, or the last one before a separator: what lies beyond is often
// a command, which nobody should meet by turning the wheel.
int PopupButton::RowAfter(int row, int steps) const {
    const int direction = steps < 0 ? -1 : 1;
    int reached = row;
    int left = std::abs(steps);
    const PopupModel::Row* next = m_rows->At(row += direction);
    for (; next && !next->separator && left > 0; next = m_rows->At(row += direction)) {
        if (!next->pickable)
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
        if (m_rows->At(i)->separator)
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
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics plainMetrics(font());
    const QFontMetrics titleMetrics(bold);
    m_widestText = 0;
    for (int i = 0; const PopupModel::Row* row = m_rows->At(i); ++i) {
        const QFontMetrics& metrics = row->title ? titleMetrics : plainMetrics;
        const int text = metrics.horizontalAdvance(itemText(i));
        const int beside =
            PopupDelegate::WidthBesideText(plainMetrics, row->depth, m_rows->HasCheckMarks());
        m_widestText = std::max(m_widestText, text + beside);
    }
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

} // namespace platform
