// SPDX-License-Identifier: BSD-3-Clause
// Windows: made from forms or bare, shown, moved, run modally, grouped. A window is a real widget; a
// host may embed it in one of its own, and it stays a window in the sense of this header.
//
// User-interface thread only. A WindowRef is kept, a Window is found for a use: any event may end it.
// Coordinates are in pixels of the user's scaling, so that 10 is the same size on every screen;
// "global" ones are those of the desktop.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/CoreFoundation.h"
#include "platform/Drawing.h"
#include "platform/ui/UIObject.h"

class QEventLoop;
class QWidget;

namespace platform {

class Control;
class WindowGroup;

inline constexpr OSStatus kErrInvalidWindow = -5600;
inline constexpr OSStatus kErrNoUserInterface = -4960; // neither a display nor an application
inline constexpr OSStatus kErrCantFindNib = -10960;
inline constexpr OSStatus kErrCantFindWindow = -10962; // the nib has no form of the name
inline constexpr OSStatus kErrNibBroken = -10964;      // the form cannot be read

struct Point {
    std::int16_t v, h;
};
// The type of mouse locations in events: two of them as "hipt".
struct HIPoint {
    float x, y;
};
inline constexpr OSType kTypeHIPoint = 0x68697074; // "hipt"

enum class MouseTracking : std::uint16_t {
    kMouseDown = 1,
    kMouseUp = 2,
    kMouseDragged = 5,
    kKeyModifiersChanged = 6,
    kUserCancelled = 7, // the window is gone, or something else took the mouse
    kTimedOut = 8,
    kMouseMoved = 9,
};

inline constexpr std::uint32_t kWindowCloseBoxAttribute = 0x1;
inline constexpr std::uint32_t kWindowCollapseBoxAttribute = 0x8;
inline constexpr std::uint32_t kWindowHasNoTitleBarAttribute = 0x200000;

inline constexpr std::uint32_t kWindowModalityNone = 0;
inline constexpr std::uint32_t kWindowModalityAppModal = 2;
inline constexpr std::uint32_t kWindowModalityWindowModal = 3;

// What a WindowRef means: a widget, with which it ends, whoever deletes that. Whatever sends events
// (showing, moving, focus, runs) may end it.
class Window final : public UIObject {
public:
    // Null when it is gone.
    static Window* Find(WindowRef window) {
        return static_cast<Window*>(UIObject::Find(window, ObjectKind::kWindow));
    }
    // The window that a widget lies in, which may itself be embedded in another; null for a widget of
    // the host.
    static Window* Of(const QWidget* widget);
    // The window of the widget itself alone.
    static Window* At(const QWidget* widget);
    // Hidden, without controls; null without a user interface.
    static WindowRef Create(const Rect& contentBounds);
    explicit Window(QWidget& widget);
    ~Window() override;
    WindowRef Ref() const { return As<WindowRef>(); }
    // A host may put it into a layout of its own (it reparents like any widget) and shows it with
    // Show. It belongs to the window: deleting it, or the widget around it, disposes the window.
    QWidget& Widget() const { return *m_widget; }
    // Sends the closed event ('wind', 73), ends its controls and handlers. Allowed from inside any of
    // its own handlers and modal runs.
    void Dispose();

    void Show();
    void Hide();
    bool IsVisible() const;
    void BringToFront();
    // Puts the content's top left there.
    void MoveTo(std::int16_t left, std::int16_t top);
    void Resize(std::int16_t width, std::int16_t height);
    void CenterOnMainScreen();
    Rect ContentBounds() const; // global
    Point ToLocal(Point global) const;
    Point ToGlobal(Point local) const;
    void SetTitle(std::string_view utf8);

    std::uint32_t Attributes() const { return m_attributes; }
    void ChangeAttributes(std::uint32_t set, std::uint32_t clear);
    // Scope 0: showing it does not activate it. 1 and 2: it may have the keyboard, or all of it.
    void SetActivationScope(std::uint32_t scope);
    // over: the window that it lies over; null: whatever is there.
    void SetModality(std::uint32_t modality, const Window* over);

    // What handlers draw in the part (local; null: all) is drawn again when the loop gets to it. Other
    // controls see to that themselves.
    void Invalidate(const Rect* part);
    // Shows at once what is drawn already.
    void Flush();

