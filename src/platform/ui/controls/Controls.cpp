// SPDX-License-Identifier: BSD-3-Clause
// The calls that make, find, name and end controls, and their data by tag.
#include "platform/ui/Controls.h"

#include <algorithm>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "platform/ui/QtStrings.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/controls/Families.h"
#include "platform/ui/windows/Window.h"

namespace platform {
namespace {

QRect QRectFrom(const Rect& rect) {
    return { QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1) };
}

// The widget becomes a control of the window, at the place.
ControlRef Place(QWidget& widget, Window& owner, const Rect& bounds) {
    widget.setGeometry(QRectFrom(bounds));
    Control* const control = MakeControl(widget, owner);
    widget.show();
    return control ? control->Ref() : nullptr;
}

std::span<const std::byte> BytesOf(const void* data, std::uint32_t size) {
    return { static_cast<const std::byte*>(data), data ? size : 0 };
}

std::span<std::byte> BytesOf(void* data, std::uint32_t size) {
    return { static_cast<std::byte*>(data), data ? size : 0 };
}

} // namespace

// Making ----------------------------------------------------------------------------------------

OSStatus CreatePushButtonControl(WindowRef window, const Rect& bounds, CFStringRef title,
                                 ControlRef* control) {
    *control = nullptr;
    Window* const owner = Window::Find(window);
    if (!owner)
        return kErrInvalidWindow;
    *control = Place(*new QPushButton(&owner->Widget()), *owner, bounds);
    return SetControlTitleWithCFString(*control, title);
}

OSStatus CreateEditTextControl(WindowRef window, const Rect& bounds, CFStringRef text,
                               bool severalLines, ControlRef* control) {
    *control = nullptr;
    Window* const owner = Window::Find(window);
    if (!owner)
        return kErrInvalidWindow;
    QWidget* const parent = &owner->Widget();
    QWidget* const field =
        severalLines ? static_cast<QWidget*>(new QPlainTextEdit(parent)) : new QLineEdit(parent);
    *control = Place(*field, *owner, bounds);
    if (!text)
        return kNoErr;
    return Control::Find(*control)->SetData(kControlTextCFString,
                                            std::as_bytes(std::span(&text, 1)));
}

namespace {

OSStatus CreateCustomControl(WindowRef window, const Rect& bounds, const char* className,
                             ControlRef* control) {
    *control = nullptr;
    Window* const owner = Window::Find(window);
    if (!owner)
        return kErrInvalidWindow;
    *control = Place(*MakeCustomWidget(QLatin1String(className), &owner->Widget()), *owner, bounds);
    return kNoErr;
}

} // namespace

OSStatus CreateRadioGroupControl(WindowRef window, const Rect& bounds, ControlRef* control) {
    return CreateCustomControl(window, bounds, "RadioGroup", control);
}

OSStatus CreateUserPaneControl(WindowRef window, const Rect& bounds, ControlRef* control) {
    return CreateCustomControl(window, bounds, "UserPane", control);
}

OSStatus DisposeControl(ControlRef control) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->Dispose();
    return kNoErr;
}

// Finding and naming ----------------------------------------------------------------------------

OSStatus GetControlByID(WindowRef window, const ControlID& id, ControlRef* control) {
    *control = nullptr;
    const Window* const owner = Window::Find(window);
    if (!owner)
        return kErrInvalidWindow;
    const Control* const found = Control::FindByID(*owner, id);
    if (!found)
        return kErrControlNotFound;
    *control = found->Ref();
    return kNoErr;
}

bool IsValidControlHandle(ControlRef control) {
    return Control::Find(control) != nullptr;
}

EventTargetRef GetControlEventTarget(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found ? found->Target() : nullptr;
}

WindowRef GetControlOwner(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found ? found->Owner().Ref() : nullptr;
}

OSStatus SetControlID(ControlRef control, const ControlID& id) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->id = id;
    found->hasID = true;
    return kNoErr;
}

OSStatus GetControlID(ControlRef control, ControlID* id) {
    const Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    if (!found->hasID)
        return kErrControlNotFound;
    *id = found->id;
    return kNoErr;
}

OSStatus SetControlCommandID(ControlRef control, std::uint32_t commandID) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->commandID = commandID;
    return kNoErr;
}

OSStatus GetControlCommandID(ControlRef control, std::uint32_t* commandID) {
    const Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    *commandID = found->commandID;
    return kNoErr;
}

// Properties and data ---------------------------------------------------------------------------

OSStatus SetControlProperty(ControlRef control, OSType creator, OSType tag, std::uint32_t size,
                            const void* data) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    if (!data && size > 0)
        return kParamErr;
    return found->SetProperty(creator, tag, BytesOf(data, size));
}

OSStatus GetControlProperty(ControlRef control, OSType creator, OSType tag, std::uint32_t size,
                            std::uint32_t* actualSize, void* data) {
    const Control* const found = Control::Find(control);
    return found ? found->GetProperty(creator, tag, BytesOf(data, size), actualSize)
                 : kErrInvalidControl;
}

OSStatus RemoveControlProperty(ControlRef control, OSType creator, OSType tag) {
    Control* const found = Control::Find(control);
    return found ? found->RemoveProperty(creator, tag) : kErrInvalidControl;
}

OSStatus SetControlData(ControlRef control, ControlPartCode /*part*/, OSType tag,
                        std::uint32_t size, const void* data) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    if (!data && size > 0)
        return kParamErr;
    return found->SetData(tag, BytesOf(data, size));
}

OSStatus GetControlData(ControlRef control, ControlPartCode /*part*/, OSType tag,
                        std::uint32_t size, void* data, std::uint32_t* actualSize) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    if (data && size == 0)
        return kErrDataSize;
    return found->GetData(tag, BytesOf(data, size), actualSize);
}

// Values and titles -----------------------------------------------------------------------------

std::int32_t GetControl32BitValue(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found ? found->Value() : 0;
}

void SetControl32BitValue(ControlRef control, std::int32_t value) {
    if (Control* const found = Control::Find(control)) {
        const std::int32_t minimum = found->Minimum();
        found->SetValue(std::clamp(value, minimum, std::max(minimum, found->Maximum())));
    }
}

std::int32_t GetControl32BitMinimum(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found ? found->Minimum() : 0;
}

void SetControl32BitMinimum(ControlRef control, std::int32_t minimum) {
    if (Control* const found = Control::Find(control))
        found->SetMinimum(minimum);
}

std::int32_t GetControl32BitMaximum(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found ? found->Maximum() : 0;
}

void SetControl32BitMaximum(ControlRef control, std::int32_t maximum) {
    if (Control* const found = Control::Find(control))
        found->SetMaximum(maximum);
}

OSStatus SetControlTitleWithCFString(ControlRef control, CFStringRef title) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->SetTitle(WithLineFeeds(QStringFrom(title)));
    return kNoErr;
}

OSStatus CopyControlTitleAsCFString(ControlRef control, CFStringRef* title) {
    const Control* const found = Control::Find(control);
    *title = found ? CFStringCreateWithQString(WithCarriageReturns(found->Title())) : nullptr;
    return found ? kNoErr : kErrInvalidControl;
}

} // namespace platform
