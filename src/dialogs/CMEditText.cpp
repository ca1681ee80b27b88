// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/CMEditText.h"

#include <algorithm>
#include <array>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"

using namespace platform;

namespace {

constexpr std::array kEditCommands { kHICommandUndo, kHICommandRedo,  kHICommandCut,
                                     kHICommandCopy, kHICommandPaste, kHICommandSelectAll,
                                     kHICommandClear };

} // namespace

OSStatus CMEditText::InstallSelf(EventTargetRef target) {
    if (const OSStatus status = HuxEditText::InstallSelf(target))
        return status;
    constexpr EventTypeSpec kCommands[] = { { kEventClassCommand, kEventCommandUpdateStatus },
                                            { kEventClassCommand, kEventCommandProcess } };
    return InstallCarbonEventHandler(target, 2, kCommands);
}

OSStatus CMEditText::HandleEventCurrentSelf(EventHandlerCallRef call, EventRef event) {
    if (GetEventClass(event) != kEventClassCommand)
        return HuxEditText::HandleEventCurrentSelf(call, event);
    const Alive alive(*this);
    const bool isStatus = GetEventKind(event) == kEventCommandUpdateStatus;
    const bool isAnswered =
        isStatus && HandleCommandUpdateStatus(call, event) != kEventNotHandledErr;
    if (!alive)
        return kEventNotHandledErr;
    // An editing command ends here: it is on its way to the window by the queue, and one that went up
    // the chain as well would be done twice. The base knows nothing of commands, so it misses none.
    if (!isAnswered && HandleCommandProcess(event) == kNoErr && !isStatus)
        return kNoErr;
    return HuxEditText::HandleEventCurrentSelf(call, event);
}

// The window is asked last, so that its word counts.
OSStatus CMEditText::HandleCommandUpdateStatus(EventHandlerCallRef call, EventRef event) {
    const WindowRef owner = GetOwner();
    const OSStatus status = CallNextEventHandler(call, event);
    const EventTargetRef target = UIObject::TargetOf(owner);
    return target ? SendEventToEventTarget(event, target) : status;
}

OSStatus CMEditText::HandleCommandProcess(EventRef event) {
    HuxCarbonEvent command(event, true);
    std::uint32_t commandID = 0;
    command.GetCommandParameter(&commandID, nullptr, nullptr, nullptr);
    if (std::ranges::find(kEditCommands, commandID) == kEditCommands.end())
        return kEventNotHandledErr;
    if (Window::Find(GetOwner()))
        command.PostToQueue(GetOwner());
    return kNoErr;
}
