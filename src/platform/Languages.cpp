// SPDX-License-Identifier: BSD-3-Clause
#include "platform/Languages.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace platform {
namespace {

std::string_view Environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string_view MessagesLocale() {
    for (const char* name : { "LC_ALL", "LC_MESSAGES", "LANG" }) {
        const std::string_view locale = Environment(name);
        if (!locale.empty())
            return locale;
    }
    return "";
}

void AddOnce(std::vector<std::string>& languages, std::string_view name) {
    if (!name.empty() && std::find(languages.begin(), languages.end(), name) == languages.end())
        languages.emplace_back(name);
}

// A locale reads language[_TERRITORY][.CODESET][@modifier]. One with a path in it would lead out of
// the bundle's folders.
void AddLocale(std::vector<std::string>& languages, std::string_view locale) {
    const std::string_view region = locale.substr(0, locale.find_first_of(".@"));
    if (region.find('/') != std::string_view::npos)
        return;
    if (region == "C" || region == "POSIX") {
        AddOnce(languages, "en");
        return;
    }
    AddOnce(languages, region);
    AddOnce(languages, region.substr(0, region.find('_')));
}

} // namespace

std::vector<std::string> LanguagesOf(std::string_view locales) {
    std::vector<std::string> languages;
    while (!locales.empty()) {
        const std::size_t end = std::min(locales.find(':'), locales.size());
        AddLocale(languages, locales.substr(0, end));
        locales.remove_prefix(std::min(end + 1, locales.size()));
    }
    AddOnce(languages, "en");
    return languages;
}

std::string LocalesOf(std::span<const std::string> languages) {
    std::string locales;
    for (const std::string& language : languages) {
        if (std::ranges::equal(LanguagesOf(locales), languages) && !locales.empty())
            break;
        locales += (locales.empty() ? "" : ":") + language;
    }
    return locales;
}

std::vector<std::string> UserLanguages() {
    return LanguagesOf(std::string(Environment("LANGUAGE")) + ":" + std::string(MessagesLocale()));
}

std::string IdeographLanguageOf(std::string_view locale) {
    std::string language(locale.substr(0, std::min<std::size_t>(5, locale.find_first_of(".@:"))));
    for (char& c : language)
        c = c == '_' ? '-' : c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    if (language == "zh")
        return "zh-cn";
    return language.starts_with("zh-") ? language : language.starts_with("ko") ? "ko" : "ja";
}

const std::string& UserIdeographLanguage() {
    static const auto& language = *new std::string([] {
        for (const char* name : { "LC_ALL", "LC_CTYPE", "LANG" }) {
            const std::string_view locale = Environment(name);
            if (!locale.empty())
                return IdeographLanguageOf(locale);
        }
        return IdeographLanguageOf("");
    }());
    return language;
}

} // namespace platform
