// SPDX-License-Identifier: BSD-3-Clause
// Text that is put together and cut down, character by character of Unicode.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"

class HuxMutableString : public HuxString {
public:
    using HuxString::HuxString;
    HuxMutableString() = default;
    HuxMutableString(const HuxString& text) : HuxString(text) {}

    void Append(const HuxString& text);
    void Clear();
    // Cuts to the first count characters.
    void Truncate(std::size_t count);
    // The text without the characters of the set, and with no others than those.
    void RemoveCharacters(const HuxString& set);
    void KeepCharacters(const HuxString& set);
};
