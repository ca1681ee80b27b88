// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TextSettings.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <set>
#include <span>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/text/ColorText.h"
#include "host/text/TextField.h"

namespace host {

namespace {

using Json = nlohmann::ordered_json;

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
constexpr std::int64_t kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kInt32Max = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kUint32Max = std::numeric_limits<std::uint32_t>::max();

// ------------------------------------------------------------------------------------- to JSON

Json KindToJson(std::uint32_t flags) {
    Json names = Json::array();
    for (auto const& [name, flag] : kKinds) {
        if (flags & flag)
            names.push_back(name);
    }
    return names.size() == 1 ? names.front() : names;
}

Json ColorToJson(COLORREF color) {
    return color >> 24 ? Json(color) : Json(FormatColor(color));
}

std::string TextToJson(std::span<const char> field) {
    std::string text;
    auto bytes = FieldBytes(field);
    while (!bytes.empty()) {
        auto const line = bytes.substr(0, bytes.find('\r'));
        text += EscapeBytes(line);
        bytes.remove_prefix(line.size());
        if (!bytes.empty()) {
            text += '\n';
            bytes.remove_prefix(1);
        }
    }
    return text;
}

// ----------------------------------------------------------------------------------- from JSON

// A reason why a value was refused, without the key. Thrown only inside this file.
struct Refused {
    std::string reason;
};

std::int64_t Integer(const Json& value, std::int64_t least, std::int64_t most) {
    if (!value.is_number_integer())
        throw Refused { "expected a whole number" };
    bool const tooLarge =
        value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
    if (tooLarge || value.get<std::int64_t>() < least || value.get<std::int64_t>() > most)
        throw Refused { value.dump() + " is outside " + std::to_string(least) + " to " +
                        std::to_string(most) };
    return value.get<std::int64_t>();
}

std::int32_t Int32(const Json& value, std::int64_t least = kInt32Min,
                   std::int64_t most = kInt32Max) {
    return static_cast<std::int32_t>(Integer(value, least, most));
}

const std::string& String(const Json& value) {
    if (!value.is_string())
        throw Refused { "expected a text" };
    return value.get_ref<const std::string&>();
}

std::uint32_t KindFlag(const Json& value) {
    auto const& name = String(value);
    for (auto const& [known, flag] : kKinds) {
        if (name == known)
            return flag;
    }
    throw Refused { "'" + name + "' is no kind; the kinds are score, info, character, dialogue" };
}

std::uint32_t KindFlags(const Json& value) {
    if (!value.is_array())
        return KindFlag(value);
    std::uint32_t flags = 0;
    for (auto const& name : value)
        flags |= KindFlag(name);
    return flags;
}

tagPOINT Point(const Json& value) {
    if (!value.is_array() || value.size() != 2)
        throw Refused { "expected two numbers, [x, y]" };
    return { Int32(value[0]), Int32(value[1]) };
}

COLORREF Color(const Json& value) {
    if (value.is_number())
        return static_cast<COLORREF>(Integer(value, 0, kUint32Max));
    std::string why;
    auto const color = ParseColor(String(value), why);
    if (!color)
        throw Refused { why };
    return *color;
}

bool Boolean(const Json& value) {
    if (!value.is_boolean())
        throw Refused { "expected true or false" };
    return value.get<bool>();
}

void SetFlags(_TEXTPARAM& param, std::uint32_t mask, std::uint32_t flags) {
    param.dwFlags = (param.dwFlags & ~mask) | (flags & mask);
}

void SetText(std::span<char> field, std::string_view key, const Json& value) {
    std::string why;
    auto const bytes = UnescapeBytes(WithCarriageReturns(String(value)), why);
    if (!bytes)
        throw Refused { why };
    if (!SetFieldBytes(field, key, *bytes, why))
        throw Refused { why.substr(key.size() + 2) };
}

bool SetSwitch(_TEXTPARAM& param, std::string_view key, const Json& value) {
    for (auto const& [name, flag] : kSwitches) {
        if (key == name) {
            SetFlags(param, flag, Boolean(value) ? flag : 0);
            return true;
        }
    }
    return false;
}

bool SetStringField(_TEXTPARAM& param, std::string_view key, const Json& value) {
    std::array<std::pair<std::string_view, std::span<char>>, 4> const fields { {
        { "font", param.szFontName },
        { "info", param.szInfoText },
        { "character", param.szCharacter },
        { "dialogue", param.szDialogue },
    } };
    auto const found = std::find_if(fields.begin(), fields.end(),
                                    [&](auto const& field) { return field.first == key; });
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
        param.nFontSize = Int32(value);
    else if (key == "color")
        param.crText = Color(value);
    else if (key == "boxColor")
        param.crBack = Color(value);
    else if (key == "opacity")
        param.nOpacity = Int32(value, 0, 100);
    else if (key == "scoreFormat")
        param.nScoreFormat = Int32(value, 0, 3);
    else if (key == "otherFlags")
        SetFlags(param, ~kNamedFlags, static_cast<std::uint32_t>(Integer(value, 0, kUint32Max)));
    else
        throw Refused {
            "no such setting; the settings are kind, position, font, size, color, box, "
            "boxColor, opacity, scoreFormat, info, character, dialogue, off, monologue"
        };
}

// Refuses a key that is given twice: which of the two was meant is not for us to guess.
Json ParseObject(std::string_view json) {
    std::set<std::string> keys;
    auto const watch = [&](int depth, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::key && depth == 1 &&
            !keys.insert(parsed.get<std::string>()).second)
            throw Refused { parsed.get<std::string>() + ": given twice" };
        return true;
    };
    auto object = Json::parse(json, watch);
    if (!object.is_object())
        throw Refused { "the settings are not one { ... } of keys and values" };
    return object;
}

// What the parser says, without its own name and number in front.
std::string Reason(const Json::exception& error) {
    std::string_view const what = error.what();
    auto const start = what.find("] ");
    return "not readable as JSON: " +
           std::string(start == std::string_view::npos ? what : what.substr(start + 2));
}

} // namespace

std::string SettingsToJson(const _TEXTPARAM& param) {
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
    if (auto const other = param.dwFlags & ~kNamedFlags)
        json["otherFlags"] = other;
    return json.dump(2) + "\n";
}

std::optional<_TEXTPARAM> SettingsFromJson(std::string_view json, const _TEXTPARAM& base,
                                           std::string& why) {
    _TEXTPARAM param = base;
    std::string key;
    try {
        auto const settings = ParseObject(json);
        for (auto const& [name, value] : settings.items()) {
            key = name + ": ";
            SetValue(param, name, value);
        }
        return param;
    } catch (const Refused& refused) {
        why = key + refused.reason;
    } catch (const Json::exception& error) {
        why = key + Reason(error);
    }
    return std::nullopt;
}

} // namespace host
