// SPDX-License-Identifier: BSD-3-Clause
// What is not there yet.
#include "platform/ui/UIObject.h"
#include "platform/ui/WindowWidget.h"
#include "platform/ui/windows/WindowGroups.h"

namespace platform {

OSStatus CreateNibReference(CFStringRef, IBNibRef*) { return kErrInvalidWindow; }
OSStatus CreateNibReferenceWithCFBundle(CFBundleRef, CFStringRef, IBNibRef*) { return kErrInvalidWindow; }
void DisposeNibReference(IBNibRef) {  }
OSStatus CreateWindowFromNib(IBNibRef, CFStringRef, WindowRef*) { return kErrInvalidWindow; }
OSStatus CreateNewWindow(const Rect&, WindowRef*) { return kErrInvalidWindow; }
void DisposeWindow(WindowRef) {  }
bool IsValidWindowPtr(WindowRef) { return false; }
EventTargetRef GetWindowEventTarget(WindowRef) { return nullptr; }
OSStatus ShowWindow(WindowRef) { return kErrInvalidWindow; }
OSStatus HideWindow(WindowRef) { return kErrInvalidWindow; }
bool IsWindowVisible(WindowRef) { return false; }
OSStatus SelectWindow(WindowRef) { return kErrInvalidWindow; }
OSStatus BringToFront(WindowRef) { return kErrInvalidWindow; }
bool IsWindowActive(WindowRef) { return false; }
WindowRef FrontNonFloatingWindow() { return nullptr; }
OSStatus MoveWindow(WindowRef, std::int16_t, std::int16_t, bool) { return kErrInvalidWindow; }
OSStatus SizeWindow(WindowRef, std::int16_t, std::int16_t) { return kErrInvalidWindow; }
OSStatus GetWindowContentBounds(WindowRef, Rect*) { return kErrInvalidWindow; }
OSStatus RepositionWindow(WindowRef, WindowRef, std::uint32_t) { return kErrInvalidWindow; }
OSStatus SetWindowTitleWithCFString(WindowRef, CFStringRef) { return kErrInvalidWindow; }
OSStatus CopyWindowTitleAsCFString(WindowRef, CFStringRef*) { return kErrInvalidWindow; }
OSStatus GetWindowAttributes(WindowRef, std::uint32_t*) { return kErrInvalidWindow; }
OSStatus ChangeWindowAttributes(WindowRef, std::uint32_t, std::uint32_t) { return kErrInvalidWindow; }
OSStatus SetWindowActivationScope(WindowRef, std::uint32_t) { return kErrInvalidWindow; }
OSStatus SetWindowModality(WindowRef, std::uint32_t, WindowRef) { return kErrInvalidWindow; }
OSStatus SetWindowProperty(WindowRef, OSType, OSType, std::uint32_t, const void*) { return kErrInvalidWindow; }
OSStatus GetWindowProperty(WindowRef, OSType, OSType, std::uint32_t, std::uint32_t*, void*) { return kErrInvalidWindow; }
OSStatus RemoveWindowProperty(WindowRef, OSType, OSType) { return kErrInvalidWindow; }
OSStatus InvalWindowRect(WindowRef, const Rect*) { return kErrInvalidWindow; }
bool IsWindowBuffered(WindowRef) { return false; }
OSStatus FlushWindowBuffer(WindowRef, const Rect*) { return kErrInvalidWindow; }
OSStatus SetWindowDefaultButton(WindowRef, ControlRef) { return kErrInvalidWindow; }
OSStatus SetWindowCancelButton(WindowRef, ControlRef) { return kErrInvalidWindow; }
OSStatus GetWindowDefaultButton(WindowRef, ControlRef*) { return kErrInvalidWindow; }
OSStatus GetWindowCancelButton(WindowRef, ControlRef*) { return kErrInvalidWindow; }
OSStatus CreateWindowGroup(std::uint32_t, WindowGroupRef*) { return kErrInvalidWindow; }
OSStatus ReleaseWindowGroup(WindowGroupRef) { return kErrInvalidWindow; }
WindowGroupRef GetWindowGroupOfClass(std::uint32_t) { return nullptr; }
WindowGroupRef GetWindowGroup(WindowRef) { return nullptr; }
OSStatus SetWindowGroup(WindowRef, WindowGroupRef) { return kErrInvalidWindow; }
OSStatus SetWindowGroupParent(WindowGroupRef, WindowGroupRef) { return kErrInvalidWindow; }
OSStatus SetUserFocusWindow(WindowRef) { return kErrInvalidWindow; }
OSStatus GetKeyboardFocus(WindowRef, ControlRef*) { return kErrInvalidWindow; }
OSStatus SetKeyboardFocus(WindowRef, ControlRef, std::int16_t) { return kErrInvalidWindow; }
OSStatus RunAppModalLoopForWindow(WindowRef) { return kErrInvalidWindow; }
OSStatus QuitAppModalLoopForWindow(WindowRef) { return kErrInvalidWindow; }
OSStatus TrackMouseLocation(WindowRef, EventTime, Point*, MouseTracking*) { return kErrInvalidWindow; }
void GetGlobalMouse(Point*) {  }
bool Button() { return false; }
OSStatus GlobalToWindow(WindowRef, Point*) { return kErrInvalidWindow; }
OSStatus WindowToGlobal(WindowRef, Point*) { return kErrInvalidWindow; }
void SysBeep(std::int16_t) {  }
void SetBeep(std::function<void()>) {  }

bool EnsureUserInterface() { return false; }
void LeaveWindowGroup(Window&) {}
void ReleaseWindowsOver(Window&) {}

} // namespace platform
