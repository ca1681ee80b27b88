// SPDX-License-Identifier: BSD-3-Clause
// The one application of the process: the host's, or, where the host has none, ours; and what Qt's loop
// does for this layer, whichever of its loops is running.
#include <array>
#include <memory>
#include <string>
#include <utility>

#include <QApplication>
#include <QEvent>
#include <QLibraryInfo>
#include <QPointer>
#include <QThread>
#include <QTranslator>

#include "platform/Languages.h"
#include "platform/ui/Windows.h"
#include "platform/ui/windows/Input.h"

namespace platform {

namespace {

// What Qt itself says, as in its colour and file dialogs, is said in the first of the user's languages
// that Qt knows. A host that makes the application sees to that itself.
void TranslateQt(QApplication& application) {
    auto translator = std::make_unique<QTranslator>();
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    for (const std::string& language : UserLanguages()) {
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

// Delivers the main queue. A handler may run a loop of its own at any time, so whatever comes next is
// arranged before a handler is called, not after. One for each application, which it ends with.
class MainLoop : public QObject {
public:
    explicit MainLoop(QObject& application) : QObject(&application) {
        // Posted by any thread, and never taken back.
        SetMainQueueWakeUp([this] { QCoreApplication::postEvent(this, new QEvent(WakeUp())); });
        // What was posted before there was a loop.
        QCoreApplication::postEvent(this, new QEvent(WakeUp()));
    }
    ~MainLoop() override { SetMainQueueWakeUp({}); }

protected:
    bool event(QEvent* event) override {
        if (event->type() != WakeUp() && event->type() != Continue())
            return QObject::event(event);
        if (event->type() == Continue())
            m_continues = false;
        DeliverNext();
        return true;
    }

private:
    // The queue got its first event.
    static QEvent::Type WakeUp() {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }
    // There may be more in the queue.
    static QEvent::Type Continue() {
        static const int type = QEvent::registerEventType();
        return static_cast<QEvent::Type>(type);
    }

    void DeliverNext() {
        if (!std::exchange(m_continues, true))
            QCoreApplication::postEvent(this, new QEvent(Continue()));
        bool delivered = true;
        Guarded([&delivered] { delivered = DeliverNextEvent(); });
        if (delivered)
            return;
        QCoreApplication::removePostedEvents(this, Continue());
        m_continues = false;
    }

    bool m_continues = false; // a step to deliver the next event is posted
};

std::function<void()>& InstalledBeep() {
    static auto& beep = *new std::function<void()>;
    return beep;
}

} // namespace

bool EnsureUserInterface() {
    if (!QCoreApplication::instance() && !MakeApplication())
        return false;
    // A host's application may be one without widgets, and this another thread than its.
    auto* const application = dynamic_cast<QApplication*>(QCoreApplication::instance());
    if (!application || application->thread() != QThread::currentThread())
        return false;
    static QPointer<MainLoop> loop;
    if (!loop) {
        loop = new MainLoop(*application);
        application->installEventFilter(MakeEventSource(*application));
    }
    return true;
}

void SysBeep(std::int16_t /*duration*/) {
    if (const std::function<void()> beep = InstalledBeep())
        beep();
    else if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        QApplication::beep();
}

void SetBeep(std::function<void()> beep) {
    InstalledBeep() = std::move(beep);
}

} // namespace platform
