// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/ListsJson.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "host/document/StrictJson.h"
#include "host/text/TextField.h"

namespace host {

namespace {

using Entries = std::span<char[64], 20>;

[[noreturn]] void Refuse(const std::string& why) {
    throw Refused { why };
}

std::string Printed(const Json& json) {
    return json.dump(2) + "\n";
}

Json ArrayOf(const std::vector<std::string>& entries) {
    Json array = Json::array();
    for (auto const& entry : entries)
        array.push_back(EscapeBytes(entry));
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
        auto bytes = UnescapeBytes(value.get_ref<const std::string&>(), why);
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
        entries.emplace_back(FieldBytes(entry));
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
        if (!SetFieldBytes(list[i], "entry " + std::to_string(i + 1), entries[i], why))
            Refuse(name + why);
    }
}

void SetPair(_POPUPSTRING& pair, const Json& json, const std::string& name) {
    if (!json.is_object())
        Refuse(name +
               ": expected { \"registered\": [...], \"history\": [...], \"locked\": false }");
    for (auto const& [key, value] : json.items()) {
        auto start = name;
        start.append(".").append(key).append(": ");
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

std::optional<std::vector<std::string>> EntriesFromJson(std::string_view json, ListOf which,
                                                        std::string& why) {
    try {
        auto const parsed = ParseStrict(json);
        if (!parsed.is_object())
            return EntriesOf(parsed, "");
        auto const pair = parsed.find(NameOf(which));
        auto const name = std::string(NameOf(which)) + ".registered";
        if (pair == parsed.end() || !pair->is_object() || !pair->contains("registered"))
            Refuse("has no list " + name);
        return EntriesOf(pair->at("registered"), name + ": ");
    } catch (const Refused& refused) {
        why = refused.reason;
        return std::nullopt;
    }
}

std::string ListsToJson(const _TEXT_DIALOG_PARAM& lists) {
    Json json;
    json["info"] = PairToJson(lists.infoPopup);
    json["character"] = PairToJson(lists.characterPopup);
    return Printed(json);
}

bool ListsFromJson(std::string_view json, _TEXT_DIALOG_PARAM& lists, std::string& why) {
    auto changed = lists;
    try {
        auto const parsed = ParseStrict(json);
        if (!parsed.is_object())
            Refuse(
                "expected { \"info\": {...}, \"character\": {...} }, as 'telop lists load' makes "
                "it");
        for (auto const& [key, value] : parsed.items()) {
            if (key != "info" && key != "character")
                Refuse(key + ": no such pair of lists; the pairs are info and character");
            SetPair(PairOf(changed, key == "info" ? ListOf::kInfo : ListOf::kCharacter), value,
                    key);
        }
    } catch (const Refused& refused) {
        why = refused.reason;
        return false;
    }
    lists = changed;
    return true;
}

} // namespace host
