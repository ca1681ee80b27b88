// SPDX-License-Identifier: BSD-3-Clause
// Controls: what stands behind a ControlRef. Each is a real widget; what it can do follows from the
// widget's class in the form:
//
//   QPushButton                    push button
//   QCheckBox, QRadioButton        value 0 or 1
//   RadioGroup (also made by call) value: which of its radio buttons, from 1; 0 none
//   QLineEdit, QPlainTextEdit      edit fields, one line and several; a read-only QPlainTextEdit is
//                                  the scrolling text (see EditField)
//   QLabel                         static text
//   Stepper                        two small arrows with value, minimum and maximum
//   ColorButton                    a button that shows a colour
//   PopupButton                    a menu; value: the picked item, from 1; 0 none (see Menus.h)
//   ListView                       rows with in-place editing (see DataBrowser.h)
//   UserPane                       drawn and tracked by its handlers alone
//
// User-interface thread only. Keep references, not pointers, over anything that sends events: handlers
// may end the control, and Find then gives null. Texts are UTF-8, their lines end with CR.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ui/UIObject.h"
#include "platform/ui/Windows.h"

class QWidget;

namespace platform {

class Menu;
class Window;

inline constexpr OSStatus kErrInvalidControl = -30585;
inline constexpr OSStatus kErrControlNotFound = -30584;
inline constexpr OSStatus kErrDataNotSupported = -30581;
inline constexpr OSStatus kErrCouldNotFocus = -30594;

struct ControlID {
    OSType signature;
    std::int32_t id;
    bool operator==(const ControlID&) const = default;
};
using ControlPartCode = std::int16_t;
inline constexpr ControlPartCode kControlNoPart = 0;
inline constexpr ControlPartCode kControlEditTextPart = 5;
inline constexpr ControlPartCode kControlButtonPart = 10;
inline constexpr ControlPartCode kControlCheckBoxPart = 11;
inline constexpr ControlPartCode kControlRadioButtonPart = 11;
inline constexpr ControlPartCode kControlMenuPart = 2;
inline constexpr ControlPartCode kControlListBoxPart = 24;
inline constexpr ControlPartCode kControlUpButtonPart = 20;
inline constexpr ControlPartCode kControlDownButtonPart = 21;

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
inline constexpr std::uint16_t kControlSizeNormal = 0;
inline constexpr std::uint16_t kControlSizeSmall = 1;

class Control : public UIObject {
public:
    ~Control() override; // sends the disposed event, if Dispose or its window's end did not

    // Null when it is gone.
    static Control* Find(ControlRef control) {
        return static_cast<Control*>(UIObject::Find(control, ObjectKind::kControl));
    }
    // The window's control with the id that was made first; null for none.
    static Control* FindByID(WindowRef window, const ControlID& id);
    // A push button, or a widget of one of the classes of our own in the table above, at the place
    // within the window (local), visible and enabled, without id and command. Null without the window.
    static Control* Create(WindowRef window, const char* className, const Rect& bounds);
    // The control of the widget itself, or of the nearest one around it; null for none.
    static Control* Of(const QWidget* widget);
    // The control of the widget itself alone.
    static Control* At(const QWidget* widget);

    ControlRef Ref() const { return As<ControlRef>(); }
    QWidget& Widget() const { return *m_widget; }
    Window& Owner() const { return *m_owner; }
    WindowRef OwnerRef() const;
    // Ends the control and the ones in it, innermost first, each with its disposed event ('cntl',
    // 1001) while it is still whole; their widgets go once nobody is in them. Allowed from inside its
    // own handlers.
    void Dispose();

    std::optional<ControlID> id;
    std::uint32_t commandID = 0; // 0: it sends none

    // Values and texts --------------------------------------------------------------------------

    virtual std::int32_t Value() const { return 0; }
    void SetValue(std::int32_t value); // kept within minimum and maximum
    virtual std::int32_t Minimum() const { return 0; }
    virtual void SetMinimum(std::int32_t /*minimum*/) {}
    virtual std::int32_t Maximum() const { return 0; }
    virtual void SetMaximum(std::int32_t /*maximum*/) {}
    virtual std::string Title() const { return {}; }
    virtual void SetTitle(std::string_view /*title*/) {}
    // Of an edit field, a label or a scrolling text; nothing, and kErrDataNotSupported, of others.
    // Setting it in a focused field can be undone by the user.
    virtual std::optional<std::string> Text() const { return std::nullopt; }
    virtual OSStatus SetText(std::string_view /*text*/) { return kErrDataNotSupported; }
    // Of single families; nothing, null and kErrDataNotSupported of the others.
    virtual std::optional<RGBColor> Color() const { return std::nullopt; } // of a ColorButton
    virtual OSStatus SetColor(const RGBColor& /*color*/) { return kErrDataNotSupported; }
    virtual Menu* PopupMenu() const { return nullptr; } // of a PopupButton
    // Between the steps while an arrow of a Stepper is held; kParamErr when it is not above 0.
    virtual OSStatus SetRepeatInterval(double /*seconds*/) { return kErrDataNotSupported; }

