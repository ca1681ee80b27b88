// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/RecordJson.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace host {

namespace {

// The bytes --------------------------------------------------------------------------------------

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
std::string Archived(const Record& record) {
    const auto swapped = Swapped(record);
    return ToBase64({ reinterpret_cast<const char*>(&swapped), sizeof swapped });
}

template <class Record>
Record RecordOf(const Json& json) {
    const auto bytes = BytesOf(json);
    Record record {};
    if (bytes.size() != sizeof record)
        throw Refused { "expected " + std::to_string(sizeof record) + " bytes in base64" };
    std::memcpy(&record, bytes.data(), sizeof record);
    return Swapped(record);
}

// The readable keys ------------------------------------------------------------------------------

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
    for (const auto& [key, value] : json.items()) {
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

// Both -------------------------------------------------------------------------------------------

// The keys of changed whose values differ from those of known, and are not called but; of objects, only
// what differs in them.
Json Differences(const Json& changed, const Json& known, std::string_view but = {}) {
    Json differences = Json::object();
    for (const auto& [key, value] : changed.items()) {
        const auto found = known.find(key);
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
        json[bytes] = Archived(record);
    return json;
}

template <class Record>
Record FromJson(const Json& json, const char* bytes) {
    Record record {};
    if (const auto found = json.find(bytes); found != json.end())
        record = Within(bytes, [&] { return RecordOf<Record>(*found); });
    ReadReadable(Differences(json, ToReadable(record), bytes), record);
    return record;
}

constexpr const char* kArchive = "archive";
constexpr const char* kBlock = "block";

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

// Three bytes are four letters of six bits; of the last one or two bytes the missing letters are '='.
std::string ToBase64(std::string_view bytes) {
    std::string text;
    for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(3, bytes.size()))) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (k < bytes.size() ? static_cast<std::uint8_t>(bytes[k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= bytes.size() ? kLetters[group >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

std::string BytesOf(const Json& base64) {
    const auto& text = TextOf(base64);
    std::string bytes;
    std::uint32_t group = 0;
    int bits = 0;
    for (const char letter : std::string_view(text).substr(0, text.find('='))) {
        group = group << 6 | static_cast<std::uint32_t>(kLetters.find(letter) & 63);
        bits += 6;
        if (bits >= 8)
            bytes += static_cast<char>(group >> (bits -= 8));
    }
    // Letters that are none, bits that are left over and a wrong number of '=' make another text.
    if (ToBase64(bytes) != text)
        throw Refused { "is not base64" };
    return bytes;
}

Json SettingsRecordToJson(const _TEXTPARAM& settings) {
    return ToJson(settings, kArchive);
}

_TEXTPARAM SettingsRecordFromJson(const Json& json) {
    const ObjectReader reader(json,
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
    const ObjectReader reader(json, { "info", "character", "option", "viewState" }, { kBlock });
    for (const auto* pair : { "info", "character" })
        reader.Get(pair, [](const Json& lists) {
            const ObjectReader every(lists, { "registered", "history", "locked" });
        });
    return FromJson<_TEXT_DIALOG_PARAM>(json, kBlock);
}

} // namespace host
