// SPDX-License-Identifier: BSD-3-Clause
// The way of the parameters into the host's archives and back.
#include "effect/CText.h"
#include "effect/PIArchive.h"
#include "effect/PIHandle.h"

namespace {

// Has the parameters in the byte order of archives for as long as it lives.
class ArchiveOrder {
public:
    explicit ArchiveOrder(_TEXTPARAM& param) : m_param(param) { CText::SwapTextParam(m_param); }
    ArchiveOrder(const ArchiveOrder&) = delete;
    ArchiveOrder& operator=(const ArchiveOrder&) = delete;
    ~ArchiveOrder() { CText::SwapTextParam(m_param); }

private:
    _TEXTPARAM& m_param;
};

// A read that ends early leaves the fields that it did not reach as they were: they change their
// order with the others before it and after it.
void Load(PIArchive& archive, _TEXTPARAM& param) {
    const ArchiveOrder order(param);
    archive.Read(&param, sizeof param);
}

// The host may change the buffer that it is given, so it gets a copy.
void Save(PIArchive& archive, const _TEXTPARAM& param) {
    _TEXTPARAM copy = param;
    CText::SwapTextParam(copy);
    archive.Write(&copy, sizeof copy);
}

} // namespace

// The archive's framing is the host's, so it alone can tell whether an entry was whole.
long CText::Serialize(_EPIRECORD* record) {
    PIArchive archive(record->pObjectProcs, record->pArchiveProcs, record->hArchive);
    PIHandle handle(record->pObjectProcs, record->pHandleProcs, record->hFixedParam);
    auto* param = static_cast<_TEXTPARAM*>(handle.Lock());
    if (!param)
        return 0;
    if (archive.IsLoading())
        Load(archive, *param);
    else
        Save(archive, *param);
    return 0;
}
