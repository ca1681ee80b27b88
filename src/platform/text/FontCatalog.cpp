// SPDX-License-Identifier: BSD-3-Clause
// Reads the families from Fontconfig and finds them again by name, number or character.
#include "platform/text/FontCatalog.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <tuple>

namespace platform::text {
namespace {

constexpr std::size_t kMaxKnownCharacters = 1 << 14; // a family remembers at most so many

const FcChar8* AsFc(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}
const char* AsChar(const FcChar8* text) {
    return reinterpret_cast<const char*>(text);
}

template <auto free>
struct FreeWith {
    template <class Object>
    void operator()(Object* object) const {
        if (object)
            free(object);
    }
};
using Pattern = std::unique_ptr<FcPattern, FreeWith<FcPatternDestroy>>;

// Lower case by Unicode's rules, whatever the locale.
std::string Fold(std::string_view name) {
    const std::string terminated(name);
    const std::unique_ptr<FcChar8, FreeWith<FcStrFree>> folded(
        FcStrDowncase(AsFc(terminated.c_str())));
    if (!folded)
        throw std::bad_alloc();
    return AsChar(folded.get());
}

std::string StringOf(FcPattern* font, const char* object, int index = 0) {
    FcChar8* value = nullptr;
    return FcPatternGetString(font, object, index, &value) == FcResultMatch ? AsChar(value) : "";
}

int IntegerOf(FcPattern* font, const char* object, int otherwise) {
    double value = 0;
    return FcPatternGetDouble(font, object, 0, &value) == FcResultMatch ? static_cast<int>(value)
                                                                        : otherwise;
}

bool FlagOf(FcPattern* font, const char* object) {
    FcBool value = FcFalse;
    return FcPatternGetBool(font, object, 0, &value) == FcResultMatch && value == FcTrue;
}

// Outlines in a plain OpenType or TrueType file. A variable font comes in once more for each of its
// instances, and those are used. Compressed web fonts have no tables to map.
bool IsDrawable(FcPattern* font) {
    const std::string format = StringOf(font, FC_FONTFORMAT);
    return (format == "TrueType" || format == "CFF") && FlagOf(font, FC_OUTLINE) &&
           !FlagOf(font, FC_COLOR) && !FlagOf(font, FC_VARIABLE) &&
           !StringOf(font, FC_FILE).ends_with(".woff") &&
           !StringOf(font, FC_FILE).ends_with(".woff2");
}

FaceLocation LocationOf(FcPattern* font) {
    int index = 0;
    FcPatternGetInteger(font, FC_INDEX, 0, &index);
    return { StringOf(font, FC_FILE), index };
}

int DistanceFromRegular(FcPattern* font) {
    return std::abs(IntegerOf(font, FC_SLANT, FC_SLANT_ROMAN) - FC_SLANT_ROMAN) * 1000 +
           std::abs(IntegerOf(font, FC_WIDTH, FC_WIDTH_NORMAL) - FC_WIDTH_NORMAL) * 10 +
           std::abs(IntegerOf(font, FC_WEIGHT, FC_WEIGHT_REGULAR) - FC_WEIGHT_REGULAR);
}

// A pattern for the family with what the configuration and the language add to it. Behind the language
// the configuration also counts those of the environment.
Pattern PatternFor(FcConfig* config, const std::string& family, const char* language) {
    Pattern pattern(FcPatternCreate());
    if (!pattern || !FcPatternAddString(pattern.get(), FC_FAMILY, AsFc(family.c_str())) ||
        (language && !FcPatternAddString(pattern.get(), FC_LANG, AsFc(language))) ||
        !FcConfigSubstitute(config, pattern.get(), FcMatchPattern))
        throw std::bad_alloc();
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

void ReportBroken(const FaceLocation& location, const std::string& used, const std::string& why) {
    TextContext::Current().Tell({ ReportKind::kFontBroken, location.file, used, why });
}

} // namespace

FontCatalog& FontCatalog::Get() {
    // Never destroyed: other threads may still draw while the process ends.
    static FontCatalog* const catalog = new FontCatalog;
    return *catalog;
}

FontCatalog::FontCatalog()
    : m_config(FcInitLoadConfig(), FreeWith<FcConfigDestroy>()),
      m_byNumber(std::numeric_limits<FontNumber>::max() + 1) {
    if (!m_config || !FcConfigBuildFonts(m_config.get()))
        throw std::bad_alloc();
    for (const FcSetName set : { FcSetSystem, FcSetApplication }) {
        const FcFontSet* const fonts = FcConfigGetFonts(m_config.get(), set);
        for (int i = 0; fonts && i < fonts->nfont; ++i)
            if (IsDrawable(fonts->fonts[i]))
                AddFont(fonts->fonts[i]);
    }
    // Names in other languages never take a name that is some family's own.
    for (Family& family : m_families)
        for (const std::string& alias : family.aliases)
            m_byName.emplace(Fold(alias), &family);
    ResolveAliases();
    ChooseDefault();
}

Family& FontCatalog::FamilyNamed(const std::string& name) {
    Family*& family = m_byName[Fold(name)];
    if (!family) {
        family = &m_families.emplace_back();
        family->name = name;
        family->distance = std::numeric_limits<int>::max();
    }
    return *family;
}

// Each English name of the font is a family; a file may carry a narrower and a wider one. Names in
// other languages belong to the first.
void FontCatalog::AddFont(FcPattern* font) {
    std::vector<Family*> families;
    std::vector<std::string> others;
    for (int i = 0;; ++i) {
        const std::string name = StringOf(font, FC_FAMILY, i);
        if (name.empty())
            break;
        if (StringOf(font, FC_FAMILYLANG, i) == "en")
            families.push_back(&FamilyNamed(name));
        else
            others.push_back(name);
    }
    if (families.empty() && !others.empty()) {
        families.push_back(&FamilyNamed(others.front()));
        others.erase(others.begin());
    }
    const int distance = DistanceFromRegular(font);
    for (Family* family : families) {
        FaceLocation location = LocationOf(font);
        // The location decides between equals, so that the choice does not hang on their order.
        if (std::tie(distance, location) < std::tie(family->distance, family->regular)) {
            family->distance = distance;
            family->regular = std::move(location);
        }
    }
    for (const std::string& name : others) {
        std::vector<std::string>& aliases = families.front()->aliases;
        if (std::find(aliases.begin(), aliases.end(), name) == aliases.end())
            aliases.push_back(name);
    }
}

void FontCatalog::ResolveAliases() {
    for (const AliasEntry& entry : AliasTable()) {
        const auto installed =
            std::find_if(entry.candidates.begin(), entry.candidates.end(),
                         [this](const char* candidate) { return Find(candidate); });
        if (installed == entry.candidates.end())
            continue;
        for (const char* const name : entry.names)
            m_byAlias.emplace(Fold(name), Find(*installed));
    }
}

void FontCatalog::ChooseDefault() {
    const auto match = WithAllMemory([this] {
        const Pattern pattern = PatternFor(m_config.get(), "sans-serif", nullptr);
        FcResult result = FcResultNoMatch;
        return Pattern(FcFontMatch(m_config.get(), pattern.get(), &result));
    });
    if (match)
        m_default = Find(StringOf(match.get(), FC_FAMILY));
    if (!m_default && !m_families.empty())
        m_default = &m_families.front();
    m_byNumber[0] = m_default;
}

Family* FontCatalog::Find(std::string_view name) const {
    const auto found = m_byName.find(Fold(name));
    return found == m_byName.end() ? nullptr : found->second;
}

Family* FontCatalog::FindAlias(std::string_view name) const {
    const auto found = m_byAlias.find(Fold(name));
    return found == m_byAlias.end() ? nullptr : found->second;
}

FontNumber FontCatalog::NumberOf(Family& family) {
    if (const FontNumber number = family.number.load(std::memory_order_acquire))
        return number;
    const std::lock_guard lock(m_mutex);
    if (family.number == 0 && m_lastNumber + 1 < static_cast<int>(m_byNumber.size())) {
        ++m_lastNumber;
        m_byNumber[m_lastNumber].store(&family, std::memory_order_release);
        family.number.store(static_cast<FontNumber>(m_lastNumber), std::memory_order_release);
    }
    return family.number;
}

bool FontCatalog::IsGiven(FontNumber number) const {
    return number >= 0 && m_byNumber[number].load(std::memory_order_acquire);
}

Family* FontCatalog::ByNumber(FontNumber number) const {
    return IsGiven(number) ? m_byNumber[number].load(std::memory_order_acquire) : m_default;
}

const Face* FontCatalog::Open(const FaceLocation& location) {
    std::string why;
    {
        const std::lock_guard lock(m_mutex);
        auto found = m_faces.find(location);
        if (found == m_faces.end()) {
            std::unique_ptr<Face> face = Face::Open(location, why);
            found = m_faces.emplace(location, Opened { std::move(face), why }).first;
        }
        if (found->second.face)
            return found->second.face.get();
        why = found->second.why;
    }
    ReportBroken(location, m_default ? m_default->name : "", why);
    return nullptr;
}

const Face* FontCatalog::FaceOf(Family& family) {
    if (const Face* const face = family.face.load(std::memory_order_acquire))
        return face;
    if (const Face* const face = Open(family.regular)) {
        family.face.store(face, std::memory_order_release);
        return face;
    }
    // Not kept: everybody who asks is told of the broken file.
    return &family == m_default ? OpenAnyFace() : FaceOf(*m_default);
}

const Face* FontCatalog::OpenAnyFace() {
    for (const Family& family : m_families)
        if (const Face* const face = Open(family.regular))
            return face;
    return nullptr;
}

std::vector<const Face*> FontCatalog::FacesOf(const FontFallbacks& fallbacks) {
    std::vector<const Face*> faces;
    for (const std::string& name : fallbacks.families) {
        Family* family = Find(name);
        if (!family)
            family = FindAlias(name);
        if (!family)
            TextContext::Current().Tell({ ReportKind::kFontSubstituted, name, "",
                                          "it is to stand in for missing characters, and no "
                                          "installed family has this name" });
        else if (const Face* const face = Open(family->regular))
            faces.push_back(face);
    }
    return faces;
}

const Face* FontCatalog::FallbackFor(Family& family, std::u32string_view characters) {
    const std::string language = TextContext::Current().IdeographLanguage();
    FallbackOrder* order = nullptr;
    {
        const std::lock_guard lock(family.mutex);
        order = &family.orders[language];
        const auto found = order->known.find(characters[0]);
        if (characters.size() == 1 && found != order->known.end())
            return found->second;
    }
    bool metBroken = false;
    const Face* const face =
        SearchFallbacks(Sorted(family, language, *order), characters, metBroken);
    const std::lock_guard lock(family.mutex);
    // A search that met a broken file is made again, for whoever asks is told of it.
    if (characters.size() == 1 && order->known.size() < kMaxKnownCharacters && !metBroken)
        order->known.emplace(characters[0], face);
    return face;
}

// The configuration knows which families go together, so the order is asked for by family.
FcFontSet* FontCatalog::Sorted(Family& family, const std::string& language, FallbackOrder& order) {
    std::call_once(order.sorted, [&] {
        order.fonts = WithAllMemory([&] {
            const Pattern pattern = PatternFor(m_config.get(), family.name, language.c_str());
            FcResult result = FcResultNoMatch;
            return std::shared_ptr<FcFontSet>(
                FcFontSort(m_config.get(), pattern.get(), FcFalse, nullptr, &result),
                FreeWith<FcFontSetDestroy>());
        });
    });
    return order.fonts.get();
}

const Face* FontCatalog::SearchFallbacks(FcFontSet* fonts, std::u32string_view characters,
                                         bool& metBroken) {
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcPattern* const font = fonts->fonts[i];
        FcCharSet* charset = nullptr;
        if (!IsDrawable(font) ||
            FcPatternGetCharSet(font, FC_CHARSET, 0, &charset) != FcResultMatch ||
            !FcCharSetHasChar(charset, characters[0]))
            continue;
        const Face* const face = Open(LocationOf(font));
        metBroken = metBroken || !face;
        const auto has = [face](char32_t character) { return face->Has(character); };
        if (face && std::all_of(characters.begin(), characters.end(), has))
            return face;
    }
    return nullptr;
}

std::vector<const Family*> FontCatalog::Sorted() const {
    std::vector<std::pair<std::string, const Family*>> keyed;
    keyed.reserve(m_families.size());
    for (const Family& family : m_families)
        keyed.emplace_back(Fold(family.name), &family);
    std::sort(keyed.begin(), keyed.end());
    std::vector<const Family*> families;
    families.reserve(keyed.size());
    for (const auto& [key, family] : keyed)
        families.push_back(family);
    return families;
}

} // namespace platform::text
