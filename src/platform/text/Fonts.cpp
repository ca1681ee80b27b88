// SPDX-License-Identifier: BSD-3-Clause
// The calls of Fonts.h over the catalogue.
#include "platform/Fonts.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

#include "platform/LruCache.h"
#include "platform/TextContext.h"
#include "platform/text/FontCatalog.h"

namespace platform {
namespace {

using text::Family;
using text::FontCatalog;

struct Understood {
    FontMatch match;
    Family* family; // null only without any font
};

Understood Understand(std::string_view name) {
    FontCatalog& catalog = FontCatalog::Get();
    if (Family* const family = catalog.Find(name))
        return { FontMatch::kInstalled, family };
    if (Family* const family = catalog.FindAlias(name))
        return { FontMatch::kAlias, family };
    return { FontMatch::kUnknown, catalog.Default() };
}

std::string ReasonOf(const Understood& understood) {
    switch (understood.match) {
    case FontMatch::kInstalled:
        return "";
    case FontMatch::kAlias:
        return "it is not installed, and this family has the same design and script";
    case FontMatch::kUnknown:
        break;
    }
    return understood.family ? "no installed family has this name" : "no font is installed";
}

FontResolution ResolutionOf(const Understood& understood) {
    FontResolution resolution { understood.match, "", "", ReasonOf(understood) };
    if (understood.family) {
        resolution.family = understood.family->name;
        resolution.file = understood.family->regular.file;
    }
    return resolution;
}

// What this thread's last names came to. Only known names are kept: the unknown ones go on to the
// reports each time, which may have been forgotten meanwhile.
class NameMemo {
public:
    const FontNumber* Find(std::uint64_t hash, std::string_view name,
                           std::uint32_t encoding) const {
        const Entry& entry = m_entries[hash % kEntries];
        const bool same = entry.encoding == encoding && entry.name == name;
        return same ? &entry.number : nullptr;
    }
    void Keep(std::uint64_t hash, std::string_view name, std::uint32_t encoding,
              FontNumber number) {
        m_entries[hash % kEntries] = { std::string(name), encoding, number };
    }

private:
    static constexpr std::size_t kEntries = 32;
    struct Entry {
        std::string name;
        std::uint32_t encoding = 0; // serials start at 1
        FontNumber number = 0;
    };
    Entry m_entries[kEntries];
};

} // namespace

void GetFNum(const std::uint8_t* name, FontNumber* number) {
    thread_local NameMemo memo;
    const std::string_view bytes(reinterpret_cast<const char*>(name) + 1, name[0]);
    *number = 0;
    if (bytes.empty())
        return;
    const std::uint32_t encoding = TextContext::Current().Encoding().Serial();
    const std::uint64_t hash = HashBytes(encoding, bytes);
    if (const FontNumber* const kept = memo.Find(hash, bytes, encoding)) {
        *number = *kept;
        return;
    }
    const std::string asked = DecodeText(bytes);
    const Understood understood = Understand(asked);
    if (understood.match == FontMatch::kUnknown) {
        const FontResolution resolution = ResolutionOf(understood);
        TextContext::Current().Tell(
            { ReportKind::kFontSubstituted, asked, resolution.family, resolution.reason });
        return;
    }
    *number = FontCatalog::Get().NumberOf(*understood.family);
    memo.Keep(hash, bytes, encoding, *number);
}

void GetFontName(FontNumber number, std::uint8_t* name) {
    name[0] = 0;
    const FontCatalog& catalog = FontCatalog::Get();
    if (!catalog.IsGiven(number))
        return;
    const EncodedText encoded = EncodeText(catalog.ByNumber(number)->name);
    const std::string_view bytes = CutToWholeCharacters(encoded.bytes, 255);
    name[0] = static_cast<std::uint8_t>(bytes.size());
    std::memcpy(name + 1, bytes.data(), bytes.size());
}

FontResolution ResolveFontFamily(std::string_view name) {
    return ResolutionOf(Understand(name));
}

std::vector<FontFamily> InstalledFontFamilies() {
    std::vector<FontFamily> families;
    for (const Family* family : FontCatalog::Get().Sorted())
        families.push_back({ family->name, family->aliases, family->regular.file });
    return families;
}

std::vector<FontAlias> FontAliases() {
    std::vector<FontAlias> aliases;
    for (const text::AliasEntry& entry : text::AliasTable()) {
        for (const char* const asked : entry.names) {
            const Family* const family = FontCatalog::Get().FindAlias(asked);
            aliases.push_back({ asked, family ? family->name : "" });
        }
    }
    return aliases;
}

} // namespace platform
