// SPDX-License-Identifier: BSD-3-Clause
// Owns one count of a counted platform object (CFStringRef, CFBundleRef).
#pragma once

#include <utility>

#include "platform/CoreFoundation.h"

template <class Ref>
class HuxCFObject {
public:
    HuxCFObject() = default;
    // Takes a count of its own; null is allowed.
    explicit HuxCFObject(Ref object) : m_ref(Retained(object)) {}
    HuxCFObject(const HuxCFObject& other) : HuxCFObject(other.m_ref) {}
    HuxCFObject(HuxCFObject&& other) noexcept : m_ref(std::exchange(other.m_ref, nullptr)) {}
    HuxCFObject& operator=(HuxCFObject other) noexcept {
        std::swap(m_ref, other.m_ref);
        return *this;
    }
    ~HuxCFObject() { Reset(); }

    // Takes over the count that a "Create" or "Copy" call gave.
    static HuxCFObject Adopt(Ref counted) {
        HuxCFObject object;
        object.m_ref = counted;
        return object;
    }

    Ref Get() const { return m_ref; }
    explicit operator bool() const { return m_ref != nullptr; }
    void Reset() {
        if (m_ref)
            platform::CFRelease(std::exchange(m_ref, nullptr));
    }

private:
    static Ref Retained(Ref object) {
        if (object)
            platform::CFRetain(object);
        return object;
    }

    Ref m_ref = nullptr;
};
