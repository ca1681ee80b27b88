// SPDX-License-Identifier: BSD-3-Clause
// Text that does not change, over a platform string: made from and given as bytes of the
// application's text encoding, length-prefixed strings, UTF-8 or Unicode characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "huxCommon/huxCoreFoundation/HuxCFObject.h"

class HuxString {
public:
    HuxString();
    // Bytes in the application's text encoding up to the NUL; null is empty.
    HuxString(const char* text);
    // A length-prefixed string in the application's text encoding; null is empty.
    explicit HuxString(const unsigned char* pascalText);
    // Shares the string; null is empty.
    explicit HuxString(platform::CFStringRef string);
    explicit HuxString(std::u32string_view characters);

    static HuxString FromUTF8(std::string_view utf8);
    static HuxString FromInteger(long value); // decimal digits, as "%ld" writes them
    // Takes over the count of a string from a "Create" or "Copy" call; null is empty.
    static HuxString Adopt(platform::CFStringRef counted);
    // The text for key in the bundle's string table (null: the main bundle), in the user's language;
    // the key itself when the table lacks it.
    static HuxString Localized(platform::CFBundleRef bundle, std::string_view key);

    // Lent, never null; good as long as this text.
    platform::CFStringRef GetCFString() const { return m_ref.Get(); }
    std::string_view GetUTF8() const { return platform::CFStringGetUTF8(m_ref.Get()); }

    bool IsEmpty() const { return GetUTF8().empty(); }
    std::size_t GetLength() const; // in Unicode characters
    std::u32string GetCharacters() const;

    // To the application's text encoding, with a NUL and cut to whole characters within size bytes;
    // false when something had to be left out.
    bool GetCString(char* buffer, std::size_t size) const;
    std::string GetBytes() const; // the same, whole; what the encoding lacks is '?'
    // buffer has room for 256 bytes.
    bool GetPascalString(unsigned char* buffer) const;

    bool operator==(const HuxString& other) const { return GetUTF8() == other.GetUTF8(); }

protected:
    void Assign(std::u32string_view characters);

private:
    explicit HuxString(const HuxCFObject<platform::CFStringRef>& string);

    HuxCFObject<platform::CFStringRef> m_ref; // never null
};

// Text that is put together and cut down, character by character of Unicode.
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
