// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/Track.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <span>
#include <utility>

namespace host {

namespace {

constexpr std::array<std::string_view, 10> kPlaces { "none",        "top-left",    "top",
                                                     "top-right",   "left",        "centre",
                                                     "right",       "bottom-left", "bottom",
                                                     "bottom-right" };
constexpr std::array<std::string_view, 5> kAreas { "frame", "action", "title", "action90",
                                                   "title80" };

template <class Value>
bool Named(std::span<const std::string_view> names, std::string_view name, Value& value) {
    const auto found = std::ranges::find(names, name);
    if (found == names.end())
        return false;
    value = static_cast<Value>(found - names.begin());
    return true;
}

} // namespace

const Cue* Track::CueAt(std::int64_t frame) const {
    // Behind those that begin too late; a long one may begin far before.
    auto cue = std::ranges::upper_bound(cues, frame, {}, &Cue::first);
    while (cue != cues.begin())
        if ((--cue)->Contains(frame))
            return &*cue;
    return nullptr;
}

void Track::SortCues() {
    std::ranges::stable_sort(cues, {}, &Cue::first);
}

bool Track::operator==(const Track& other) const {
    return name == other.name && std::memcmp(&settings, &other.settings, sizeof settings) == 0 &&
           anchor == other.anchor && referenceHeight == other.referenceHeight &&
           on.ToString() == other.on.ToString() && isShown == other.isShown &&
           isLocked == other.isLocked && cues == other.cues;
}

TextKind KindOf(const _TEXTPARAM& settings) {
    return settings.dwFlags & TEXT_SCORE       ? TextKind::kScore
           : settings.dwFlags & TEXT_INFO      ? TextKind::kInfo
           : settings.dwFlags & TEXT_CHARACTER ? TextKind::kCharacter
           : settings.dwFlags & TEXT_DIALOGUE  ? TextKind::kDialogue
                                               : TextKind::kNone;
}

const std::string& CueText(const Cue& cue, TextKind kind) {
    return kind == TextKind::kCharacter ? cue.character : cue.text;
}

std::string_view NameOf(AnchorPlace place) {
    return kPlaces[static_cast<std::size_t>(place)];
}

std::string_view NameOf(AnchorArea area) {
    return kAreas[static_cast<std::size_t>(area)];
}

bool PlaceNamed(std::string_view name, AnchorPlace& place) {
    return Named(kPlaces, name == "center" ? "centre" : name, place);
}

bool AreaNamed(std::string_view name, AnchorArea& area) {
    return Named(kAreas, name, area);
}

std::string MarginText(const Margin& margin) {
    std::array<char, 32> digits {};
    const auto end = std::to_chars(digits.begin(), digits.end(), margin.value);
    return std::string(digits.begin(), end.ptr) + (margin.perCent ? "%" : "");
}

bool MarginFrom(std::string_view text, Margin& margin) {
    const bool perCent = text.ends_with('%');
    text.remove_suffix(perCent ? 1 : 0);
    double value = 0;
    const auto end = std::from_chars(text.begin(), text.end(), value);
    if (end.ec != std::errc() || end.ptr != text.end() ||
        !(std::abs(value) <= Margin::kMarginMax)) // no number is not within the bounds either
        return false;
    margin = { value, perCent };
    return true;
}

} // namespace host
