// SPDX-License-Identifier: BSD-3-Clause
// Brings calls from other threads to the thread that made it.
#pragma once

#include <functional>
#include <utility>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

namespace studio {

// What is still on its way when it ends is never called.
class Mailbox : public QObject {
public:
    // Any thread. Called from the event loop of this one's.
    void Post(std::function<void()> call) {
        QCoreApplication::postEvent(this, new Letter(std::move(call)));
    }

protected:
    void customEvent(QEvent* event) override { static_cast<Letter*>(event)->call(); }

private:
    struct Letter : QEvent {
        explicit Letter(std::function<void()> what) : QEvent(QEvent::User), call(std::move(what)) {}
        std::function<void()> call;
    };
};

} // namespace studio
