// SPDX-License-Identifier: BSD-3-Clause
// The part of HuxCarbonEvent that needs a user interface: the targets of its objects.
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "platform/ui/Dialogs.h"

using namespace platform;

OSStatus HuxCarbonEvent::PostToQueue(WindowRef window, EventQueueRef queue, Priority priority) {
    return PostAimed(window, GetWindowEventTarget(window), queue, priority);
}

OSStatus HuxCarbonEvent::PostToQueue(HIObjectRef object, EventQueueRef queue, Priority priority) {
    return PostAimed(object, GetHIObjectEventTarget(object), queue, priority);
}

OSStatus HuxCarbonEvent::PostToQueue(DialogRef dialog, EventQueueRef queue, Priority priority) {
    return PostAimed(dialog, GetDialogEventTarget(dialog), queue, priority);
}

OSStatus HuxCarbonEvent::PostToQueue(ControlRef control, EventQueueRef queue, Priority priority) {
    return PostAimed(control, GetHIObjectEventTarget(AsHIObject(control)), queue, priority);
}

OSStatus HuxCarbonEvent::PostToQueue(MenuRef menu, EventQueueRef queue, Priority priority) {
    return PostAimed(menu, GetHIObjectEventTarget(AsHIObject(menu)), queue, priority);
}
