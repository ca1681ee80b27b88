// SPDX-License-Identifier: BSD-3-Clause
// Roles and values of steppers, user panes and radio groups.
#include "platform/ui/controls/Accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/ui/controls/RadioGroup.h"
#include "platform/ui/controls/Stepper.h"
#include "platform/ui/controls/UserPane.h"

namespace platform {
namespace {

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

} // namespace

void InstallAccessibleRoles() {
    static const bool installed = [] {
        QAccessible::installFactory(MakeInterface);
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace platform
