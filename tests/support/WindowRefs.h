// SPDX-License-Identifier: BSD-3-Clause
// Windows in tests, by their references.
#pragma once

#include <stdexcept>

#include "platform/ui/Windows.h"

namespace test {

inline platform::Window& At(platform::WindowRef window) {
    platform::Window* const found = platform::Window::Find(window);
    if (!found)
        throw std::logic_error("The window is gone");
    return *found;
}

inline bool IsThere(platform::WindowRef window) {
    return platform::Window::Find(window) != nullptr;
}

inline void Dispose(platform::WindowRef window) { // or it has gone before
    if (platform::Window* const found = platform::Window::Find(window))
        found->Dispose();
}

} // namespace test