    // Return and Enter press the default button, Escape the cancel button, unless a handler of the
    // window or the focused control took the key. Null: none.
    Control* DefaultButton() const;
    Control* CancelButton() const;
    void SetDefaultButton(Control* button);
    void SetCancelButton(Control* button);

    void TakeUserFocus();
    Control* KeyboardFocus() const; // null: no control has it
    // Fires what a click into the control would fire. Null takes the focus away from the control that
    // has it. False: it cannot have it, or is another window's.
    bool SetKeyboardFocus(const Control* control);

    // Returns when QuitModal was called or the window is gone. The other windows of the process do
    // not react meanwhile, but for the window's group. Runs nest; a window has one at a time. Events
    // of the main queue are delivered.
    void RunModal();
    void QuitModal();

    // Waits for the mouse to do something, with a loop of its own; timeout in seconds, below 0 means
    // for ever. where is global. Gives kUserCancelled at once when no button of the mouse is down any
    // more and its release was reported already.
    MouseTracking TrackMouse(EventTime timeout, Point* where);

    // What follows is this layer's own business ---------------------------------------------------

    // Sends an event of class 'wind'. The window may be gone afterwards.
    OSStatus Send(std::uint32_t kind) const;
    // It was moved or resized. The event follows when the widget is through with it: Qt does not
    // expect the widget to go in the middle.
    void NoticeBounds();
    void TellOfActivation(bool active);

    WindowGroup* group = nullptr;
    bool liesOverGroup = false;       // a child of the widget of its group's first window
    std::uint64_t lastActivation = 0; // counts up; 0: never
    ControlRef toldOfFocus = nullptr; // the control that was last told that it has the focus

private:
    void End();
    void SendBounds();
    void ApplyAttributes(std::uint32_t changed);
    void ApplyOwnModality();
    void ShowWithModality(int modality);
    void ReleaseWindowsOver() const;
    // Tells the controls that the focus moves to one of them (null: to none), where no widget says
    // so: in a window that is not active.
    void TellFocus(const Control* control);
    // Does it when the loop gets to it, unless the window has gone by then.
    void Later(void (Window::*act)());

    QWidget* m_widget;
    ControlRef m_defaultButton = nullptr;
    ControlRef m_cancelButton = nullptr;
    QEventLoop* m_modalLoop = nullptr; // while it runs modally
    std::uint32_t m_attributes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
    std::uint32_t m_modality = kWindowModalityNone;
    bool m_isQuiet = false; // being shown or hidden is not the user's doing now
    bool m_ending = false;
    bool m_boundsNoticed = false; // and not told yet
};

// Makes the hidden window of a form with its controls; on failure *window is null. The form is the file
// <window>.ui in the folder <nib>.nib of the bundle's resources. Its texts that start with "IDS_" are
// keys of the bundle's string table. Its widgets with the dynamic property controlID (a number;
// controlSignature defaults to "VELM") become controls, with commandID (a number, or four characters
// such as "ok  ") as their command. A push button whose commandID is "ok  " is the default button,
// "not!" the cancel button.
OSStatus CreateWindowFromNib(CFBundleRef bundle, std::string_view nib, std::string_view name,
                             WindowRef* window);

Window* FrontWindow(); // null when this process shows none
// Gives the front window the keyboard, unless one has it.
void FocusFrontWindow();

// Windows of one group with both of the attributes here lie over the group's first window, move and
// layer with it, and are usable while it runs modally. They stay where they are when it ends.
class WindowGroup {
public:
    static constexpr std::uint32_t kMoveTogether = 0x2;
    static constexpr std::uint32_t kLayerTogether = 0x4;

    explicit WindowGroup(std::uint32_t attributes);
    WindowGroup(const WindowGroup&) = delete;
    WindowGroup& operator=(const WindowGroup&) = delete;
    ~WindowGroup();

