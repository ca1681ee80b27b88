// SPDX-License-Identifier: BSD-3-Clause
// The dialogs and their host: the parameters that it keeps, and what it is told where it wants to know:
// a table or an entry that is not there is skipped.
#pragma once

#include <epi/epi.h>

#include "effect/PIHandle.h"

// The host's text parameters, pinned while this lives. Null when the host cannot pin them.
class LockedParam {
public:
    explicit LockedParam(const _EPIRECORD& record)
        : m_handle(record.pObjectProcs, record.pHandleProcs, record.hFixedParam),
          m_param(static_cast<_TEXTPARAM*>(m_handle.Lock())) {}

    explicit operator bool() const { return m_param != nullptr; }
    _TEXTPARAM* operator->() const { return m_param; }
    _TEXTPARAM& operator*() const { return *m_param; }

private:
    PIHandle m_handle;
    _TEXTPARAM* m_param;
};

// Tells the host that a text edit dialog's window was made, once more when it answers 0.
inline void TellEditorOpened(const _EPIRECORD& record) {
    const auto call = FindEntry(record.pHostProcs, &EPIHostProcs::Call);
    if (call && call(1) == 0)
        call(0);
}
