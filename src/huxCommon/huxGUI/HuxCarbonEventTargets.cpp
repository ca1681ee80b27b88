// SPDX-License-Identifier: BSD-3-Clause
// The part of HuxCarbonEvent that needs a user interface: the targets of its objects.
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "platform/ui/UIObject.h"

using namespace platform;

OSStatus HuxCarbonEvent::PostToObject(const void* object, EventQueueRef queue, Priority priority) {
    return PostAimed(object, UIObject::TargetOf(object), queue, priority);
}
