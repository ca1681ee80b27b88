// SPDX-License-Identifier: BSD-3-Clause
// The text overlay effect. It keeps nothing between calls: everything lives in the host's memory.
#pragma once

#include "effect/CEPIObject.h"
#include "popup/CTextPopup.h"
#include "render/CTextRenderer.h"

class CText : public CEPIObject, public CTextRenderer, public CTextPopup {
public:
    CText() = default;
    ~CText() override;

    long Init(_EPIRECORD* record) override;
    long Term(_EPIRECORD* record) override;
    long InitFixedParam(_EPIRECORD* record) override;
    long InitSettings(_EPIRECORD* record) override;
    long ParamInfo(_EPIRECORD* record) override;
    long Serialize(_EPIRECORD* record) override;
    long CreateSettingDialog(_EPIRECORD* record) override;
    long DialogNotify(_EPIRECORD* record) override;
    long DestroySettingDialog(_EPIRECORD* record) override;
    long DoFilter(_EPIRECORD* record) override;

    // Writes the defaults. szDialogue, and what a missing localized string would fill, keep what the
    // memory held.
    static void InitTextParam(_TEXTPARAM& param);
    static void InitDialogParam(_TEXT_DIALOG_PARAM& param);
    // Between the machine's byte order and the big-endian one of archives.
    static void SwapTextParam(_TEXTPARAM& param);
};
