// SPDX-License-Identifier: BSD-3-Clause
// The dialog selectors, which belong to the user interface module.
#include "effect/CText.h"
#include "effect/UIModule.h"

// A host has to expect a dialog without a window, so a machine without a display is no error.
long CText::CreateSettingDialog(_EPIRECORD* record) {
    if (const UIModuleTable* module = OpenUIModule())
        return module->CreateSettingDialog(record);
    record->hDialogWindow = nullptr;
    record->pDialogHolder = nullptr;
    return 0;
}

long CText::DialogNotify(_EPIRECORD* record) {
    const UIModuleTable* module = OpenUIModule();
    return module ? module->DialogNotify(record) : 0;
}

long CText::DestroySettingDialog(_EPIRECORD* record) {
    const UIModuleTable* module = OpenUIModule();
    return module ? module->DestroySettingDialog(record) : 0;
}
