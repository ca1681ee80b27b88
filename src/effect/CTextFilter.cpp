// SPDX-License-Identifier: BSD-3-Clause
// One frame: makes sure that what the renderer reads ends where its field ends, and hands it over.
#include <cmath>
#include <cstring>

#include "effect/CText.h"
#include "effect/PIHandle.h"
#include "render/PIOffscreen.h"

namespace {

// A host's string of up to 64 bytes, with the NUL that the field itself may lack.
class InfoString {
public:
    explicit InfoString(const char (&field)[64]) { std::memcpy(m_text, field, sizeof field); }
    const char* Get() const { return m_text; }

private:
    char m_text[65] = {};
};

// The switch is on when the value's integer part is not 0: NaN is off, infinite and huge values are
// on.
bool IsApplied(const _EPIRECORD& record) {
    return std::fabs(record.pParamValues[0]) >= 1.0;
}

template <std::size_t size>
void Terminate(char (&field)[size]) {
    field[size - 1] = '\0';
}

// A file can hold strings that fill their field. They lose their last byte, in the copy only.
_TEXTPARAM TerminatedCopy(const _TEXTPARAM& param) {
    _TEXTPARAM copy = param;
    Terminate(copy.szFontName);
    Terminate(copy.szInfoText);
    Terminate(copy.szCharacter);
    Terminate(copy.szDialogue);
    return copy;
}

long DrawText(PIOffscreen& image, const _EPIRECORD& record, const _TEXTPARAM& param) {
    _TEXTPARAM text = TerminatedCopy(param);
    const InfoString info1(record.szInfo1);
    const InfoString info2(record.szInfo2);
    const InfoString info3(record.szInfo3);
    const InfoString info4(record.szInfo4);
    tagPOINT origin = record.ptOrigin; // the packed record gives no address that may be kept
    return CText::DoText(&image, &text, nullptr, info1.Get(), info2.Get(), info3.Get(), info4.Get(),
                         record.dScale, &origin);
}

} // namespace

// bInfoPresent is not asked: a host that has no information strings leaves them empty.
long CText::DoFilter(_EPIRECORD* record) {
    PIOffscreen image(record->pObjectProcs, record->pOffscreenProcs, record->hDestination, 0);
    PIHandle handle(record->pObjectProcs, record->pHandleProcs, record->hFixedParam);
    const auto* param = static_cast<const _TEXTPARAM*>(handle.Lock());
    if (!param)
        return 0;
    const long status = IsApplied(*record) ? DrawText(image, *record, *param) : 0;
    handle.Unlock();
    return status;
}
