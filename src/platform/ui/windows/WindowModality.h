// SPDX-License-Identifier: BSD-3-Clause
// Which other windows a window keeps from the user.
#pragma once

#include <Qt>

namespace platform {

class Window;

// What SetWindowModality asked for.
Qt::WindowModality OwnModality(const Window& window);
// Gives it to the window's widget, in case that is a window of the screen: one that a host embeds, or
// that lies over another, is as modal as what is around it.
void ShowWithModality(Window& window, Qt::WindowModality modality);

} // namespace platform
