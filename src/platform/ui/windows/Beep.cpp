// SPDX-License-Identifier: BSD-3-Clause
// The user's attention.
#include <utility>

#include <QApplication>

#include "platform/ui/Windows.h"

namespace platform {

namespace {

std::function<void()>& InstalledBeep() {
    static auto& beep = *new std::function<void()>;
    return beep;
}

} // namespace

void SysBeep(std::int16_t /*duration*/) {
    if (std::function<void()> const beep = InstalledBeep())
        beep();
    else if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        QApplication::beep();
}

void SetBeep(std::function<void()> beep) {
    InstalledBeep() = std::move(beep);
}

} // namespace platform
