// SPDX-License-Identifier: BSD-3-Clause
// The control over a popup button: its value, its menu, and what a pick sends.
#include <memory>

#include "platform/ui/controls/Control.h"
#include "platform/ui/controls/Families.h"
#include "platform/ui/menus/PopupButton.h"
#include "platform/ui/windows/Guarded.h"
#include "platform/ui/windows/Window.h"

namespace platform {
namespace {

class PopupControl final : public Control {
public:
    PopupControl(PopupButton& button, Window& owner) : Control(button, owner), m_button(button) {
        connect(&button, &QComboBox::activated, this, [this] { Guarded([this] { SendPick(); }); });
    }

    std::int32_t Value() const override { return m_button.Value(); }
    void SetValue(std::int32_t value) override { m_button.SetValue(value); }
    // The menu says how many values there are. A maximum that is set could only repeat that, and it
    // would be wrong after the next change of the menu.
    std::int32_t Maximum() const override { return m_button.Rows().Shown().Count(); }

    OSStatus SetData(OSType tag, std::span<const std::byte> data) override;
    OSStatus GetData(OSType tag, std::span<std::byte> data, std::uint32_t* actualSize) override;
    ControlPartCode FocusPart() const override { return kControlMenuPart; }

private:
    void SendPick();
    void SendItemCommand(MenuRef menu, MenuItemIndex item);

    PopupButton& m_button;
};

OSStatus PopupControl::SetData(OSType tag, std::span<const std::byte> data) {
    if (tag != kControlPopupMenu)
        return kErrDataNotSupported;
    MenuRef menu = nullptr;
    if (const OSStatus status = ReadData(data, &menu))
        return status;
    if (menu == m_button.Rows().Shown().Ref())
        return kNoErr;
    std::unique_ptr<Menu> taken = Menu::TakeLoose(menu);
    if (!taken)
        return IsValidMenu(menu) ? kParamErr : kMenuNotFoundErr;
    m_button.Rows().Show(std::move(taken));
    return kNoErr;
}

OSStatus PopupControl::GetData(OSType tag, std::span<std::byte> data, std::uint32_t* actualSize) {
    if (tag != kControlPopupMenu)
        return kErrDataNotSupported;
    return WriteData(m_button.Rows().Shown().Ref(), data, actualSize);
}

void PopupControl::SendPick() {
    const PopupModel::Row* const row = m_button.Rows().At(m_button.currentIndex());
    if (!row)
        return;
    const MenuRef menu = row->menu;
    const MenuItemIndex item = row->item;
    const ControlRef self = Ref();
    SendHit(kControlMenuPart);
    if (Find(self))
        SendItemCommand(menu, item);
}

// An item may have a command of its own: its menu is asked first, then this control and its window.
void PopupControl::SendItemCommand(MenuRef menuRef, MenuItemIndex item) {
    const Menu* const menu = Menu::Find(menuRef);
    const MenuItem* const picked = menu ? menu->Item(item) : nullptr;
    EventRef event = nullptr;
    if (!picked || picked->commandID == 0 ||
        CreateEvent(kEventClassCommand, kEventCommandProcess, GetCurrentEventTime(), &event))
        return;
    const std::unique_ptr<Event, decltype(&ReleaseEvent)> releaser(event, ReleaseEvent);
    HICommandExtended command {};
    command.attributes = kHICommandFromMenu;
    command.commandID = picked->commandID;
    command.source.menu = { menuRef, item };
    SetEventParameter(event, kEventParamDirectObject, kTypeHICommand, sizeof command, &command);
    const EventTargetRef own = Target();
    if (SendEventToEventTarget(event, menu->Target()) == kEventNotHandledErr)
        SendEventToEventTarget(event, own);
}

} // namespace

Control* MakePopupControl(QWidget& widget, Window& owner) {
    auto* const button = dynamic_cast<PopupButton*>(&widget);
    return button ? new PopupControl(*button, owner) : nullptr;
}

QWidget* NewPopupButton(QWidget* parent) {
    return new PopupButton(parent);
}

} // namespace platform
