// SPDX-License-Identifier: BSD-3-Clause
// What the wrappers over the host's tables have in common, and their base: releases the object if the
// wrapper's user made it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <utility>

#include <epi/epi.h>

// Whether an exception is on its way that was not when this was made.
class Unwinding {
public:
    bool HasBegun() const { return std::uncaught_exceptions() > m_before; }

private:
    int m_before = std::uncaught_exceptions();
};

// Calls the host when its scope ends, so that of several in a destructor each is called whatever the
// others throw. What the host throws passes on, unless another exception is on its way: that one goes
// on then.
template <class Call>
class AtEnd {
public:
    AtEnd(const Unwinding& unwinding, Call call)
        : m_unwinding(unwinding), m_call(std::move(call)) {}
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() noexcept(false) {
        try {
            m_call();
        } catch (...) {
            if (!m_unwinding.HasBegun())
                throw;
        }
    }

private:
    const Unwinding m_unwinding;
    Call m_call;
};

// A call out of a table of the host, which opens with its own size: that of an older host ends earlier.
// Null when there is no table, or it ends before the entry, or holds null there.
template <class Table, class Entry>
Entry FindEntry(const Table* table, Entry Table::*entry) {
    if (!table)
        return nullptr;
    const auto offset = reinterpret_cast<const std::byte*>(&(table->*entry)) -
                        reinterpret_cast<const std::byte*>(table);
    const auto end = static_cast<std::size_t>(offset) + sizeof(Entry);
    return end <= table->nSize ? table->*entry : nullptr;
}

class PIObject {
public:
    // kind 0: the host owns the object. Another kind (epiObjectImage, epiObjectArchive): the object
    // was made with the table's Create and is released with the same kind.
    PIObject(const EPIObjectProcs* procs, EPIObjectRef object, std::int32_t kind)
        : pObjectProcs(procs), m_object(object), m_kind(kind) {}
    PIObject(const PIObject&) = delete;
    PIObject& operator=(const PIObject&) = delete;
    virtual ~PIObject() noexcept(false) {
        const AtEnd release(m_unwinding, [this] {
            if (m_object && m_kind != 0)
                pObjectProcs->Release(m_object, m_kind);
        });
    }

    EPIObjectRef Object() const { return m_object; }

protected:
    const EPIObjectProcs* pObjectProcs;
    EPIObjectRef m_object;
    std::int32_t m_kind;
    const Unwinding m_unwinding;
};
