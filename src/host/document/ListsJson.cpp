// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/ListsJson.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "host/document/RecordJson.h"
#include "host/text/TextField.h"

namespace host {

namespace {

using Entries = std::span<char[64], 20>;

std::string Printed(const Json& json) {
    return json.dump(2) + "\n";
}

Json ArrayOf(const std::vector<std::string>& entries) {
    Json array = Json::array();
    for (const auto& entry : entries)
        array.push_back(EscapeBytes(entry));
    return array;
}

std::string EntryOf(const Json& value) {
    std::string why;
    auto bytes = UnescapeBytes(TextOf(value), why);
    if (!bytes)
        throw Refused { why };
    if (bytes->empty())
        throw Refused { "is empty; a list ends at its first empty entry" };
    return *std::move(bytes);
}

std::vector<std::string> EntriesOf(const Json& array) {
    if (!array.is_array())
        throw Refused { "expected a list of texts, [\"PAN\", \"FOLLOW\"]" };
    std::vector<std::string> entries;
    try {
        for (const auto& value : array)
            entries.push_back(EntryOf(value));
    } catch (const Refused& refused) {
        throw Refused { "entry " + std::to_string(entries.size() + 1) + ": " + refused.reason };
    }
    return entries;
}

const char* NameOf(ListOf which) {
    return which == ListOf::kInfo ? "info" : "character";
}

Json ListToJson(std::span<const char[64], 20> list) {
    std::vector<std::string> entries;
    for (const auto& entry : list) {
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

void ReadList(const Json& array, Entries list) {
    const auto entries = EntriesOf(array);
    if (entries.size() > list.size())
        throw Refused { std::to_string(entries.size()) + " entries, and the limit is " +
                        std::to_string(list.size()) };
    std::memset(list.data(), 0, list.size_bytes());
    std::string why;
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (!SetFieldBytes(list[i], "entry " + std::to_string(i + 1), entries[i], why))
            throw Refused { why };
}

} // namespace

std::string EntriesToJson(const std::vector<std::string>& entries) {
    return Printed(ArrayOf(entries));
}

std::optional<std::vector<std::string>> EntriesFromJson(std::string_view json, ListOf which,
                                                        std::string& why) {
    try {
        const auto parsed = ParseStrict(json);
        if (!parsed.is_object())
            return EntriesOf(parsed);
        const auto pair = parsed.find(NameOf(which));
        const auto name = std::string(NameOf(which)) + ".registered";
        if (pair == parsed.end() || !pair->is_object() || !pair->contains("registered"))
            throw Refused { "has no list " + name };
        return Within(name, [&] { return EntriesOf(pair->at("registered")); });
    } catch (const Refused& refused) {
        why = refused.Text();
        return std::nullopt;
    }
}

Json ListsToValue(const _TEXT_DIALOG_PARAM& lists) {
    Json json;
    json["info"] = PairToJson(lists.infoPopup);
    json["character"] = PairToJson(lists.characterPopup);
    return json;
}

void ReadListPair(const Json& json, _POPUPSTRING& pair) {
    if (!json.is_object())
        throw Refused {
            "expected { \"registered\": [...], \"history\": [...], \"locked\": false }"
        };
    for (const auto& [key, value] : json.items()) {
        Within(key, [&, &key = key, &value = value] {
            if (key == "registered")
                ReadList(value, pair.szPreset);
            else if (key == "history")
                ReadList(value, pair.szHistory);
            else if (key == "locked")
                pair.bLock = BooleanOf(value) ? 1 : 0;
            else
                throw Refused { "no such list; the lists are registered and history" };
        });
    }
}

std::string ListsToJson(const _TEXT_DIALOG_PARAM& lists) {
    return Printed(ListsToValue(lists));
}

bool ListsFromJson(std::string_view json, _TEXT_DIALOG_PARAM& lists, std::string& why) {
    auto changed = lists;
    try {
        const auto parsed = ParseStrict(json);
        if (!parsed.is_object())
            throw Refused { "expected { \"info\": {...}, \"character\": {...} }, as 'telop lists "
                            "load' makes it" };
        for (const auto& [key, value] : parsed.items()) {
            Within(key, [&, &key = key, &value = value] {
                if (key != "info" && key != "character")
                    throw Refused { "no such pair of lists; the pairs are info and character" };
                ReadListPair(value,
                             PairOf(changed, key == "info" ? ListOf::kInfo : ListOf::kCharacter));
            });
        }
    } catch (const Refused& refused) {
        why = refused.Text();
        return false;
    }
    lists = changed;
    return true;
}

} // namespace host
