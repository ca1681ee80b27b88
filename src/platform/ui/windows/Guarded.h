// SPDX-License-Identifier: BSD-3-Clause
// Where handlers are called from Qt's loop: no exception of theirs goes on into the loop, which would
// not survive it.
#pragma once

#include <exception>

#include <QtGlobal>

namespace platform {

template <class Call>
void Guarded(Call call) noexcept {
    try {
        call();
    } catch (const std::exception& error) {
        qWarning("An exception left an event handler: %s", error.what());
    } catch (...) {
        qWarning("An exception left an event handler");
    }
}

} // namespace platform
