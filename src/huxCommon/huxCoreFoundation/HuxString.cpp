// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxCoreFoundation/HuxString.h"

#include <algorithm>

#include "platform/TextEncoding.h"
#include "platform/Utf8.h"

using namespace platform;

namespace {

using CountedString = HuxCFObject<CFStringRef>;

CountedString Create(std::string_view utf8) {
    return CountedString::Adopt(CFStringCreateWithUTF8(utf8));
}

const CountedString& Empty() {
    static const CountedString empty = Create({});
    return empty;
}

bool IsScalarValue(char32_t character) {
    return character < 0xD800 || (character > 0xDFFF && character <= 0x10FFFF);
}

std::string EncodeUTF8(std::u32string_view characters) {
    std::string utf8;
    for (const char32_t character : characters)
        AppendUtf8(utf8, IsScalarValue(character) ? character : kReplacementCharacter);
    return utf8;
}

// Takes the first character off the text; a byte that belongs to none is one that cannot be shown.
char32_t TakeCharacter(std::string_view& utf8) {
    const std::size_t length = Utf8SequenceLength(utf8);
    const char32_t character = length ? Utf8Value(utf8.substr(0, length)) : kReplacementCharacter;
    utf8.remove_prefix(length ? length : 1);
    return character;
}

std::string_view PascalBytes(const unsigned char* text) {
    if (!text)
        return {};
    return { reinterpret_cast<const char*>(text + 1), text[0] };
}

} // namespace

HuxString::HuxString(const CountedString& string) : m_ref(string ? string : Empty()) {}

HuxString::HuxString() : HuxString(Empty()) {}

HuxString::HuxString(const char* text)
    : HuxString(text ? Create(DecodeText(text)) : CountedString()) {}

HuxString::HuxString(const unsigned char* pascalText)
    : HuxString(Create(DecodeText(PascalBytes(pascalText)))) {}

HuxString::HuxString(CFStringRef string) : HuxString(CountedString(string)) {}

HuxString::HuxString(std::u32string_view characters) : HuxString(Create(EncodeUTF8(characters))) {}

HuxString HuxString::FromUTF8(std::string_view utf8) {
    return HuxString(Create(utf8));
}

HuxString HuxString::FromInteger(long value) {
    return FromUTF8(std::to_string(value));
}

HuxString HuxString::Adopt(CFStringRef counted) {
    return HuxString(CountedString::Adopt(counted));
}

HuxString HuxString::Localized(CFBundleRef bundle, std::string_view key) {
    const std::string value(key);
    return Adopt(CFBundleCopyLocalizedString(bundle ? bundle : CFBundleGetMainBundle(), key,
                                             value.c_str(), nullptr));
}

std::size_t HuxString::GetLength() const {
    return GetCharacters().size();
}

std::u32string HuxString::GetCharacters() const {
    std::u32string characters;
    for (std::string_view rest = GetUTF8(); !rest.empty();)
        characters.push_back(TakeCharacter(rest));
    return characters;
}

bool HuxString::GetCString(char* buffer, std::size_t size) const {
    return CFStringGetCString(m_ref.Get(), buffer, size);
}

std::string HuxString::GetBytes() const {
    return EncodeText(GetUTF8()).bytes;
}

bool HuxString::GetPascalString(unsigned char* buffer) const {
    const EncodedText encoded = EncodeText(GetUTF8());
    const std::string_view fits = CutToWholeCharacters(encoded.bytes, 255);
    buffer[0] = static_cast<unsigned char>(fits.size());
    std::ranges::copy(fits, buffer + 1);
    return encoded.complete && fits.size() == encoded.bytes.size();
}

void HuxString::Assign(std::u32string_view characters) {
    m_ref = Create(EncodeUTF8(characters));
}

// Text that changes ------------------------------------------------------------------------------

void HuxMutableString::Append(const HuxString& text) {
    Assign(GetCharacters() + text.GetCharacters());
}

void HuxMutableString::Clear() {
    Assign({});
}

void HuxMutableString::Truncate(std::size_t count) {
    Assign(GetCharacters().substr(0, count));
}

void HuxMutableString::RemoveCharacters(const HuxString& set) {
    std::u32string characters = GetCharacters();
    std::erase_if(characters, [in = set.GetCharacters()](char32_t character) {
        return in.find(character) != std::u32string::npos;
    });
    Assign(characters);
}

void HuxMutableString::KeepCharacters(const HuxString& set) {
    std::u32string characters = GetCharacters();
    std::erase_if(characters, [in = set.GetCharacters()](char32_t character) {
        return in.find(character) == std::u32string::npos;
    });
    Assign(characters);
}
