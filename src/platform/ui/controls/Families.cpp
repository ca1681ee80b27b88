// SPDX-License-Identifier: BSD-3-Clause
// Which family a widget belongs to, the widgets that forms know by our own class names, and what
// screen readers are told about both: names, roles and values.
#include "platform/ui/controls/Control.h"

#include <array>

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>

#include "platform/ui/Windows.h"
#include "platform/ui/controls/RadioGroup.h"
#include "platform/ui/controls/Stepper.h"
#include "platform/ui/controls/UserPane.h"
#include "platform/ui/lists/ListView.h"
#include "platform/ui/menus/PopupButton.h"

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
    for (const QLabel* label : widget.window()->findChildren<QLabel*>())
        if (label->buddy() == &widget)
            return true;
    return false;
}

// Qt names a widget by its own text or by the label that is its buddy. Else its tool tip is the best
// that the form says about it.
void NameByToolTip(QWidget& widget) {
    if (widget.accessibleName().isEmpty() && !widget.toolTip().isEmpty() && !HasText(widget) &&
        !HasBuddy(widget))
        widget.setAccessibleName(widget.toolTip());
}

class AccessibleStepper : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleStepper(Stepper& stepper)
        : QAccessibleWidget(&stepper, QAccessible::SpinBox), m_stepper(stepper) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return m_stepper.Value(); }
    QVariant minimumValue() const override { return m_stepper.Minimum(); }
    QVariant maximumValue() const override { return m_stepper.Maximum(); }
    QVariant minimumStepSize() const override { return 1; }
    // One step that way, as the user would, since the handlers decide how wide a step is.
    void setCurrentValue(const QVariant& value) override { m_stepper.StepTowards(value.toInt()); }

private:
    Stepper& m_stepper;
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (auto* stepper = dynamic_cast<Stepper*>(object))
        return new AccessibleStepper(*stepper);
    if (auto* pane = dynamic_cast<UserPane*>(object))
        return new QAccessibleWidget(pane, QAccessible::Canvas);
    if (auto* group = dynamic_cast<RadioGroup*>(object))
        return new QAccessibleWidget(group, QAccessible::Grouping);
    return nullptr;
}

// Once for the process, however often it is called.
void InstallAccessibleRoles() {
    static const bool installed = [] {
        QAccessible::installFactory(MakeInterface);
        return true;
    }();
    static_cast<void>(installed);
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
    return new WidgetControl(widget, owner);
}

QWidget* MakeCustomWidget(const QString& className, QWidget* parent) {
    InstallAccessibleRoles();
    if (className == QLatin1String("RadioGroup"))
        return new RadioGroup(parent);
    if (className == QLatin1String("Stepper"))
        return new Stepper(parent);
    if (className == QLatin1String("ColorButton"))
        return NewColorButton(parent);
    if (className == QLatin1String("UserPane"))
        return new UserPane(parent);
    if (className == QLatin1String("PopupButton"))
        return new PopupButton(parent);
    if (className == QLatin1String("ListView"))
        return new ListView(parent);
    return nullptr;
}

} // namespace platform
