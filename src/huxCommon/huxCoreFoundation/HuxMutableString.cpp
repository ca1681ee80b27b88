// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxCoreFoundation/HuxMutableString.h"

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
