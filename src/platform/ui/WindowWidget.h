// SPDX-License-Identifier: BSD-3-Clause
// The one door between this layer's windows and a host's widgets.
#pragma once

#include "platform/ui/Windows.h"

class QWidget;

namespace platform {

// The window's widget; null when the window is gone. A host may put it into a layout of its own
// (it reparents like any widget) and shows it with ShowWindow. The widget belongs to the window:
// deleting it, or the widget around it, disposes the window.
QWidget* GetWindowWidget(WindowRef window);
// The window that a widget lies in; null for a widget of the host.
WindowRef GetWidgetWindow(const QWidget* widget);

} // namespace platform
