// SPDX-License-Identifier: BSD-3-Clause
// What only the loadable module has: the table that the effect's own module looks for.
#include "effect/UIModule.h"

#include "dialogs/DialogHooks.h"

extern "C" const UIModuleTable TextOverlayUI = {
    sizeof(UIModuleTable),
    CreateSettingDialog,
    DialogNotify,
    DestroySettingDialog,
};
