// SPDX-License-Identifier: BSD-3-Clause
// The one effect object and what it tells the host about itself.
#include "effect/CText.h"

#include "render/LocalizedString.h"

// Constructed as the module is loaded. Whoever links this code from a library asks for the symbol,
// because nothing else refers to the object by its name.
CText s_object;

CText::~CText() = default;

long CText::Init(_EPIRECORD* record) {
    EPIPluginInfo& info = *record->pPluginInfo;
    info.nSignature = EPI_FOUR_CC('T', 'E', 'X', 'T');
    info.nInfo1 = 2;
    info.nInfo2 = 1;
    info.nFixedParamSize = sizeof(_TEXTPARAM);
    info.nSettingsSize = sizeof(_TEXT_DIALOG_PARAM);
    CopyLocalizedString("IDS_CATEGORY", info.szCategory, sizeof info.szCategory);
    CopyLocalizedString("IDS_FILTER", info.szName, sizeof info.szName);
    return 0;
}

long CText::Term(_EPIRECORD* /*record*/) {
    return 0;
}

// The apply switch is the only parameter that the host animates.
long CText::ParamInfo(_EPIRECORD* record) {
    if (record->nParamIndex != 0)
        return 0;
    EPIParamDesc& param = *record->pParamDesc;
    param.nKind = 4;
    CopyLocalizedString("IDS_PARAM_APPLY", param.szName, sizeof param.szName);
    param.dMinimum = 0.0;
    param.dMaximum = 1.0;
    param.dDefault = 0.0;
    return 0;
}
