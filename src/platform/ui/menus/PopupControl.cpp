// SPDX-License-Identifier: BSD-3-Clause
// The control over a popup button: its value, its menu, and what a pick sends.
#include "platform/ui/controls/Control.h"
#include "platform/ui/menus/PopupButton.h"
#include "platform/ui/windows/Input.h"

namespace platform {
namespace {

class PopupControl final : public WidgetControl {
public:
    PopupControl(PopupButton& button, Window& owner)
        : WidgetControl(button, owner), m_button(button) {
        connect(&button, &QComboBox::activated, this,
                [this] { Guarded([this] { SendHit(kControlMenuPart); }); });
    }

    std::int32_t Value() const override { return m_button.Value(); }
    // The menu says how many values there are. A maximum that is set could only repeat that, and it
    // would be wrong after the next change of the menu.
    std::int32_t Maximum() const override { return PopupMenu()->Count(); }
    Menu* PopupMenu() const override { return &m_button.Rows().Shown(); }
    ControlPartCode FocusPart() const override { return kControlMenuPart; }

protected:
    void ApplyValue(std::int32_t value) override { m_button.SetValue(value); }

private:
    PopupButton& m_button;
};

} // namespace

Control* MakePopupControl(QWidget& widget, Window& owner) {
    auto* const button = dynamic_cast<PopupButton*>(&widget);
    return button ? new PopupControl(*button, owner) : nullptr;
}

} // namespace platform
