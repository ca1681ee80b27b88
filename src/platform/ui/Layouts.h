// SPDX-License-Identifier: BSD-3-Clause
// Layouts of windows that are not shown yet: they do not settle by themselves before, but dialogs ask
// where their controls lie while they set them up.
#pragma once

class QWidget;

namespace platform {

// Puts everything in a hidden window where it will be when it is shown; the window grows to what its
// contents need at least. Does nothing for a window that is shown.
void SettleLayouts(QWidget& window);

} // namespace platform
