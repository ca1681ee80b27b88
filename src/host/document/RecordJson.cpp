// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/RecordJson.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>

#include "host/document/Base64.h"
#include "host/document/ListsJson.h"
#include "host/text/TextSettings.h"

namespace host {

namespace {

constexpr std::int64_t kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kInt32Max = std::numeric_limits<std::int32_t>::max();

// ------------------------------------------------------------------------------------- the bytes

template <class... Integers>
void SwapEach(Integers&... values) {
    if constexpr (std::endian::native == std::endian::little)
        ((values = static_cast<Integers>(__builtin_bswap32(static_cast<std::uint32_t>(values)))),
         ...);
}

// Between the machine's byte order and that of archives; its own reverse.
_TEXTPARAM Swapped(_TEXTPARAM record) {
    SwapEach(record.ptPos.x, record.ptPos.y, record.nFontSize, record.crText, record.crBack,
             record.nOpacity, record.nScoreFormat, record.dwFlags);
    return record;
}

_TEXT_DIALOG_PARAM Swapped(_TEXT_DIALOG_PARAM record) {
    SwapEach(record.infoPopup.bLock, record.characterPopup.bLock, record.bDialogOption,
             record.nViewState1, record.nViewState2);
    return record;
}

template <class Record>
std::string BytesOf(const Record& record) {
    auto const swapped = Swapped(record);
    return ToBase64({ reinterpret_cast<const std::uint8_t*>(&swapped), sizeof swapped });
}

template <class Record>
Record RecordOf(const Json& json, const std::string& path) {
    auto const bytes = FromBase64(TextOf(json, path));
    Record record {};
    if (!bytes || bytes->size() != sizeof record)
        throw Refused { path + ": expected " + std::to_string(sizeof record) + " bytes in base64" };
    std::memcpy(&record, bytes->data(), sizeof record);
    return Swapped(record);
}

// ----------------------------------------------------------------------------------- the settings

Json ReadableSettings(const _TEXTPARAM& settings) {
    return Json::parse(SettingsToJson(settings));
}

_TEXTPARAM WithReadable(const _TEXTPARAM& base, const Json& json, const std::string& path) {
    std::string why;
    auto const settings = SettingsFromJson(json.dump(), base, why);
    if (!settings)
        throw Refused { path + "." + why };
    return *settings;
}

// ------------------------------------------------------------------------------------ the dialogs

Json ReadableDialogs(const _TEXT_DIALOG_PARAM& dialogs) {
    auto json = Json::parse(ListsToJson(dialogs));
    json["option"] = dialogs.bDialogOption;
    json["viewState"] = { dialogs.nViewState1, dialogs.nViewState2 };
    return json;
}

_TEXT_DIALOG_PARAM WithReadable(const _TEXT_DIALOG_PARAM& base, const Json& json,
                                const std::string& path) {
    auto dialogs = base;
    Json lists = Json::object();
    for (auto const& [key, value] : json.items()) {
        auto at = path;
        at.append(".").append(key);
        if (key == "option") {
            dialogs.bDialogOption =
                static_cast<std::int32_t>(IntegerOf(value, at, kInt32Min, kInt32Max));
        } else if (key == "viewState") {
            if (!value.is_array() || value.size() != 2)
                throw Refused { at + ": expected a list of 2" };
            dialogs.nViewState1 =
                static_cast<std::int32_t>(IntegerOf(value[0], at, kInt32Min, kInt32Max));
            dialogs.nViewState2 =
                static_cast<std::int32_t>(IntegerOf(value[1], at, kInt32Min, kInt32Max));
        } else {
            lists[key] = value;
        }
    }
    std::string why;
    if (!ListsFromJson(lists.dump(), dialogs, why))
        throw Refused { path + "." + why };
    return dialogs;
}

// --------------------------------------------------------------------------------------- both

template <class Record>
bool IsSaidBy(const Json& readable, const Record& record) {
    try {
        auto const said = WithReadable(Record {}, readable, "");
        return std::memcmp(&said, &record, sizeof record) == 0;
    } catch (const Refused&) {
        return false;
    }
}

// The keys of changed whose values differ from those of known; of objects, only what differs in them.
Json Differences(const Json& changed, const Json& known) {
    Json differences = Json::object();
    for (auto const& [key, value] : changed.items()) {
        auto const found = known.find(key);
        if (found == known.end() || (value != *found && !value.is_object()))
            differences[key] = value;
        else if (value.is_object())
            differences[key] = Differences(value, *found);
    }
    return differences;
}

} // namespace

Json SettingsRecordToJson(const _TEXTPARAM& settings) {
    auto json = ReadableSettings(settings);
    if (!IsSaidBy(json, settings))
        json["archive"] = BytesOf(settings);
    return json;
}

_TEXTPARAM SettingsRecordFromJson(const Json& json, const std::string& path) {
    ObjectReader const reader(json, path,
                              { "kind", "position", "font", "size", "color", "box", "boxColor",
                                "opacity", "scoreFormat", "info", "character", "dialogue", "off",
                                "monologue" },
                              { "otherFlags", "archive" });
    auto const* archive = reader.Find("archive");
    if (!archive)
        return WithReadable(_TEXTPARAM {}, json, path);
    auto const base = RecordOf<_TEXTPARAM>(*archive, reader.PathOf("archive"));
    auto readable = json;
    readable.erase("archive");
    return WithReadable(base, Differences(readable, ReadableSettings(base)), path);
}

Json DialogsRecordToJson(const _TEXT_DIALOG_PARAM& dialogs) {
    auto json = ReadableDialogs(dialogs);
    if (!IsSaidBy(json, dialogs))
        json["block"] = BytesOf(dialogs);
    return json;
}

_TEXT_DIALOG_PARAM DialogsRecordFromJson(const Json& json, const std::string& path) {
    ObjectReader const reader(json, path, { "info", "character", "option", "viewState" },
                              { "block" });
    for (auto const* pair : { "info", "character" })
        ObjectReader(reader.At(pair), reader.PathOf(pair), { "registered", "history", "locked" });
    auto const* block = reader.Find("block");
    if (!block)
        return WithReadable(_TEXT_DIALOG_PARAM {}, json, path);
    auto const base = RecordOf<_TEXT_DIALOG_PARAM>(*block, reader.PathOf("block"));
    auto readable = json;
    readable.erase("block");
    return WithReadable(base, Differences(readable, ReadableDialogs(base)), path);
}

} // namespace host
