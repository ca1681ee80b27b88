// SPDX-License-Identifier: BSD-3-Clause
// How events of Qt's become events of class and kind, and end with the widgets after all.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include <QPointer>
#include <QWidget>
#include <Qt>
#include <QtGlobal>

#include "platform/Events.h"

class QEvent;
class QFocusEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace platform {

class Control;
class UIObject;
class Window;

// Where handlers are called from Qt's loop: no exception of theirs goes on into the loop, which would
// not survive it.
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

// The name of the Qt platform to open, as in QT_QPA_PLATFORM; empty when none can be opened. Qt ends the
// process when it is asked to open one and cannot, so it is looked at first.
std::string FindDisplayPlatform();

// The filter that sees every event of the application and looks only at those of widgets in our
// windows. The application's.
QObject* MakeEventSource(QObject& application);

// The last handler of an object's chain: what the platform itself does with what nobody else took.
// For a new object, before any other handler.
void InstallStandardHandler(const UIObject& object);

// An event of Qt's while the handlers of a chain have the event that was made of it. The chain's end
// gives it to the widget, from inside, so that a handler sees on return what the widget did.
class Passage {
public:
    Passage(QWidget& receiver, QEvent& event, EventRef made);
    Passage(const Passage&) = delete;
    Passage& operator=(const Passage&) = delete;
    ~Passage();

    // Null for an event that was not made of one of Qt's.
    static Passage* Of(EventRef made);
    // Whether a widget is just being given the event, or the copy of it that Qt makes for the widgets
    // around: it is not turned again.
    static bool IsFeeding(const QEvent& event);

    QWidget* Receiver() const { return m_receiver; } // null when gone
    QEvent& Event() const { return m_event; }
    // Gives it to the widget, and to those around it while they ignore it; once.
    void Feed();
    bool WasFed() const { return m_fed; }

private:
    QPointer<QWidget> m_receiver;
    QEvent& m_event;
    EventRef m_made;
    Passage* m_outer;
    bool m_fed = false;
    bool m_feeding = false;
};

// What becomes of a key, the mouse, the wheel and the focus. They give whether the event was dealt with;
// else the widget gets it. The window may be gone afterwards.
bool TurnKey(Window& window, QWidget& receiver, QKeyEvent& key);
bool TurnMouse(Window& window, QWidget& receiver, QMouseEvent& mouse);
bool TurnWheel(Window& window, QWidget& receiver, QWheelEvent& wheel);
bool TurnFocus(Window& window, QWidget& receiver, QFocusEvent& event);
// The end of a window's chain, for a key.
OSStatus HandleKey(Window& window, EventRef event);
// Clicks the control when it is a button and enabled; gives whether it was one.
bool PressButton(const Control* control);

// Keys and modifiers as the handlers know them.
struct KeyCodes {
    std::uint32_t keyCode; // a virtual key code
    std::int16_t charCode; // as a key filter gets it; 0: the key neither types nor moves
};
KeyCodes TranslateKey(const QKeyEvent& key);
bool IsModifierKey(int key); // of Qt::Key
std::uint32_t TranslateModifiers(Qt::KeyboardModifiers modifiers);

} // namespace platform
