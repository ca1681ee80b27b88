// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/RecordJson.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "host/document/Base64.h"

namespace host {

namespace {

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
Record RecordOf(const Json& json) {
    auto const bytes = FromBase64(TextOf(json));
    Record record {};
    if (!bytes || bytes->size() != sizeof record)
        throw Refused { "expected " + std::to_string(sizeof record) + " bytes in base64" };
    std::memcpy(&record, bytes->data(), sizeof record);
    return Swapped(record);
}

// -------------------------------------------------------------------------- the readable keys

Json ToReadable(const _TEXTPARAM& settings) {
    return SettingsToValue(settings);
}

Json ToReadable(const _TEXT_DIALOG_PARAM& dialogs) {
    auto json = ListsToValue(dialogs);
    json["option"] = dialogs.bDialogOption;
    json["viewState"] = { dialogs.nViewState1, dialogs.nViewState2 };
    return json;
}

void ReadReadable(const Json& json, _TEXTPARAM& settings) {
    ReadSettings(json, settings);
}

void ReadReadable(const Json& json, _TEXT_DIALOG_PARAM& dialogs) {
    for (auto const& [key, value] : json.items()) {
        Within(key, [&, &key = key, &value = value] {
            if (key == "option") {
                dialogs.bDialogOption = Int32Of(value);
            } else if (key == "viewState") {
                dialogs.nViewState1 = Int32Of(TupleOf(value, 2)[0]);
                dialogs.nViewState2 = Int32Of(value[1]);
            } else {
                ReadListPair(value, key == "info" ? dialogs.infoPopup : dialogs.characterPopup);
            }
        });
    }
}

// --------------------------------------------------------------------------------------- both

// The keys of changed whose values differ from those of known, and are not called but; of objects, only
// what differs in them.
Json Differences(const Json& changed, const Json& known, std::string_view but = {}) {
    Json differences = Json::object();
    for (auto const& [key, value] : changed.items()) {
        auto const found = known.find(key);
        if (key == but)
            continue;
        if (found == known.end() || (value != *found && !value.is_object()))
            differences[key] = value;
        else if (value.is_object())
            differences[key] = Differences(value, *found);
    }
    return differences;
}

// bytes: the key of the record's bytes, where the readable keys do not say it all.
template <class Record>
Json ToJson(const Record& record, const char* bytes) {
    auto json = ToReadable(record);
    Record said {};
    bool isSaid = false;
    try {
        ReadReadable(json, said);
        isSaid = std::memcmp(&said, &record, sizeof record) == 0;
    } catch (const Refused&) { // such as an opacity that nobody could have typed
    }
    if (!isSaid)
        json[bytes] = BytesOf(record);
    return json;
}

template <class Record>
Record FromJson(const Json& json, const char* bytes) {
    Record record {};
    if (auto const found = json.find(bytes); found != json.end())
        record = Within(bytes, [&] { return RecordOf<Record>(*found); });
    ReadReadable(Differences(json, ToReadable(record), bytes), record);
    return record;
}

constexpr const char* kArchive = "archive";
constexpr const char* kBlock = "block";

} // namespace

Json SettingsRecordToJson(const _TEXTPARAM& settings) {
    return ToJson(settings, kArchive);
}

_TEXTPARAM SettingsRecordFromJson(const Json& json) {
    ObjectReader const reader(json,
                              { "kind", "position", "font", "size", "color", "box", "boxColor",
                                "opacity", "scoreFormat", "info", "character", "dialogue", "off",
                                "monologue" },
                              { "otherFlags", kArchive });
    return FromJson<_TEXTPARAM>(json, kArchive);
}

Json DialogsRecordToJson(const _TEXT_DIALOG_PARAM& dialogs) {
    return ToJson(dialogs, kBlock);
}

_TEXT_DIALOG_PARAM DialogsRecordFromJson(const Json& json) {
    ObjectReader const reader(json, { "info", "character", "option", "viewState" }, { kBlock });
    for (auto const* pair : { "info", "character" })
        reader.Get(pair, [](const Json& lists) {
            ObjectReader const every(lists, { "registered", "history", "locked" });
        });
    return FromJson<_TEXT_DIALOG_PARAM>(json, kBlock);
}

} // namespace host
