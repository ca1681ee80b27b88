// SPDX-License-Identifier: BSD-3-Clause
// What dialogs derive from.
#pragma once

#include "huxCommon/huxGUI/HuxDialog.h"

class HuxDialogImpl : public HuxDialog {
public:
    // Does nothing. It keeps the operations after it where callers that count slots expect them.
    virtual void DummyHuxDialog() {}
    // Dialogs override this; unhandled events go on to the classes below.
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                              platform::EventRef) override {
        return platform::kEventNotHandledErr;
    }
};
