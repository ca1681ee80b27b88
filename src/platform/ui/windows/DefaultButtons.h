// SPDX-License-Identifier: BSD-3-Clause
// The button that Return presses and the one that Escape does.
#pragma once

namespace platform {

class Control;
class Window;

// Null: none. The default button looks like one.
void MakeDefaultButton(Window& window, Control* button);
void MakeCancelButton(Window& window, Control* button);

} // namespace platform
