// SPDX-License-Identifier: BSD-3-Clause
// The base of the wrappers over host objects: releases the object if the wrapper's user made it.
#pragma once

#include <cstdint>

#include <epi/epi.h>

class PIObject {
public:
    // kind 0: the host owns the object. Another kind (epiObjectImage, epiObjectArchive): the object
    // was made with the table's Create and is released with the same kind.
    PIObject(const EPIObjectProcs* procs, EPIObjectRef object, std::int32_t kind)
        : pObjectProcs(procs), m_object(object), m_kind(kind) {}
    PIObject(const PIObject&) = delete;
    PIObject& operator=(const PIObject&) = delete;
    virtual ~PIObject() {
        if (m_object && m_kind != 0)
            pObjectProcs->Release(m_object, m_kind);
        m_object = nullptr;
        m_kind = 0;
    }

    EPIObjectRef Object() const { return m_object; }

protected:
    const EPIObjectProcs* pObjectProcs;
    EPIObjectRef m_object;
    std::int32_t m_kind;
};
