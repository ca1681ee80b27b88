// SPDX-License-Identifier: BSD-3-Clause
// The one place where events of Qt's become events of class and kind. It sees every event of the
// application and looks only at those of widgets in our windows.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointF>

class QInputEvent;
class QWidget;

namespace platform {

class Window;

class EventSource : public QObject {
public:
    explicit EventSource(QObject& application) : QObject(&application) {}

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    // An input event that a widget ignored comes again, for the widget around it. It was offered to
    // the window already, and is not the business of a window around that one.
    struct Offered {
        QEvent::Type type = QEvent::None;
        quint64 timestamp = 0;
        QPointF place; // of the mouse
        int key = 0;
        const QWidget* next = nullptr; // only compared
    };

    bool Turn(QWidget& receiver, QEvent& event);
    bool TurnInput(QWidget& receiver, QInputEvent& event);
    bool WasOffered(const QWidget& receiver, const QInputEvent& event);

    Offered m_offered;
};

} // namespace platform
