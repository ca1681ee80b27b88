// SPDX-License-Identifier: BSD-3-Clause
// Radio groups: which button is checked, and a hit of the group when the user picks another.
#include "platform/ui/controls/RadioGroup.h"

#include <algorithm>

#include "platform/ui/controls/Control.h"

namespace platform {

RadioGroup::RadioGroup(QWidget* parent) : QWidget(parent), m_buttons(this) {}

RadioGroup* RadioGroup::Of(const QAbstractButton& button) {
    return button.group() ? dynamic_cast<RadioGroup*>(button.group()->parent()) : nullptr;
}

void RadioGroup::Add(QRadioButton& button) {
    if (button.group() == &m_buttons)
        return;
    if (RadioGroup* const other = Of(button))
        other->m_buttons.removeButton(&button);
    m_buttons.addButton(&button);
}

int RadioGroup::Value() const {
    const QAbstractButton* const checked = m_buttons.checkedButton();
    return checked ? static_cast<int>(Buttons().indexOf(checked)) + 1 : 0;
}

void RadioGroup::SetValue(int value) {
    const QList<QAbstractButton*> buttons = Buttons();
    if (value >= 1 && value <= buttons.size())
        buttons[value - 1]->setChecked(true);
    else if (QAbstractButton* const checked = m_buttons.checkedButton())
        Uncheck(*checked);
}

void RadioGroup::Uncheck(QAbstractButton& button) {
    m_buttons.setExclusive(false);
    button.setChecked(false);
    m_buttons.setExclusive(true);
}

namespace {

class RadioGroupControl : public WidgetControl {
public:
    RadioGroupControl(RadioGroup& group, Window& owner)
        : WidgetControl(group, owner), m_group(&group) {
        // Those that lie in it in the form belong to it.
        for (QRadioButton* button : group.findChildren<QRadioButton*>())
            group.Add(*button);
        connect(&group.Signals(), &QButtonGroup::buttonPressed, this,
                [this] { m_valueBefore = Value(); });
        connect(&group.Signals(), &QButtonGroup::buttonClicked, this, [this] {
            if (Value() != m_valueBefore)
                SendHit(static_cast<ControlPartCode>(Value()));
        });
    }

    std::int32_t Value() const override { return m_group->Value(); }
    std::int32_t Maximum() const override {
        return static_cast<std::int32_t>(m_group->Buttons().size());
    }
    std::vector<Control*> Subs() const override {
        std::vector<Control*> subs;
        for (const QAbstractButton* button : m_group->Buttons())
            if (Control* control = At(button))
                subs.push_back(control);
        return subs;
    }

protected:
    void ApplyValue(std::int32_t value) override { m_group->SetValue(value); }
    void Embed(Control& sub) override {
        if (auto* button = qobject_cast<QRadioButton*>(&sub.Widget()))
            m_group->Add(*button);
        else
            Control::Embed(sub);
    }

private:
    RadioGroup* m_group;
    std::int32_t m_valueBefore = 0; // the press that a click ended with
};

} // namespace

Control* MakeRadioGroupControl(QWidget& widget, Window& owner) {
    auto* const group = dynamic_cast<RadioGroup*>(&widget);
    return group ? new RadioGroupControl(*group, owner) : nullptr;
}

} // namespace platform
