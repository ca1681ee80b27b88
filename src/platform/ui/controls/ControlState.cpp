// SPDX-License-Identifier: BSD-3-Clause
// Whether controls react, show, and where they lie: enabling, activation, visibility, bounds,
// embedding, drawing.
#include <algorithm>
#include <limits>

#include <QLayout>

#include "platform/ui/Controls.h"
#include "platform/ui/Layouts.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Window.h"

namespace platform {
namespace {

void ShowEnabled(const Control& control) {
    control.Widget().setEnabled(control.enabled && control.active);
}

OSStatus SetEnabled(ControlRef control, bool Control::*flag, bool value) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->*flag = value;
    ShowEnabled(*found);
    return kNoErr;
}

// Whether the flag is set for the control and for everything that it lies in. A widget without a
// control has only Qt's own flag, which stands for both.
bool IsSetUpTo(const Control& control, bool Control::*flag) {
    for (const QWidget* widget = &control.Widget(); widget; widget = widget->parentWidget()) {
        const Control* const at = Control::At(widget);
        if (at ? !(at->*flag) : widget->testAttribute(Qt::WA_ForceDisabled))
            return false;
        if (widget == &control.Owner().Widget())
            break;
    }
    return true;
}

} // namespace

OSStatus EnableControl(ControlRef control) {
    return SetEnabled(control, &Control::enabled, true);
}

OSStatus DisableControl(ControlRef control) {
    return SetEnabled(control, &Control::enabled, false);
}

bool IsControlEnabled(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found && IsSetUpTo(*found, &Control::enabled);
}

OSStatus ActivateControl(ControlRef control) {
    return SetEnabled(control, &Control::active, true);
}

OSStatus DeactivateControl(ControlRef control) {
    return SetEnabled(control, &Control::active, false);
}

bool IsControlActive(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found && IsSetUpTo(*found, &Control::active);
}

OSStatus SetControlVisibility(ControlRef control, bool visible, bool /*redraw*/) {
    const Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->Widget().setVisible(visible); // the window's buffer is kept right whether asked or not
    return kNoErr;
}

bool IsControlVisible(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found && found->Widget().isVisibleTo(&found->Owner().Widget());
}

// Bounds ----------------------------------------------------------------------------------------

namespace {

std::int16_t ToShort(int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

QRect BoundsOf(const Control& control) {
    const QWidget& widget = control.Widget();
    return { widget.mapTo(&control.Owner().Widget(), QPoint()), widget.size() };
}

// A place that is asked for by a call counts from then on, not the layout's of the form.
void TakeOutOfLayout(QLayout* layout, QWidget& widget) {
    if (!layout)
        return;
    layout->removeWidget(&widget);
    for (int i = 0; i < layout->count(); ++i)
        TakeOutOfLayout(layout->itemAt(i)->layout(), widget);
}

OSStatus SetBounds(const Control* control, const QRect& bounds) {
    if (!control)
        return kErrInvalidControl;
    QWidget& widget = control->Widget();
    QWidget* const parent = widget.parentWidget();
    if (!parent)
        return kParamErr;
    if (bounds == BoundsOf(*control))
        return kNoErr;
    TakeOutOfLayout(parent->layout(), widget);
    widget.setGeometry({ parent->mapFrom(&control->Owner().Widget(), bounds.topLeft()),
                         bounds.size().expandedTo({ 0, 0 }) });
    return kNoErr;
}

} // namespace

Rect* GetControlBounds(ControlRef control, Rect* bounds) {
    const Control* const found = Control::Find(control);
    if (found)
        SettleLayouts(found->Owner().Widget());
    const QRect place = found ? BoundsOf(*found) : QRect();
    *bounds = { ToShort(place.y()), ToShort(place.x()), ToShort(place.y() + place.height()),
                ToShort(place.x() + place.width()) };
    return bounds;
}

OSStatus SetControlBounds(ControlRef control, const Rect& bounds) {
    return SetBounds(Control::Find(control), { bounds.left, bounds.top, bounds.right - bounds.left,
                                               bounds.bottom - bounds.top });
}

OSStatus MoveControl(ControlRef control, std::int16_t left, std::int16_t top) {
    const Control* const found = Control::Find(control);
    return SetBounds(found, found ? QRect(QPoint(left, top), found->Widget().size()) : QRect());
}

OSStatus SizeControl(ControlRef control, std::int16_t width, std::int16_t height) {
    const Control* const found = Control::Find(control);
    return SetBounds(found,
                     found ? QRect(BoundsOf(*found).topLeft(), QSize(width, height)) : QRect());
}

// Embedding -------------------------------------------------------------------------------------

OSStatus EmbedControl(ControlRef control, ControlRef container) {
    Control* const sub = Control::Find(control);
    Control* const into = Control::Find(container);
    if (!sub || !into)
        return kErrInvalidControl;
    const bool inItself = sub == into || sub->Widget().isAncestorOf(&into->Widget());
    if (inItself || &sub->Owner() != &into->Owner())
        return kParamErr;
    into->Embed(*sub);
    return kNoErr;
}

OSStatus GetSuperControl(ControlRef control, ControlRef* super) {
    *super = nullptr;
    const Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    if (const Control* const around = found->Super())
        *super = around->Ref();
    return kNoErr;
}

OSStatus CountSubControls(ControlRef control, std::uint16_t* count) {
    const Control* const found = Control::Find(control);
    *count = found ? static_cast<std::uint16_t>(found->Subs().size()) : std::uint16_t { 0 };
    return found ? kNoErr : kErrInvalidControl;
}

OSStatus GetIndexedSubControl(ControlRef control, std::uint16_t index, ControlRef* sub) {
    *sub = nullptr;
    const Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    const std::vector<Control*> subs = found->Subs();
    if (index < 1 || index > subs.size())
        return kErrControlNotFound;
    *sub = subs[index - 1]->Ref();
    return kNoErr;
}

// Drawing ---------------------------------------------------------------------------------------

OSStatus DrawOneControl(ControlRef control) {
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->Draw();
    return kNoErr;
}

OSStatus InvalidateControl(ControlRef control) {
    const Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    found->Widget().update();
    return kNoErr;
}

} // namespace platform
