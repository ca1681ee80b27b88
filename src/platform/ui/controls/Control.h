// SPDX-License-Identifier: BSD-3-Clause
// What stands behind a ControlRef: one widget and what its class makes of values, data and focus.
#pragma once

#include <cstring>
#include <span>
#include <vector>

#include <QObject>
#include <QWidget>

#include "platform/ui/Controls.h"
#include "platform/ui/UIObject.h"

namespace platform {

class Window;

// A child of its widget, so that it ends with it. Derived classes connect the widget's signals to
// SendHit.
class Control : public QObject, public UIObject {
public:
    Control(QWidget& widget, Window& owner);
    ~Control() override; // sends the disposed event, if Dispose or EndControls did not

    static Control* Find(ControlRef control) {
        return static_cast<Control*>(UIObject::Find(control, ObjectKind::kControl));
    }
    // The control of the widget itself, or of the nearest one around it; null for none.
    static Control* Of(const QWidget* widget);
    // The control of the widget itself alone.
    static Control* At(const QWidget* widget);
    // The window's control with the id that was made first; null for none.
    static Control* FindByID(const Window& owner, const ControlID& id);
    ControlRef Ref() const { return As<ControlRef>(); }
    QWidget& Widget() const { return *m_widget; }
    Window& Owner() const { return *m_owner; }

    ControlID id { 0, 0 };
    bool hasID = false;
    std::uint32_t commandID = 0;
    // The widget is enabled when both are set.
    bool enabled = true;
    bool active = true;
    ControlFontStyleRec fontStyle {}; // what was set; flags say which of it

    virtual std::int32_t Value() const { return 0; }
    virtual void SetValue(std::int32_t /*value*/) {}
    virtual std::int32_t Minimum() const { return 0; }
    virtual void SetMinimum(std::int32_t /*minimum*/) {}
    virtual std::int32_t Maximum() const { return 0; }
    virtual void SetMaximum(std::int32_t /*maximum*/) {}
    virtual QString Title() const { return {}; }
    virtual void SetTitle(const QString& /*title*/) {}
    // The tags of the class; kErrDataNotSupported for the others.
    virtual OSStatus SetData(OSType tag, std::span<const std::byte> data);
    virtual OSStatus GetData(OSType tag, std::span<std::byte> data, std::uint32_t* actualSize);
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
    virtual void Embed(Control& sub); // into this one
    virtual Control* Super() const;   // what it is embedded in; null for the window itself
    virtual std::vector<Control*> Subs() const;
    virtual void Draw(); // now
    // Its picture comes from handlers of the draw event alone.
    virtual bool IsDrawnByHandlers() const { return false; }
    // What the control itself does with a hit that no handler took, before its command is sent.
    virtual void ApplyHit(ControlPartCode /*part*/) {}

    // The hit event, then, unhandled, the command. The control may be gone afterwards.
    void SendHit(ControlPartCode part);
    void SendCommand();
    // Ends the control and the ones in it, as EndControls, and their widgets once nobody is in them.
    void Dispose();

private:
    friend void EndControls(QWidget& root);
    void SendDisposed(); // once

    QWidget* m_widget;
    Window* m_owner;
    bool m_disposedSent = false;
};

// Ends the controls of root and of all widgets in it, innermost first, each with its disposed event
// while it is still whole. The widgets stay.
void EndControls(QWidget& root);

// The control for a widget of a known class, by the table in Controls.h; null for other widgets.
// The one that the widget has already, if it has.
Control* MakeControl(QWidget& widget, Window& owner);

// "data" as a value of type T; the status says whether its size is right.
template <class T>
OSStatus ReadData(std::span<const std::byte> data, T* value) {
    if (data.size() != sizeof *value)
        return kErrDataSize;
    std::memcpy(value, data.data(), sizeof *value);
    return kNoErr;
}
template <class T>
OSStatus WriteData(const T& value, std::span<std::byte> data, std::uint32_t* actualSize) {
    if (actualSize)
        *actualSize = sizeof value;
    if (data.empty())
        return kNoErr;
    if (data.size() < sizeof value)
        return kErrDataSize;
    std::memcpy(data.data(), &value, sizeof value);
    return kNoErr;
}
// 'cfst' data; what is given out counts once for the caller.
OSStatus ReadText(std::span<const std::byte> data, QString* text);
OSStatus WriteText(const QString& text, std::span<std::byte> data, std::uint32_t* actualSize);

} // namespace platform
