// SPDX-License-Identifier: BSD-3-Clause
// The effect's two records as JSON values. Internal to the host's documents. What reads throws Refused
// with the place below the value.
#pragma once

#include <string>
#include <string_view>

#include <epi/epi.h>

#include "host/document/StrictJson.h"

namespace host {

// For people, in the forms of SettingsJson.h and ListsJson.h. Reading changes what is named.
Json SettingsToValue(const _TEXTPARAM& settings);
void ReadSettings(const Json& json, _TEXTPARAM& settings);
Json ListsToValue(const _TEXT_DIALOG_PARAM& lists);
void ReadListPair(const Json& json, _POPUPSTRING& pair);

// Bytes as letters (RFC 4648, section 4: the standard alphabet, padded, no line breaks). A text that
// ToBase64 does not make is refused.
std::string ToBase64(std::string_view bytes);
std::string BytesOf(const Json& base64);

// In a document: with every byte, and every key is there.
Json SettingsRecordToJson(const _TEXTPARAM& settings);
_TEXTPARAM SettingsRecordFromJson(const Json& json);
Json DialogsRecordToJson(const _TEXT_DIALOG_PARAM& dialogs);
_TEXT_DIALOG_PARAM DialogsRecordFromJson(const Json& json);

} // namespace host
