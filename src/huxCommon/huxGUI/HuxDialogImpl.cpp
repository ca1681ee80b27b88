// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxDialogImpl.h"

using namespace platform;

void HuxDialogImpl::DummyHuxDialog() {}

OSStatus HuxDialogImpl::HandleEventCurrentSelf(EventHandlerCallRef, EventRef) {
    return kEventNotHandledErr;
}
