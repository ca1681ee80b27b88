// SPDX-License-Identifier: BSD-3-Clause
// Windows: made from forms or bare, shown, moved, run modally, grouped. A window is a real widget; a
// host may embed it in one of its own (see WindowWidget.h), and it stays a window in the sense of
// this header.
//
// User-interface thread only. A reference to a window that is gone gives kErrInvalidWindow (getters:
// null, 0 or false), never a crash. Coordinates are in pixels of the user's scaling, so that 10 is
// the same size on every screen; "global" ones are those of the desktop.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/Commands.h"
#include "platform/CoreFoundation.h"
#include "platform/Drawing.h"

namespace platform {

inline constexpr OSStatus kErrInvalidWindow = -5600;
inline constexpr OSStatus kErrUnsupportedModality = -5614;
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

// Forms
// -----------------------------------------------------------------------------------------------

struct OpaqueNib;
using IBNibRef = OpaqueNib*;
// A nib is the folder <name>.nib of a bundle's resources; its windows are the forms <window>.ui in
// it. Texts of a form that start with "IDS_" are keys of the bundle's string table.
OSStatus CreateNibReference(CFStringRef name, IBNibRef* nib); // in the main bundle
OSStatus CreateNibReferenceWithCFBundle(CFBundleRef bundle, CFStringRef name, IBNibRef* nib);
void DisposeNibReference(IBNibRef nib);
// Makes the hidden window with its controls; on failure *window is null. Its widgets with the
// dynamic property controlID (a number; controlSignature defaults to "VELM") become controls, with
// commandID (a number, or four characters such as "ok  ") as their command. A push button whose
// commandID is "ok  " is the default button, "not!" the cancel button.
OSStatus CreateWindowFromNib(IBNibRef nib, CFStringRef name, WindowRef* window);

// Windows
// ---------------------------------------------------------------------------------------------

OSStatus CreateNewWindow(const Rect& contentBounds, WindowRef* window); // hidden, without controls
// Sends the closed event ('wind', 73), ends its controls and handlers. Allowed from inside any of
// its own handlers and modal runs.
void DisposeWindow(WindowRef window);
bool IsValidWindowPtr(WindowRef window);
EventTargetRef GetWindowEventTarget(WindowRef window); // null when gone
EventTargetRef GetHIObjectEventTarget(HIObjectRef object);

OSStatus ShowWindow(WindowRef window);
OSStatus HideWindow(WindowRef window);
bool IsWindowVisible(WindowRef window);
OSStatus SelectWindow(WindowRef window); // to the front, and active
OSStatus BringToFront(WindowRef window);
bool IsWindowActive(WindowRef window);
WindowRef FrontNonFloatingWindow(); // null when this process shows none
// Puts the content's top left there.
OSStatus MoveWindow(WindowRef window, std::int16_t left, std::int16_t top, bool front);
OSStatus SizeWindow(WindowRef window, std::int16_t width, std::int16_t height);
OSStatus GetWindowContentBounds(WindowRef window, Rect* global);
// method 1: centred on the main screen, or on parent.
OSStatus RepositionWindow(WindowRef window, WindowRef parent, std::uint32_t method);
inline constexpr std::uint32_t kWindowCenterOnMainScreen = 1;
OSStatus SetWindowTitleWithCFString(WindowRef window, CFStringRef title);
OSStatus CopyWindowTitleAsCFString(WindowRef window, CFStringRef* title);

inline constexpr std::uint32_t kWindowCloseBoxAttribute = 0x1;
inline constexpr std::uint32_t kWindowCollapseBoxAttribute = 0x8;
inline constexpr std::uint32_t kWindowIgnoreClicksAttribute = 0x20000000;
inline constexpr std::uint32_t kWindowNoActivatesAttribute = 0x20000;
inline constexpr std::uint32_t kWindowHasNoTitleBarAttribute = 0x200000;
OSStatus GetWindowAttributes(WindowRef window, std::uint32_t* attributes);
OSStatus ChangeWindowAttributes(WindowRef window, std::uint32_t set, std::uint32_t clear);
OSStatus SetWindowActivationScope(WindowRef window, std::uint32_t scope);
inline constexpr std::uint32_t kWindowModalityNone = 0;
inline constexpr std::uint32_t kWindowModalitySystemModal = 1;
inline constexpr std::uint32_t kWindowModalityAppModal = 2;
inline constexpr std::uint32_t kWindowModalityWindowModal = 3;
OSStatus SetWindowModality(WindowRef window, std::uint32_t modality, WindowRef parent);

// An object that others leave with a window; null when there is none.
void SetWindowProperty(WindowRef window, OSType creator, OSType tag, void* value);
void* GetWindowProperty(WindowRef window, OSType creator, OSType tag);

// What handlers draw in the part (local; null: all) is drawn again when the loop gets to it. Other
// controls see to that themselves.
OSStatus InvalWindowRect(WindowRef window, const Rect* part);
bool IsWindowBuffered(WindowRef window);
// Shows at once what is drawn in the part (local; null: all).
OSStatus FlushWindowBuffer(WindowRef window, const Rect* part);

// Return and Enter press the default button, Escape the cancel button, unless a handler of the
// window or the focused control took the key. Null: none.
OSStatus SetWindowDefaultButton(WindowRef window, ControlRef button);
OSStatus SetWindowCancelButton(WindowRef window, ControlRef button);
OSStatus GetWindowDefaultButton(WindowRef window, ControlRef* button);
OSStatus GetWindowCancelButton(WindowRef window, ControlRef* button);

// Groups: windows of one group with kWindowGroupAttrMoveTogether and ...LayerTogether lie over the
// group's first window, move and layer with it, and are usable while it runs modally.
struct OpaqueWindowGroup;
using WindowGroupRef = OpaqueWindowGroup*;
inline constexpr std::uint32_t kWindowGroupAttrSelectAsLayer = 0x1;
inline constexpr std::uint32_t kWindowGroupAttrMoveTogether = 0x2;
inline constexpr std::uint32_t kWindowGroupAttrLayerTogether = 0x4;
inline constexpr std::uint32_t kWindowGroupAttrSharedActivation = 0x8;
inline constexpr std::uint32_t kWindowGroupAttrHideOnCollapse = 0x10;
OSStatus CreateWindowGroup(std::uint32_t attributes, WindowGroupRef* group);
OSStatus ReleaseWindowGroup(WindowGroupRef group);               // its windows stay where they are
WindowGroupRef GetWindowGroupOfClass(std::uint32_t windowClass); // 4: movable modal
WindowGroupRef GetWindowGroup(WindowRef window);
OSStatus SetWindowGroup(WindowRef window, WindowGroupRef group);
OSStatus SetWindowGroupParent(WindowGroupRef group, WindowGroupRef parent);

// Focus
// -----------------------------------------------------------------------------------------------

OSStatus SetUserFocusWindow(WindowRef window); // kUserFocusAuto: the platform chooses
// NOLINTNEXTLINE(performance-no-int-to-ptr): a number, which nobody looks behind.
inline const WindowRef kUserFocusAuto = reinterpret_cast<WindowRef>(std::intptr_t { -1 });
OSStatus GetKeyboardFocus(WindowRef window, ControlRef* control); // null: no control has it
// part 0 takes the focus away. Fires what a click into the control would fire.
OSStatus SetKeyboardFocus(WindowRef window, ControlRef control, std::int16_t part);

// Modal runs
// ------------------------------------------------------------------------------------------

// Returns when QuitAppModalLoopForWindow was called for the window or the window is gone. The other
// windows of the process do not react meanwhile, but for the window's group. Runs nest. Events of
// the main queue and timers are delivered.
OSStatus RunAppModalLoopForWindow(WindowRef window);
OSStatus QuitAppModalLoopForWindow(WindowRef window);

// Events of a window. Class 'wind'; each has the window as direct object ("----", 'wind').
inline constexpr OSType kEventClassWindow = 0x77696E64; // "wind"
inline constexpr OSType kTypeWindowRef = 0x77696E64;    // "wind"
inline constexpr std::uint32_t kEventWindowActivated = 5;
inline constexpr std::uint32_t kEventWindowDeactivated = 6;
inline constexpr std::uint32_t kEventWindowShown = 24;
inline constexpr std::uint32_t kEventWindowHidden = 25;
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
inline constexpr std::uint32_t kAlphaLock = 0x400;
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

// The mouse
// -------------------------------------------------------------------------------------------

enum class MouseTracking : std::uint16_t {
    kMouseDown = 1,
    kMouseUp = 2,
    kMouseDragged = 5,
    kKeyModifiersChanged = 6,
    kUserCancelled = 7, // the window is gone, or something else took the mouse
    kTimedOut = 8,
    kMouseMoved = 9,
};
// Waits for the mouse to do something, with a loop of its own; timeout in seconds, below 0 means for
// ever. where is global. Gives kUserCancelled at once when no button of the mouse is down any more
// and its release was reported already.
OSStatus TrackMouseLocation(WindowRef window, EventTime timeout, Point* where,
                            MouseTracking* result);
void GetGlobalMouse(Point* where);
bool Button(); // the main button is down
OSStatus GlobalToWindow(WindowRef window, Point* point);
OSStatus WindowToGlobal(WindowRef window, Point* point);

// The user's attention: the platform's beep, or what SetBeep installs (empty: the platform's).
void SysBeep(std::int16_t duration);
void SetBeep(std::function<void()> beep);

} // namespace platform
