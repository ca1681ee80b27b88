// SPDX-License-Identifier: BSD-3-Clause
// The one application of the process: the host's, or, where the host has none, ours.
#include <array>
#include <string>

#include <QApplication>
#include <QPointer>
#include <QThread>

#include "platform/ui/UIObject.h"
#include "platform/ui/windows/Display.h"
#include "platform/ui/windows/EventSource.h"
#include "platform/ui/windows/MainLoop.h"

namespace platform {

namespace {

// Lives as long as the process, as the host knows nothing of it. Its arguments do, too.
bool MakeApplication() {
    static std::string platform;
    platform = FindDisplayPlatform();
    if (platform.empty())
        return false;
    static std::string name = "telop";
    static std::string option = "-platform";
    static std::array<char*, 4> arguments { name.data(), option.data(), platform.data(), nullptr };
    static int count = 3;
    QGuiApplication::setQuitOnLastWindowClosed(false);
    static QApplication const& application = *new QApplication(count, arguments.data());
    return QCoreApplication::instance() == &application;
}

void Connect(QApplication& application) {
    static QPointer<MainLoop> loop;
    if (loop)
        return;
    loop = new MainLoop(application);
    application.installEventFilter(new EventSource(application));
}

} // namespace

bool EnsureUserInterface() {
    if (!QCoreApplication::instance() && !MakeApplication())
        return false;
    // A host's application may be one without widgets, and this another thread than its.
    auto* const application = dynamic_cast<QApplication*>(QCoreApplication::instance());
    if (!application || application->thread() != QThread::currentThread())
        return false;
    Connect(*application);
    return true;
}

} // namespace platform
