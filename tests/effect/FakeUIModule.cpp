// SPDX-License-Identifier: BSD-3-Clause
// Stands in for the module with the dialogs: leaves marks in the record.
#include "effect/UIModule.h"

namespace {

long Create(_EPIRECORD* record) {
    record->hDialogWindow = reinterpret_cast<EPIWindowRef>(record);
    record->pDialogHolder = record;
    return 0;
}

long Notify(_EPIRECORD* record) {
    record->nNotifyResult = record->nNotifyCode + 40;
    return 0;
}

long Destroy(_EPIRECORD* record) {
    record->hDialogWindow = nullptr;
    record->pDialogHolder = nullptr;
    return 0;
}

} // namespace

const UIModuleTable TextOverlayUI { sizeof(UIModuleTable), Create, Notify, Destroy };
