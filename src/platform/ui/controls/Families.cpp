// SPDX-License-Identifier: BSD-3-Clause
// Which family a widget belongs to, the widgets that forms know by our own class names, and the
// names that screen readers say.
#include "platform/ui/controls/Families.h"

#include <array>

#include <QAbstractButton>
#include <QLabel>

#include "platform/ui/controls/Accessible.h"
#include "platform/ui/controls/ColorButton.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/controls/RadioGroup.h"
#include "platform/ui/controls/Stepper.h"
#include "platform/ui/controls/UserPane.h"
#include "platform/ui/windows/Window.h"

namespace platform {
namespace {

using Family = Control* (*)(QWidget&, Window&);
// Our own widget classes may derive from Qt's, so they are asked first.
constexpr std::array<Family, 9> kFamilies {
    MakePopupControl,      MakeListControl,    MakeColorControl,
    MakeRadioGroupControl, MakeStepperControl, MakeEditControl,
    MakeUserPaneControl,   MakeButtonControl,  MakeLabelControl,
};

bool HasText(const QWidget& widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return qobject_cast<const QLabel*>(&widget) || (button && !button->text().isEmpty());
}

bool HasBuddy(const QWidget& widget) {
    for (const QLabel* label : widget.window()->findChildren<QLabel*>()) {
        if (label->buddy() == &widget)
            return true;
    }
    return false;
}

// Qt names a widget by its own text or by the label that is its buddy. Else its tool tip is the best
// that the form says about it.
void NameByToolTip(QWidget& widget) {
    if (widget.accessibleName().isEmpty() && !widget.toolTip().isEmpty() && !HasText(widget) &&
        !HasBuddy(widget))
        widget.setAccessibleName(widget.toolTip());
}

} // namespace

Control* MakeControl(QWidget& widget, Window& owner) {
    if (Control* there = Control::At(&widget))
        return there;
    for (const Family make : kFamilies) {
        if (Control* control = make(widget, owner)) {
            NameByToolTip(widget);
            return control;
        }
    }
    return nullptr;
}

QWidget* MakeCustomWidget(const QString& className, QWidget* parent) {
    InstallAccessibleRoles();
    if (className == QLatin1String("RadioGroup"))
        return new RadioGroup(parent);
    if (className == QLatin1String("Stepper"))
        return new Stepper(parent);
    if (className == QLatin1String("ColorButton"))
        return new ColorButton(parent);
    if (className == QLatin1String("UserPane"))
        return new UserPane(parent);
    if (className == QLatin1String("PopupButton"))
        return NewPopupButton(parent);
    if (className == QLatin1String("ListView"))
        return NewListView(parent);
    return nullptr;
}

} // namespace platform
