// SPDX-License-Identifier: BSD-3-Clause
// Controls: found by id in a window, with values, data by tag, focus and drawing. Each is a real
// widget; what it can do follows from the widget's class in the form:
//
//   QPushButton                    push button
//   QCheckBox, QRadioButton        value 0 or 1
//   RadioGroup (also made by call) value: which of its radio buttons, from 1; 0 none
//   QLineEdit, QPlainTextEdit      edit fields, one line and several; a read-only QPlainTextEdit is
//                                  the scrolling text
//   QLabel                         static text
//   Stepper                        two small arrows with value, minimum and maximum
//   ColorButton                    a button that shows a colour
//   PopupButton                    a menu; value: the picked item, from 1; 0 none (see Menus.h)
//   ListView                       rows with in-place editing (see DataBrowser.h)
//   UserPane                       drawn and tracked by its handlers alone
//
// User-interface thread only. A reference to a control that is gone gives kErrInvalidControl
// (getters: null, 0 or false).
#pragma once

#include <cstdint>

#include "platform/ui/Windows.h"

namespace platform {

inline constexpr OSStatus kErrInvalidControl = -30585;
inline constexpr OSStatus kErrControlNotFound = -30584;
inline constexpr OSStatus kErrDataNotSupported = -30581;
inline constexpr OSStatus kErrDataSize = -30583;
inline constexpr OSStatus kErrCouldNotFocus = -30594;

struct ControlID {
    OSType signature;
    std::int32_t id;
    bool operator==(const ControlID&) const = default;
};
using ControlPartCode = std::int16_t;
inline constexpr ControlPartCode kControlNoPart = 0;
inline constexpr ControlPartCode kControlEntireControl = 0;
inline constexpr ControlPartCode kControlEditTextPart = 5;
inline constexpr ControlPartCode kControlButtonPart = 10;
inline constexpr ControlPartCode kControlCheckBoxPart = 11;
inline constexpr ControlPartCode kControlRadioButtonPart = 11;
inline constexpr ControlPartCode kControlMenuPart = 2;
inline constexpr ControlPartCode kControlListBoxPart = 24;
inline constexpr ControlPartCode kControlUpButtonPart = 20;
inline constexpr ControlPartCode kControlDownButtonPart = 21;

// Making and finding ----------------------------------------------------------------------------

OSStatus GetControlByID(WindowRef window, const ControlID& id, ControlRef* control);
// Made at the place within the window (local), visible and enabled, without id and command.
OSStatus CreatePushButtonControl(WindowRef window, const Rect& bounds, CFStringRef title,
                                 ControlRef* control);
OSStatus CreateEditTextControl(WindowRef window, const Rect& bounds, CFStringRef text,
                               bool severalLines, ControlRef* control);
// Not visible itself; radio buttons that are embedded in it exclude each other.
OSStatus CreateRadioGroupControl(WindowRef window, const Rect& bounds, ControlRef* control);
OSStatus CreateUserPaneControl(WindowRef window, const Rect& bounds, ControlRef* control);
// Sends the disposed event ('cntl', 1001); allowed from inside its own handlers.
OSStatus DisposeControl(ControlRef control);
bool IsValidControlHandle(ControlRef control);
EventTargetRef GetControlEventTarget(ControlRef control); // its commands go on to the window's
WindowRef GetControlOwner(ControlRef control);

OSStatus SetControlID(ControlRef control, const ControlID& id);
OSStatus GetControlID(ControlRef control, ControlID* id); // kErrControlNotFound when it has none
OSStatus SetControlCommandID(ControlRef control, std::uint32_t commandID);
OSStatus GetControlCommandID(ControlRef control, std::uint32_t* commandID);
OSStatus SetControlProperty(ControlRef control, OSType creator, OSType tag, std::uint32_t size,
                            const void* data);
OSStatus GetControlProperty(ControlRef control, OSType creator, OSType tag, std::uint32_t size,
                            std::uint32_t* actualSize, void* data);
OSStatus RemoveControlProperty(ControlRef control, OSType creator, OSType tag);

// State -----------------------------------------------------------------------------------------

std::int32_t GetControl32BitValue(ControlRef control);
void SetControl32BitValue(ControlRef control, std::int32_t value); // kept within min and max
std::int32_t GetControl32BitMinimum(ControlRef control);
void SetControl32BitMinimum(ControlRef control, std::int32_t minimum);
std::int32_t GetControl32BitMaximum(ControlRef control);
void SetControl32BitMaximum(ControlRef control, std::int32_t maximum);
OSStatus SetControlTitleWithCFString(ControlRef control, CFStringRef title);
OSStatus CopyControlTitleAsCFString(ControlRef control, CFStringRef* title);

OSStatus EnableControl(ControlRef control);
OSStatus DisableControl(ControlRef control);
bool IsControlEnabled(ControlRef control);      // also false when what it lies in is disabled
OSStatus ActivateControl(ControlRef control);   // looks and reacts as enabled
OSStatus DeactivateControl(ControlRef control); // looks disabled
bool IsControlActive(ControlRef control);
OSStatus SetControlVisibility(ControlRef control, bool visible, bool redraw);
bool IsControlVisible(ControlRef control);

// Local to the window.
Rect* GetControlBounds(ControlRef control, Rect* bounds); // gives bounds
OSStatus SetControlBounds(ControlRef control, const Rect& bounds);
OSStatus MoveControl(ControlRef control, std::int16_t left, std::int16_t top);
OSStatus SizeControl(ControlRef control, std::int16_t width, std::int16_t height);
OSStatus EmbedControl(ControlRef control, ControlRef container);
OSStatus GetSuperControl(ControlRef control, ControlRef* super);
OSStatus CountSubControls(ControlRef control, std::uint16_t* count);
OSStatus GetIndexedSubControl(ControlRef control, std::uint16_t index, ControlRef* sub); // from 1

OSStatus DrawOneControl(ControlRef control);    // now
OSStatus InvalidateControl(ControlRef control); // when the loop gets to it

// Bits of ControlFontStyleRec::flags say which fields count.
struct ControlFontStyleRec {
    std::int16_t flags;
    FontNumber font;
    std::int16_t size; // points
    std::int16_t style;
    std::int16_t mode;
    std::int16_t just;
    RGBColor foreColor;
    RGBColor backColor;
};
inline constexpr std::int16_t kControlUseFontMask = 0x1;
inline constexpr std::int16_t kControlUseFaceMask = 0x2;
inline constexpr std::int16_t kControlUseSizeMask = 0x4;
inline constexpr std::int16_t kControlUseForeColorMask = 0x8;
inline constexpr std::int16_t kControlUseBackColorMask = 0x10;
inline constexpr std::int16_t kControlUseModeMask = 0x20;
inline constexpr std::int16_t kControlUseJustMask = 0x40;
inline constexpr std::int16_t kControlUseAllMask = 0xFF;
OSStatus GetControlFontStyle(ControlRef control, ControlFontStyleRec* style);
OSStatus SetControlFontStyle(ControlRef control, const ControlFontStyleRec& style);
inline constexpr std::uint16_t kControlSizeNormal = 0;
inline constexpr std::uint16_t kControlSizeSmall = 1;
OSStatus SetControlSizeVariant(ControlRef control, std::uint16_t size);
// The palette's colours for text: 1 active dialog text, 2 inactive dialog text.
OSStatus GetThemeTextColor(std::int16_t themeTextColor, RGBColor* color);
inline constexpr std::int16_t kThemeTextColorDialogActive = 1;
inline constexpr std::int16_t kThemeTextColorDialogInactive = 2;

// Data by tag -----------------------------------------------------------------------------------

// size must be that of the tag's type. Getting with a null buffer gives the size alone.
OSStatus SetControlData(ControlRef control, ControlPartCode part, OSType tag, std::uint32_t size,
                        const void* data);
OSStatus GetControlData(ControlRef control, ControlPartCode part, OSType tag, std::uint32_t size,
                        void* data, std::uint32_t* actualSize);

// Text of an edit field, a label or a scrolling text: a CFStringRef, copied in, and out with a count
// for the caller. Lines end with CR. Setting it in a focused field can be undone by the user.
inline constexpr OSType kControlTextCFString = 0x63667374; // "cfst"
// What is selected: ControlEditTextSelection in UTF-16 units; end -1 means to the end.
inline constexpr OSType kControlEditTextSelection = 0x73656C65; // "sele"
struct ControlEditTextSelectionRec {
    std::int16_t start, end;
};
// Which keyboard is offered: an OSType, 'rrmn' Roman or 'any '.
inline constexpr OSType kControlEditTextScript = 0x6B736372; // "kscr"
inline constexpr OSType kScriptRoman = 0x72726D6E;           // "rrmn"
inline constexpr OSType kScriptAny = 0x616E7920;             // "any "
inline constexpr OSType kControlTextReadOnly = 0x5244504D;   // "RDPM": one byte
inline constexpr OSType kControlTextWrap = 0x57524150;       // "WRAP": one byte
// The colour of a ColorButton: an RGBColor.
inline constexpr OSType kControlColor = 0x636F6C72; // "colr"
// Seconds between steps while an arrow of a Stepper is held: a double.
inline constexpr OSType kControlRepeatInterval = 0x72706974; // "rpit"
// The menu of a PopupButton: a MenuRef, lent.
inline constexpr OSType kControlPopupMenu = 0x6D68616E; // "mhan"

// Asked for each key that would type into or move within an edit field, before it does; keys with
// Control, Alt or Meta (clipboard, undo) are not asked about. charCode is the character's code up to
// 127, else -1, and for keys without a character 1 home, 4 end, 8 backspace, 9 tab, 11 page up,
// 12 page down, 13 Return, 3 Enter, 27 escape, 28 left, 29 right, 30 up, 31 down, 127 forward
// delete; keyCode one of kVirtualKey... . Text that an input method composes is not asked about: it
// is validated when it is committed.
using ControlKeyFilterResult = std::int16_t;
inline constexpr ControlKeyFilterResult kControlKeyFilterBlockKey = 0;
inline constexpr ControlKeyFilterResult kControlKeyFilterPassKey = 1;
using ControlKeyFilterProc = ControlKeyFilterResult (*)(ControlRef control, std::int16_t* keyCode,
                                                        std::int16_t* charCode,
                                                        std::uint16_t* modifiers);
inline constexpr OSType kControlKeyFilter = 0x666C7472; // "fltr": a ControlKeyFilterProc
// Called after every change of the text that no key filter was asked about: paste, drop, undo, a
// committed input method, setting the text by call. Not called again for changes that it makes.
using ControlEditTextValidationProc = void (*)(ControlRef control);
inline constexpr OSType kControlValidation = 0x76616C69; // "vali": a ControlEditTextValidationProc

// Events: class 'cntl', with the control as direct object ("----", 'ctrl') ------------------------

inline constexpr OSType kEventClassControl = 0x636E746C; // "cntl"
inline constexpr OSType kTypeControlRef = 0x6374726C;    // "ctrl"
// The user pressed, picked or stepped; "cprt" says the part. Unhandled, the command event follows
// ('cmds' 1 from the control to its target, when it has a command id that is not 0). The control's
// value has changed by then.
inline constexpr std::uint32_t kEventControlHit = 1;
inline constexpr std::uint32_t kEventControlHitTest = 3; // "mloc" in; "cprt" out
// The current port is the control's own, of its size, from (0, 0).
inline constexpr std::uint32_t kEventControlDraw = 4;
// The focus comes ("cprt" not 0) or goes (0); "cfev"/'bool' is 0. Calling the next handler makes the
// widget follow.
inline constexpr std::uint32_t kEventControlSetFocusPart = 7;
inline constexpr std::uint32_t kEventControlSetCursor = 11; // the mouse moves over it
// The button went down at "mloc" (local to the control) in a UserPane; lasts until it is handled.
inline constexpr std::uint32_t kEventControlTrack = 51;
inline constexpr std::uint32_t kEventControlDisposed = 1001;
inline constexpr OSType kEventParamControlPart = 0x63707274;            // "cprt"
inline constexpr OSType kTypeControlPartCode = 0x63707274;              // "cprt": 16 bits
inline constexpr OSType kEventParamControlFocusEverything = 0x63666576; // "cfev"
inline constexpr OSType kTypeBoolean = 0x626F6F6C;                      // "bool": one byte

} // namespace platform
