// SPDX-License-Identifier: BSD-3-Clause
#include "effect/EntryPoint.h"

#include "effect/CEPIObject.h"

// The selectors are in the order of the host's protocol, which is not that of the object's operations.
extern "C" long EntryPoint(long selector, _EPIRECORD* record) {
    switch (selector) {
    case epiInit:
        return s_pObject->Init(record);
    case epiTerm:
        return s_pObject->Term(record);
    case epiInitFixedParam:
        return s_pObject->InitFixedParam(record);
    case epiInitSettings:
        return s_pObject->InitSettings(record);
    case epiParamInfo:
        return s_pObject->ParamInfo(record);
    case epiCreateSettingDialog:
        return s_pObject->CreateSettingDialog(record);
    case epiDialogNotify:
        return s_pObject->DialogNotify(record);
    case epiDestroySettingDialog:
        return s_pObject->DestroySettingDialog(record);
    case epiDoFilter:
        return s_pObject->DoFilter(record);
    case epiSerialize:
        return s_pObject->Serialize(record);
    case epiCalcRenderBound:
        return s_pObject->CalcRenderBound(record);
    default: // from a newer host
        return EPI_UNKNOWN_SELECTOR;
    }
}
