// SPDX-License-Identifier: BSD-3-Clause
// A list view as a control.
#include "platform/ui/lists/ListControl.h"

#include "platform/ui/controls/Families.h"
#include "platform/ui/windows/Guarded.h"
#include "platform/ui/windows/Window.h"

namespace platform {

ListControl::ListControl(ListView& view, Window& owner) : Control(view, owner), m_view(view) {
    // The view may outlive this control by some calls, so it knows it by its reference alone. It
    // calls from inside its own work, which an exception would tear.
    view.Rows().source = [self = Ref()](DataBrowserItemID item, DataBrowserPropertyID property,
                                        OpaqueItemData& data, bool set) {
        const ListControl* const control = Find(self);
        if (!control || !control->callbacks.itemData)
            return kErrDataNotSupported;
        OSStatus status = kParamErr;
        Guarded([&] { status = control->callbacks.itemData(self, item, property, &data, set); });
        return status;
    };
    view.notify = [self = Ref()](DataBrowserItemID item, DataBrowserItemNotification message) {
        const ListControl* const control = Find(self);
        if (control && control->callbacks.itemNotification)
            Guarded([&] { control->callbacks.itemNotification(self, item, message); });
    };
}

ListControl* ListControl::Find(ControlRef control) {
    return dynamic_cast<ListControl*>(Control::Find(control));
}

bool ListControl::DoEditCommand(std::uint32_t commandID) {
    QLineEdit* const editor = m_view.Editor();
    switch (commandID) {
    case kHICommandSelectAll:
        editor ? editor->selectAll() : m_view.selectAll();
        return true;
    case kHICommandUndo:
        return editor ? editor->undo(), true : false;
    case kHICommandRedo:
        return editor ? editor->redo(), true : false;
    case kHICommandCut:
        return editor ? editor->cut(), true : false;
    case kHICommandCopy:
        return editor ? editor->copy(), true : false;
    case kHICommandPaste:
        return editor ? editor->paste(), true : false;
    case kHICommandClear:
        return editor ? editor->del(), true : false;
    default:
        return false;
    }
}

Control* MakeListControl(QWidget& widget, Window& owner) {
    auto* const view = dynamic_cast<ListView*>(&widget);
    return view ? new ListControl(*view, owner) : nullptr;
}

QWidget* NewListView(QWidget* parent) {
    return new ListView(parent);
}

} // namespace platform
