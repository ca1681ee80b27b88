// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/ListsJson.h"

#include <algorithm>
#include <cstring>
#include <span>

#include <nlohmann/json.hpp>

#include "apps/telop/CommandError.h"
#include "host/text/TextField.h"

namespace telop {

namespace {

using Json = nlohmann::ordered_json;
using Entries = std::span<char[64], 20>;

[[noreturn]] void Refuse(const std::string& why) {
    throw CommandError(ExitCode::kBadInput, why);
}

std::string Printed(const Json& json) {
    return json.dump(2) + "\n";
}

Json Parse(std::string_view text) {
    try {
        return Json::parse(text);
    } catch (const Json::exception& error) {
        // Without the parser's own name and number in front.
        std::string_view const what = error.what();
        auto const start = what.find("] ");
        Refuse("not readable as JSON: " +
               std::string(start == std::string_view::npos ? what : what.substr(start + 2)));
    }
}

Json ArrayOf(const std::vector<std::string>& entries) {
    Json array = Json::array();
    for (auto const& entry : entries)
        array.push_back(host::EscapeBytes(entry));
    return array;
}

std::vector<std::string> EntriesOf(const Json& array, const std::string& name) {
    if (!array.is_array())
        Refuse(name + "expected a list of texts, [\"PAN\", \"FOLLOW\"]");
    std::vector<std::string> entries;
    for (auto const& value : array) {
        auto const entry = name + "entry " + std::to_string(entries.size() + 1) + ": ";
        if (!value.is_string())
            Refuse(entry + "expected a text");
        std::string why;
        auto bytes = host::UnescapeBytes(value.get_ref<const std::string&>(), why);
        if (!bytes)
            Refuse(entry + why);
        if (bytes->empty())
            Refuse(entry + "is empty; a list ends at its first empty entry");
        entries.push_back(std::move(*bytes));
    }
    return entries;
}

const char* NameOf(ListOf which) {
    return which == ListOf::kInfo ? "info" : "character";
}

Json ListToJson(std::span<const char[64], 20> list) {
    std::vector<std::string> entries;
    for (auto const& entry : list) {
        if (entry[0] == '\0')
            break;
        entries.emplace_back(host::FieldBytes(entry));
    }
    return ArrayOf(entries);
}

Json PairToJson(const _POPUPSTRING& pair) {
    Json json;
    json["registered"] = ListToJson(pair.szPreset);
    json["history"] = ListToJson(pair.szHistory);
    json["locked"] = pair.bLock != 0;
    return json;
}

void SetList(Entries list, const Json& array, const std::string& name) {
    auto const entries = EntriesOf(array, name);
    if (entries.size() > list.size())
        Refuse(name + std::to_string(entries.size()) + " entries, and the limit is " +
               std::to_string(list.size()));
    std::memset(list.data(), 0, list.size_bytes());
    std::string why;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!host::SetFieldBytes(list[i], "entry " + std::to_string(i + 1), entries[i], why))
            Refuse(name + why);
    }
}

void SetPair(_POPUPSTRING& pair, const Json& json, const std::string& name) {
    if (!json.is_object())
        Refuse(name +
               ": expected { \"registered\": [...], \"history\": [...], \"locked\": false }");
    for (auto const& [key, value] : json.items()) {
        auto const start = name + "." + key + ": ";
        if (key == "registered")
            SetList(pair.szPreset, value, start);
        else if (key == "history")
            SetList(pair.szHistory, value, start);
        else if (key != "locked")
            Refuse(start + "no such list; the lists are registered and history");
        else if (!value.is_boolean())
            Refuse(start + "expected true or false");
        else
            pair.bLock = value.get<bool>() ? 1 : 0;
    }
}

} // namespace

std::string EntriesToJson(const std::vector<std::string>& entries) {
    return Printed(ArrayOf(entries));
}

std::vector<std::string> EntriesFromJson(std::string_view json, ListOf which) {
    auto const parsed = Parse(json);
    if (!parsed.is_object())
        return EntriesOf(parsed, "");
    auto const pair = parsed.find(NameOf(which));
    auto const name = std::string(NameOf(which)) + ".registered";
    if (pair == parsed.end() || !pair->is_object() || !pair->contains("registered"))
        Refuse("has no list " + name);
    return EntriesOf(pair->at("registered"), name + ": ");
}

std::string ListsToJson(const _TEXT_DIALOG_PARAM& lists) {
    Json json;
    json["info"] = PairToJson(lists.infoPopup);
    json["character"] = PairToJson(lists.characterPopup);
    return Printed(json);
}

void ListsFromJson(std::string_view json, _TEXT_DIALOG_PARAM& lists) {
    auto changed = lists;
    auto const parsed = Parse(json);
    if (!parsed.is_object())
        Refuse(
            "expected { \"info\": {...}, \"character\": {...} }, as 'telop lists load' makes it");
    for (auto const& [key, value] : parsed.items()) {
        if (key != "info" && key != "character")
            Refuse(key + ": no such pair of lists; the pairs are info and character");
        SetPair(PairOf(changed, key == "info" ? ListOf::kInfo : ListOf::kCharacter), value, key);
    }
    lists = changed;
}

} // namespace telop
