// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/Layouts.h"

#include <QLayout>
#include <QWidget>

namespace platform {

namespace {

// From the outside inwards: a layout needs the place that the one around it has given.
void Activate(QWidget& widget) {
    if (QLayout* const layout = widget.layout()) {
        layout->invalidate();
        layout->activate();
    }
    for (QObject* const child : widget.children())
        if (child->isWidgetType())
            Activate(*static_cast<QWidget*>(child));
}

} // namespace

void SettleLayouts(QWidget& window) {
    if (window.isVisible())
        return;
    window.ensurePolished();
    if (window.layout())
        window.resize(window.size().expandedTo(window.layout()->totalMinimumSize()));
    Activate(window);
}

} // namespace platform
