// SPDX-License-Identifier: BSD-3-Clause
// The control over a list view: carries the callbacks that answer for its items.
#pragma once

#include "platform/ui/controls/Control.h"
#include "platform/ui/lists/ListView.h"

namespace platform {

class ListControl final : public Control {
public:
    ListControl(ListView& view, Window& owner);

    // Null for other controls.
    static ListControl* Find(ControlRef control);

    ListView& View() const { return m_view; }
    DataBrowserCallbacks callbacks { nullptr, nullptr };

    ControlPartCode FocusPart() const override { return kControlListBoxPart; }
    bool DoEditCommand(std::uint32_t commandID) override;

private:
    ListView& m_view;
};

} // namespace platform