    // State, place and looks --------------------------------------------------------------------

    void SetEnabled(bool enabled);
    bool IsEnabled() const;      // also false when what it lies in is disabled
    void SetActive(bool active); // looks and reacts as enabled, or looks disabled
    bool IsActive() const;
    void SetVisible(bool visible);
    bool IsVisible() const; // but for its window

    Rect Bounds() const; // local to the window, as are the places of these two
    void Move(std::int16_t left, std::int16_t top);
    void Resize(std::int16_t width, std::int16_t height);
    // kParamErr for a container in another window, or within this control.
    OSStatus EmbedIn(Control& container);
    virtual Control* Super() const; // what it is embedded in; null for the window itself
    virtual std::vector<Control*> Subs() const; // in their order

    virtual void Draw(); // now
    void Invalidate();   // is drawn when the loop gets to it

    ControlFontStyleRec FontStyle() const;
    void SetFontStyle(const ControlFontStyleRec& style);
    OSStatus SetSizeVariant(std::uint16_t size);

    // What the window asks of it ----------------------------------------------------------------

    // The part that has the focus when the widget has it; 0 for a control that takes none.
    virtual ControlPartCode FocusPart() const { return kControlNoPart; }
    // Whether Return in this control is its own rather than the default button's (a push button's).
    virtual bool TakesReturn() const { return false; }
    // Asked before the widget gets a key press; true: the key is blocked.
    virtual bool BlocksKey(std::uint32_t /*keyCode*/, std::int16_t /*charCode*/,
                           std::uint32_t /*modifiers*/) {
        return false;
    }
    // One of the commands "undo" ... "clea"; false when the control does not know it.
    virtual bool DoEditCommand(std::uint32_t /*commandID*/) { return false; }
    // Its picture comes from handlers of the draw event alone.
    virtual bool IsDrawnByHandlers() const { return false; }

protected:
    Control(QWidget& widget, Window& owner);

    virtual void ApplyValue(std::int32_t /*value*/) {} // one between minimum and maximum
    virtual void Embed(Control& sub);                  // into this one
    // What the control itself does with a hit that no handler took, before its command is sent.
    virtual void ApplyHit(ControlPartCode /*part*/) {}
    // The hit event, then, unhandled, the command. The control may be gone afterwards.
    void SendHit(ControlPartCode part);

private:
    friend void EndControls(QWidget& root);
    void SendCommand();
    void SendDisposed(); // once
    bool IsSetUpToWindow(bool Control::*flag) const;
    void SetBounds(int left, int top, int width, int height);

    QWidget* m_widget;
    Window* m_owner;
    // The widget is enabled when both are set.
    bool m_enabled, m_active = true;
    bool m_disposedSent = false;
    ControlFontStyleRec m_fontStyle {}; // what was set; flags say which of it
};

// The palette's colours for text: 1 active dialog text, 2 inactive dialog text.
OSStatus GetThemeTextColor(std::int16_t themeTextColor, RGBColor* color);
inline constexpr std::int16_t kThemeTextColorDialogActive = 1;
inline constexpr std::int16_t kThemeTextColorDialogInactive = 2;

// Edit fields ------------------------------------------------------------------------------------

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
// Called after every change of the text that no key filter was asked about: paste, drop, undo, a
// committed input method, setting the text by call. Not called again for changes that it makes.
using ControlEditTextValidationProc = void (*)(ControlRef control);

// What an edit field or a scrolling text has beside its text.
class EditField {
public:
    struct Span {
        int start, end; // in UTF-16 units
    };

    static EditField* Find(ControlRef control); // null for controls of other families as well

    virtual Span Selection() const = 0; // an empty one is the caret
    // Whole characters, wherever the ends lie; end -1 means to the end.
    virtual void Select(Span span) = 0;
    // Offers a keyboard for Roman letters, or any. A hint: input methods go on working.
    virtual void SetRomanScript(bool roman) = 0;
    virtual void SetReadOnly(bool readOnly) = 0;
    virtual void SetWrap(bool wrap) = 0; // of several lines; one has none

    ControlKeyFilterProc keyFilter = nullptr;
    ControlEditTextValidationProc validation = nullptr;

protected:
    ~EditField() = default;
};

// Events: class 'cntl', with the control as direct object ("----", 'ctrl') -----------------------

inline constexpr OSType kEventClassControl = 0x636E746C; // "cntl"
inline constexpr OSType kTypeControlRef = 0x6374726C;    // "ctrl"
// The user pressed, picked or stepped; "cprt" says the part. Unhandled, the command event follows
// ('cmds' 1 from the control to its target, when it has a command id that is not 0). The control's
// value has changed by then. Commands go on to the window's target.
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
