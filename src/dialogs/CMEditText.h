// SPDX-License-Identifier: BSD-3-Clause
// An edit field that hands the standard editing commands to its window.
#pragma once

#include "huxCommon/huxGUI/HuxEditText.h"

class CMEditText : public HuxEditText {
public:
    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    platform::OSStatus HandleCommandUpdateStatus(platform::EventHandlerCallRef call,
                                                 platform::EventRef event);
    platform::OSStatus HandleCommandProcess(platform::EventRef event);
};
