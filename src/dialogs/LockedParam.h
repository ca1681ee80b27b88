// SPDX-License-Identifier: BSD-3-Clause
// The host's text parameters, pinned while this lives. Null when the host cannot pin them.
#pragma once

#include <epi/epi.h>

#include "effect/PIHandle.h"

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
