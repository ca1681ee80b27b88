// SPDX-License-Identifier: BSD-3-Clause
// Controls that have a title: push buttons, check boxes, radio buttons and static text.
#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>

#include "platform/ui/QtValues.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/controls/RadioGroup.h"

namespace platform {
namespace {

class ButtonControl : public WidgetControl {
public:
    ButtonControl(QAbstractButton& button, Window& owner, ControlPartCode part)
        : WidgetControl(button, owner), m_button(&button), m_part(part) {
        // A click leaves the focus, and what is being typed there, where it is. From a radio button
        // the arrow keys go on, so it takes the focus when it is picked.
        const bool leadsOn = qobject_cast<QRadioButton*>(&button) != nullptr;
        button.setFocusPolicy(leadsOn ? Qt::StrongFocus : Qt::TabFocus);
        connect(&button, &QAbstractButton::clicked, this, [this] { SendHit(m_part); });
    }
    std::string Title() const override {
        return m_button ? ToUtf8(WithoutMnemonics(m_button->text())) : std::string();
    }
    void SetTitle(std::string_view title) override { m_button->setText(WithoutMeaning(title)); }
    ControlPartCode FocusPart() const override { return m_part; }

protected:
    QAbstractButton* Button() const { return m_button; }

private:
    QPointer<QAbstractButton> m_button; // null while the widget goes
    ControlPartCode m_part;
};

class PushButtonControl : public ButtonControl {
public:
    PushButtonControl(QPushButton& button, Window& owner)
        : ButtonControl(button, owner, kControlButtonPart) {
        // Qt's own notion of a default button, which would press it beside the window's, and which
        // marks every button that has the focus as the default one.
        button.setAutoDefault(false);
    }
    bool TakesReturn() const override { return true; }
};

class SwitchControl : public ButtonControl {
public:
    SwitchControl(QAbstractButton& button, Window& owner, ControlPartCode part)
        : ButtonControl(button, owner, part) {}
    std::int32_t Value() const override { return Button() && Button()->isChecked() ? 1 : 0; }
    std::int32_t Maximum() const override { return 1; }

protected:
    void ApplyValue(std::int32_t value) override { Button()->setChecked(value != 0); }
};

class RadioButtonControl : public SwitchControl {
public:
    RadioButtonControl(QRadioButton& button, Window& owner)
        : SwitchControl(button, owner, kControlRadioButtonPart) {
        // One that lies in a group in the form belongs to it.
        for (QWidget* around = button.parentWidget(); around; around = around->parentWidget()) {
            if (auto* group = dynamic_cast<RadioGroup*>(around)) {
                group->Add(button);
                break;
            }
        }
    }
    ~RadioButtonControl() override {
        // The widget of a control that was disposed goes later, and counts no more meanwhile.
        if (Button() && Button()->group())
            Button()->group()->removeButton(Button());
    }
    Control* Super() const override {
        RadioGroup* const group = Button() ? RadioGroup::Of(*Button()) : nullptr;
        Control* const control = At(group);
        return control ? control : Control::Super();
    }

protected:
    void ApplyValue(std::int32_t value) override {
        RadioGroup* const group = RadioGroup::Of(*Button());
        if (value == 0 && group && Button()->isChecked())
            group->Uncheck(*Button());
        else
            SwitchControl::ApplyValue(value);
    }
};

class LabelControl : public WidgetControl {
public:
    LabelControl(QLabel& label, Window& owner) : WidgetControl(label, owner), m_label(&label) {}

    std::string Title() const override {
        return ToUtf8(m_label->buddy() ? WithoutMnemonics(m_label->text()) : m_label->text());
    }
    void SetTitle(std::string_view title) override {
        m_label->setTextFormat(Qt::PlainText); // "<b>" is three characters
        m_label->setText(m_label->buddy() ? WithoutMeaning(title) : FromUtf8(title));
    }
    std::optional<std::string> Text() const override { return Title(); }
    OSStatus SetText(std::string_view text) override {
        SetTitle(text);
        return kNoErr;
    }

private:
    QLabel* m_label;
};

} // namespace

Control* MakeButtonControl(QWidget& widget, Window& owner) {
    if (auto* push = qobject_cast<QPushButton*>(&widget))
        return new PushButtonControl(*push, owner);
    if (auto* radio = qobject_cast<QRadioButton*>(&widget))
        return new RadioButtonControl(*radio, owner);
    if (auto* check = qobject_cast<QCheckBox*>(&widget))
        return new SwitchControl(*check, owner, kControlCheckBoxPart);
    return nullptr;
}

Control* MakeLabelControl(QWidget& widget, Window& owner) {
    auto* const label = qobject_cast<QLabel*>(&widget);
    return label ? new LabelControl(*label, owner) : nullptr;
}

} // namespace platform
