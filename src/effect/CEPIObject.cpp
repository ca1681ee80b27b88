// SPDX-License-Identifier: BSD-3-Clause
#include "effect/CEPIObject.h"

CEPIObject* s_pObject = nullptr;

CEPIObject::CEPIObject() {
    s_pObject = this;
}
CEPIObject::~CEPIObject() = default;

long CEPIObject::Init(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::Term(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::InitFixedParam(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::InitSettings(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::ParamInfo(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::Serialize(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::CreateSettingDialog(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::DialogNotify(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::DestroySettingDialog(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::CalcRenderBound(_EPIRECORD* /*record*/) {
    return 0;
}
long CEPIObject::DoFilter(_EPIRECORD* /*record*/) {
    return 0;
}
