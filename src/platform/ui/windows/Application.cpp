// SPDX-License-Identifier: BSD-3-Clause
// The one application of the process: the host's, or, where the host has none, ours.
#include <array>
#include <memory>
#include <string>

#include <QApplication>
#include <QLibraryInfo>
#include <QPointer>
#include <QThread>
#include <QTranslator>

#include "platform/Languages.h"
#include "platform/ui/UIObject.h"
#include "platform/ui/windows/Display.h"
#include "platform/ui/windows/EventSource.h"
#include "platform/ui/windows/MainLoop.h"

namespace platform {

namespace {

// What Qt itself says, as in its colour and file dialogs, is said in the first of the user's languages
// that Qt knows. A host that makes the application sees to that itself.
void TranslateQt(QApplication& application) {
    auto translator = std::make_unique<QTranslator>();
    QString const folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    for (std::string const& language : UserLanguages()) {
        if (translator->load(QStringLiteral("qtbase_") + QString::fromStdString(language),
                             folder)) {
            translator->setParent(&application);
            QCoreApplication::installTranslator(translator.release());
            return;
        }
    }
}

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
    static QApplication& application = *new QApplication(count, arguments.data());
    TranslateQt(application);
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
