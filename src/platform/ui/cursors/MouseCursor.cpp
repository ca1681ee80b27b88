// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/cursors/MouseCursor.h"

#include <utility>

#include <QApplication>
#include <QEvent>

namespace platform {

MouseCursor& MouseCursor::The() {
    // Never destroyed: it may be asked while the process ends.
    static auto* cursor = new MouseCursor;
    return *cursor;
}

QWidget* MouseCursor::Widget() const {
    // A dragging mouse may be far out; the widget that it belongs to is left on release alone.
    if (m_widget && QGuiApplication::mouseButtons() != Qt::NoButton)
        return m_widget;
    return QApplication::widgetAt(QCursor::pos());
}

void MouseCursor::Show(const QCursor& cursor) {
    EndWatch();
    QWidget* const widget = Widget();
    if (!widget)
        return;
    LendTo(*widget);
    // Setting the same one again would cost a request to the display with each move of the mouse.
    if (!widget->testAttribute(Qt::WA_SetCursor) || widget->cursor() != cursor)
        widget->setCursor(cursor);
}

void MouseCursor::ShowArrow() {
    QWidget* const widget = Widget();
    if (widget && widget != m_widget)
        TakeBack();
    const bool hasOwn = widget && (widget == m_widget ? m_own.has_value()
                                                      : widget->testAttribute(Qt::WA_SetCursor));
    if (!hasOwn) {
        Show(Qt::ArrowCursor);
        return;
    }
    EndWatch();
    TakeBack();
}

void MouseCursor::ShowWatch() {
    if (!std::exchange(m_watch, true))
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

bool MouseCursor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_widget && (event->type() == QEvent::Leave || event->type() == QEvent::Hide))
        TakeBack();
    return false;
}

void MouseCursor::EndWatch() {
    if (std::exchange(m_watch, false))
        QGuiApplication::restoreOverrideCursor();
}

void MouseCursor::LendTo(QWidget& widget) {
    if (m_widget == &widget)
        return;
    TakeBack();
    m_widget = &widget;
    if (widget.testAttribute(Qt::WA_SetCursor))
        m_own = widget.cursor();
    widget.installEventFilter(this);
}

void MouseCursor::TakeBack() {
    const std::optional<QCursor> own = std::exchange(m_own, std::nullopt);
    QWidget* const widget = std::exchange(m_widget, nullptr);
    if (!widget)
        return;
    widget->removeEventFilter(this);
    if (own)
        widget->setCursor(*own);
    else
        widget->unsetCursor();
}

} // namespace platform
