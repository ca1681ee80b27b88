// SPDX-License-Identifier: BSD-3-Clause
#include "effect/EntryPoint.h"

#include <iterator>

#include "effect/CEPIObject.h"

CEPIObject* s_pObject = nullptr;

CEPIObject::CEPIObject() {
    s_pObject = this;
}
CEPIObject::~CEPIObject() = default;

namespace {

// By selector, in the order of the host's protocol, which is not that of the object's operations.
constexpr long (CEPIObject::*kOperations[])(_EPIRECORD*) = {
    &CEPIObject::Init,
    &CEPIObject::Term,
    &CEPIObject::InitFixedParam,
    &CEPIObject::InitSettings,
    &CEPIObject::ParamInfo,
    &CEPIObject::CreateSettingDialog,
    &CEPIObject::DialogNotify,
    &CEPIObject::DestroySettingDialog,
    &CEPIObject::DoFilter,
    &CEPIObject::Serialize,
    &CEPIObject::CalcRenderBound,
};
static_assert(std::size(kOperations) == epiCalcRenderBound + 1);

} // namespace

extern "C" long EntryPoint(long selector, _EPIRECORD* record) {
    if (selector < 0 || selector > epiCalcRenderBound) // from a newer host
        return EPI_UNKNOWN_SELECTOR;
    return (s_pObject->*kOperations[selector])(record);
}
