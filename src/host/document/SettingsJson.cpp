// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/SettingsJson.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>

#include "host/document/RecordJson.h"
#include "host/text/ColorText.h"
#include "host/text/TextField.h"

namespace host {

namespace {

constexpr std::array<std::pair<std::string_view, std::uint32_t>, 4> kKinds { {
    { "score", TEXT_SCORE },
    { "info", TEXT_INFO },
    { "character", TEXT_CHARACTER },
    { "dialogue", TEXT_DIALOGUE },
} };
constexpr std::array<std::pair<std::string_view, std::uint32_t>, 3> kSwitches { {
    { "box", TEXT_BOX },
    { "off", TEXT_OFFCHARACTER },
    { "monologue", TEXT_MONOLOGUE },
} };
constexpr std::uint32_t kNamedFlags = kTextKinds | TEXT_BOX | TEXT_OFFCHARACTER | TEXT_MONOLOGUE;
constexpr std::int64_t kUint32Max = std::numeric_limits<std::uint32_t>::max();

// To JSON ----------------------------------------------------------------------------------------

Json KindToJson(std::uint32_t flags) {
    Json names = Json::array();
    for (const auto& [name, flag] : kKinds)
        if (flags & flag)
            names.push_back(name);
    return names.size() == 1 ? names.front() : names;
}

Json ColorToJson(COLORREF color) {
    return color >> 24 ? Json(color) : Json(FormatColor(color));
}

std::string TextToJson(std::span<const char> field) {
    std::string text;
    auto bytes = FieldBytes(field);
    while (!bytes.empty()) {
        const auto line = bytes.substr(0, bytes.find('\r'));
        text += EscapeBytes(line);
        bytes.remove_prefix(line.size());
        if (!bytes.empty()) {
            text += '\n';
            bytes.remove_prefix(1);
        }
    }
    return text;
}

// From JSON --------------------------------------------------------------------------------------

std::uint32_t KindFlag(const Json& value) {
    const auto& name = TextOf(value);
    for (const auto& [known, flag] : kKinds)
        if (name == known)
            return flag;
    throw Refused { "'" + name + "' is no kind; the kinds are score, info, character, dialogue" };
}

std::uint32_t KindFlags(const Json& value) {
    if (!value.is_array())
        return KindFlag(value);
    std::uint32_t flags = 0;
    for (const auto& name : value)
        flags |= KindFlag(name);
    return flags;
}

tagPOINT Point(const Json& value) {
    if (!value.is_array() || value.size() != 2)
        throw Refused { "expected two numbers, [x, y]" };
    return { Int32Of(value[0]), Int32Of(value[1]) };
}

COLORREF Color(const Json& value) {
    if (value.is_number())
        return static_cast<COLORREF>(IntegerOf(value, 0, kUint32Max));
    std::string why;
    const auto color = ParseColor(TextOf(value), why);
    if (!color)
        throw Refused { why };
    return *color;
}

void SetFlags(_TEXTPARAM& param, std::uint32_t mask, std::uint32_t flags) {
    param.dwFlags = (param.dwFlags & ~mask) | (flags & mask);
}

void SetText(std::span<char> field, std::string_view key, const Json& value) {
    std::string why;
    const auto bytes = UnescapeBytes(WithCarriageReturns(TextOf(value)), why);
    if (!bytes)
        throw Refused { why };
    if (!SetFieldBytes(field, key, *bytes, why))
        throw Refused { why.substr(key.size() + 2) };
}

bool SetSwitch(_TEXTPARAM& param, std::string_view key, const Json& value) {
    for (const auto& [name, flag] : kSwitches) {
        if (key == name) {
            SetFlags(param, flag, BooleanOf(value) ? flag : 0);
            return true;
        }
    }
    return false;
}

bool SetStringField(_TEXTPARAM& param, std::string_view key, const Json& value) {
    const std::array<std::pair<std::string_view, std::span<char>>, 4> fields { {
        { "font", param.szFontName },
        { "info", param.szInfoText },
        { "character", param.szCharacter },
        { "dialogue", param.szDialogue },
    } };
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const auto& field) { return field.first == key; });
    if (found == fields.end())
        return false;
    SetText(found->second, key, value);
    return true;
}

void SetValue(_TEXTPARAM& param, std::string_view key, const Json& value) {
    if (SetSwitch(param, key, value) || SetStringField(param, key, value))
        return;
    if (key == "kind")
        SetFlags(param, kTextKinds, KindFlags(value));
    else if (key == "position")
        param.ptPos = Point(value);
    else if (key == "size")
        param.nFontSize = Int32Of(value);
    else if (key == "color")
        param.crText = Color(value);
    else if (key == "boxColor")
        param.crBack = Color(value);
    else if (key == "opacity")
        param.nOpacity = static_cast<std::int32_t>(IntegerOf(value, 0, 100));
    else if (key == "scoreFormat")
        param.nScoreFormat = static_cast<std::int32_t>(IntegerOf(value, 0, 3));
    else if (key == "otherFlags")
        SetFlags(param, ~kNamedFlags, static_cast<std::uint32_t>(IntegerOf(value, 0, kUint32Max)));
    else
        throw Refused {
            "no such setting; the settings are kind, position, font, size, color, box, "
            "boxColor, opacity, scoreFormat, info, character, dialogue, off, monologue"
        };
}

} // namespace

Json SettingsToValue(const _TEXTPARAM& param) {
    Json json;
    json["kind"] = KindToJson(param.dwFlags);
    json["position"] = { param.ptPos.x, param.ptPos.y };
    json["font"] = TextToJson(param.szFontName);
    json["size"] = param.nFontSize;
    json["color"] = ColorToJson(param.crText);
    json["box"] = (param.dwFlags & TEXT_BOX) != 0;
    json["boxColor"] = ColorToJson(param.crBack);
    json["opacity"] = param.nOpacity;
    json["scoreFormat"] = param.nScoreFormat;
    json["info"] = TextToJson(param.szInfoText);
    json["character"] = TextToJson(param.szCharacter);
    json["dialogue"] = TextToJson(param.szDialogue);
    json["off"] = (param.dwFlags & TEXT_OFFCHARACTER) != 0;
    json["monologue"] = (param.dwFlags & TEXT_MONOLOGUE) != 0;
    if (const auto other = param.dwFlags & ~kNamedFlags)
        json["otherFlags"] = other;
    return json;
}

void ReadSettings(const Json& json, _TEXTPARAM& param) {
    if (!json.is_object())
        throw Refused { "the settings are not one { ... } of keys and values" };
    for (const auto& [key, value] : json.items())
        Within(key, [&, &key = key, &value = value] { SetValue(param, key, value); });
}

std::string SettingsToJson(const _TEXTPARAM& param) {
    return SettingsToValue(param).dump(2) + "\n";
}

std::optional<_TEXTPARAM> SettingsFromJson(std::string_view json, const _TEXTPARAM& base,
                                           std::string& why) {
    auto param = base;
    try {
        ReadSettings(ParseStrict(json), param);
        return param;
    } catch (const Refused& refused) {
        why = refused.Text();
        return std::nullopt;
    }
}

} // namespace host