    void Add(Window& window); // from the group that it was in
    void Remove(Window& window);
    // That of the process for a class of windows; 4: movable modal.
    static WindowGroup& OfClass(std::uint32_t windowClass);

private:
    std::uint32_t m_attributes;
    std::vector<Window*> m_windows; // as they came; the first one carries the others
};

// Events of a window. Class 'wind'; each has the window as direct object ("----", 'wind').
inline constexpr OSType kEventClassWindow = 0x77696E64; // "wind"
inline constexpr OSType kTypeWindowRef = 0x77696E64;    // "wind"
inline constexpr std::uint32_t kEventWindowBoundsChanged = 27;
// The user wants it closed. Unhandled: presses the cancel button, or, without one, disposes it.
inline constexpr std::uint32_t kEventWindowClose = 72;
inline constexpr std::uint32_t kEventWindowClosed = 73; // it is being disposed
inline constexpr std::uint32_t kEventWindowFocusAcquired = 200;
inline constexpr std::uint32_t kEventWindowFocusRelinquish = 201;

// Keys go to the window's chain first ('keyb' 1 with "kcod"/'magn', "kchr"/'TEXT' (one byte),
// "kmod"/'magn'), then to the focused control's, then to the default and cancel buttons, then to
// the widget. Calling the next handler runs all of these.
inline constexpr OSType kEventClassKeyboard = 0x6B657962; // "keyb"
inline constexpr std::uint32_t kEventRawKeyDown = 1;
inline constexpr std::uint32_t kEventRawKeyRepeat = 2;
inline constexpr std::uint32_t kEventRawKeyUp = 3;
inline constexpr OSType kEventParamKeyCode = 0x6B636F64;         // "kcod"
inline constexpr OSType kEventParamKeyMacCharCodes = 0x6B636872; // "kchr"
inline constexpr OSType kTypeChar = 0x54455854;                  // "TEXT"
inline constexpr std::uint32_t kVirtualKeyReturn = 36;
inline constexpr std::uint32_t kVirtualKeyEnter = 76;
inline constexpr std::uint32_t kVirtualKeyEscape = 53;
inline constexpr std::uint32_t kVirtualKeyTab = 48;
inline constexpr std::uint32_t kVirtualKeySpace = 49;
inline constexpr std::uint32_t kVirtualKeyBackspace = 51;
inline constexpr std::uint32_t kVirtualKeyForwardDelete = 117;
inline constexpr std::uint32_t kVirtualKeyHome = 115;
inline constexpr std::uint32_t kVirtualKeyEnd = 119;
inline constexpr std::uint32_t kVirtualKeyPageUp = 116;
inline constexpr std::uint32_t kVirtualKeyPageDown = 121;
inline constexpr std::uint32_t kVirtualKeyLeft = 123;
inline constexpr std::uint32_t kVirtualKeyRight = 124;
inline constexpr std::uint32_t kVirtualKeyDown = 125;
inline constexpr std::uint32_t kVirtualKeyUp = 126;
inline constexpr std::uint32_t kVirtualKeyOther = 0xFFFF; // a key that only types a character
// Modifier bits of "kmod" and GetCurrentEventKeyModifiers.
inline constexpr std::uint32_t kCmdKey = 0x100; // Control on Linux
inline constexpr std::uint32_t kShiftKey = 0x200;
inline constexpr std::uint32_t kOptionKey = 0x800;   // Alt
inline constexpr std::uint32_t kControlKey = 0x1000; // Meta

// The mouse over a window: to the window's chain, with "wmou"/'hipt' (in the window), "mloc"/'hipt'
// (global), "kmod". Unhandled ones go on to the widget.
inline constexpr OSType kEventClassMouse = 0x6D6F7573; // "mous"
inline constexpr std::uint32_t kEventMouseDown = 1;
inline constexpr std::uint32_t kEventMouseUp = 2;
inline constexpr std::uint32_t kEventMouseMoved = 5;
inline constexpr std::uint32_t kEventMouseDragged = 6;
inline constexpr std::uint32_t kEventMouseWheelMoved = 10;     // with "mwdl"/'long': notches up
inline constexpr OSType kEventParamMouseLocation = 0x6D6C6F63; // "mloc"
inline constexpr OSType kEventParamWindowMouseLocation = 0x776D6F75; // "wmou"
inline constexpr OSType kEventParamMouseWheelDelta = 0x6D77646C;     // "mwdl"

Point GetGlobalMouse();
bool Button(); // the main button of the mouse is down

// The user's attention: the platform's beep, or what SetBeep installs (empty: the platform's).
void SysBeep(std::int16_t duration);
void SetBeep(std::function<void()> beep);

} // namespace platform
