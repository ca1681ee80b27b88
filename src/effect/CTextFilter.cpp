// SPDX-License-Identifier: BSD-3-Clause
// One frame: makes sure that what the renderer reads ends where its field ends, and hands it over.
#include <cmath>

#include "effect/CText.h"
#include "effect/PIHandle.h"
#include "render/PIOffscreen.h"
#include "render/TerminatedFields.h"

namespace {

// The switch is on when the value's integer part is not 0: NaN is off, infinite and huge values are
// on.
bool IsApplied(const _EPIRECORD& record) {
    return std::fabs(record.pParamValues[0]) >= 1.0;
}

long DrawText(PIOffscreen& image, const _EPIRECORD& record, const _TEXTPARAM& param) {
    _TEXTPARAM text = render::TerminatedCopy(param);
    const render::InfoStrings infos(record);
    tagPOINT origin = record.ptOrigin; // the packed record gives no address that may be kept
    return CText::DoText(&image, &text, nullptr, infos.Get(0), infos.Get(1), infos.Get(2),
                         infos.Get(3), record.dScale, &origin);
}

} // namespace

// bInfoPresent is not asked: a host that has no information strings leaves them empty.
long CText::DoFilter(_EPIRECORD* record) {
    PIOffscreen image(record->pObjectProcs, record->pOffscreenProcs, record->hDestination, 0);
    PIHandle handle(record->pObjectProcs, record->pHandleProcs, record->hFixedParam);
    const auto* param = static_cast<const _TEXTPARAM*>(handle.Lock());
    if (!param)
        return 0;
    return IsApplied(*record) ? DrawText(image, *record, *param) : 0;
}
