// SPDX-License-Identifier: BSD-3-Clause
#include "preview/PreviewCursors.h"

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxUtility/VamCursor.h"

void RegisterPreviewCursors(platform::CFBundleRef bundle) {
    for (const char* name : { kHandCursor, kDragCursor })
        vamRegisterNamedCursorFromBundle(bundle, HuxString(name).GetCFString(), nullptr);
}

void SetPreviewCursor(const char* name) {
    const HuxString string(name);
    vamSetNamedCursor(string.GetCFString());
}
