// SPDX-License-Identifier: BSD-3-Clause
// Which cursor shows where: lent to the widget under the mouse until the mouse leaves it, or the
// watch over everything. Knows nothing of names.
#pragma once

#include <optional>

#include <QCursor>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace platform {

class MouseCursor : public QObject {
public:
    static MouseCursor& The();

    // The widget that Show would lend a cursor; null when the mouse is over none.
    QWidget* Widget() const;
    void Show(const QCursor& cursor); // ends the watch
    // The widget's own cursor where it has one, the arrow elsewhere.
    void ShowArrow();
    void ShowWatch();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void EndWatch();
    void LendTo(QWidget& widget);
    void TakeBack();

    QPointer<QWidget> m_widget;   // that shows a cursor of ours
    std::optional<QCursor> m_own; // that it had
    bool m_watch = false;
};

} // namespace platform
