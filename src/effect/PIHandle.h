// SPDX-License-Identifier: BSD-3-Clause
// A scoped host handle: what it locked it unlocks, what it owns it disposes of.
#pragma once

#include "effect/PIObject.h"

enum class HandleOwner { kHost, kWrapper };

class PIHandle : public PIObject {
public:
    PIHandle(const EPIObjectProcs* objectProcs, const EPIHandleProcs* handleProcs,
             EPIHandleRef handle, HandleOwner owner = HandleOwner::kHost)
        : PIObject(objectProcs, handle, 0), pHandleProcs(handleProcs),
          m_owned(owner == HandleOwner::kWrapper) {}
    ~PIHandle() noexcept(false) override {
        const AtEnd dispose(m_unwinding, [this] {
            if (m_owned && m_object)
                pHandleProcs->Dispose(Handle());
        });
        const AtEnd unlock(m_unwinding, [this] { Unlock(); });
    }

    // The pinned memory, good until Unlock or the wrapper's end; null when the host cannot lock.
    void* Lock() {
        if (!m_locked && m_object)
            m_locked = pHandleProcs->Lock(Handle());
        return m_locked;
    }
    void Unlock() {
        if (!m_locked)
            return;
        m_locked = nullptr;
        pHandleProcs->Unlock(Handle());
    }

private:
    EPIHandleRef Handle() const { return static_cast<EPIHandleRef>(m_object); }

    const EPIHandleProcs* pHandleProcs;
    void* m_locked = nullptr;
    std::int32_t m_owned;
};
