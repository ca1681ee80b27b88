// SPDX-License-Identifier: BSD-3-Clause
// The installed families and the faces that stand in for missing characters. Fontconfig is spoken
// to here only, and only from the first question on.
#pragma once

#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <fontconfig/fontconfig.h>

#include "platform/Fonts.h"
#include "platform/TextContext.h"
#include "platform/text/Face.h"

namespace platform::text {

// Whom to ask for characters that a family lacks.
struct FallbackOrder {
    std::once_flag sorted;
    std::shared_ptr<FcFontSet> fonts;                // best first
    std::unordered_map<char32_t, const Face*> known; // characters asked for, null for none
};

// A family with its regular face, and the faces to ask for characters that it lacks.
struct Family {
    std::string name;                 // English
    std::vector<std::string> aliases; // its names in other languages
    FaceLocation regular;
    int distance = 0; // of that face from an upright one of normal weight and width
    std::atomic<FontNumber> number { 0 };
    std::atomic<const Face*> face { nullptr };

    std::mutex mutex;                            // guards orders, and what is known in them
    std::map<std::string, FallbackOrder> orders; // by the language of ideographs
};

// Which families stand in for families of other systems: names only, whatever is installed.
struct AliasEntry {
    std::span<const char* const> names; // under which documents ask for it, the first for lists
    std::span<const char* const> candidates; // of the same design and script, best first
};
std::span<const AliasEntry> AliasTable();

class FontCatalog {
public:
    // Read on the first call.
    static FontCatalog& Get();

    // Null for an unknown name; UTF-8, without regard to case.
    Family* Find(std::string_view name) const;
    // By the table of aliases, null when nothing of it is installed or it lacks the name.
    Family* FindAlias(std::string_view name) const;
    // Null only when there is no drawable font at all.
    Family* Default() const { return m_default; }

    // The number of a family, given now when it had none; 0 when there are no numbers left.
    FontNumber NumberOf(Family& family);
    // The default family for a number that was not given.
    Family* ByNumber(FontNumber number) const;
    bool IsGiven(FontNumber number) const;

    // The family's face, or the default family's when its file is broken. Null without any font.
    const Face* FaceOf(Family& family);
    // Those of the families that are installed, in their order; the text context is told of the others.
    std::vector<const Face*> FacesOf(const FontFallbacks& fallbacks);
    // The first fallback of family, in the order for the text context's language, that has all of the characters; null when there is none.
    const Face* FallbackFor(Family& family, std::u32string_view characters);

    std::vector<const Family*> Sorted() const;

private:
    FontCatalog();
    void AddFont(FcPattern* font);
    Family& FamilyNamed(const std::string& name);
    void ResolveAliases();
    void ChooseDefault();
    const Face* Open(const FaceLocation& location);
    const Face* OpenAnyFace();
    FcFontSet* Sorted(Family& family, const std::string& language, FallbackOrder& order);
    const Face* SearchFallbacks(FcFontSet* fonts, std::u32string_view characters, bool& metBroken);

    std::shared_ptr<FcConfig> m_config;
    std::deque<Family> m_families;
    std::unordered_map<std::string, Family*> m_byName;  // folded names
    std::unordered_map<std::string, Family*> m_byAlias; // folded names of the table of aliases
    Family* m_default = nullptr;

    std::vector<std::atomic<Family*>> m_byNumber;
    std::mutex m_mutex; // guards what follows
    int m_lastNumber = 0;
    struct Opened {
        std::unique_ptr<Face> face; // null for a broken file
        std::string why;            // it is broken
    };
    std::map<FaceLocation, Opened> m_faces;
};

} // namespace platform::text
