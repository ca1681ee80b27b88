// SPDX-License-Identifier: BSD-3-Clause
// The effect's two records in a document: readable, and with every byte. Internal to the host's
// documents. Both throw Refused; path is where the value stands.
#pragma once

#include <string>

#include <epi/epi.h>

#include "host/document/StrictJson.h"

namespace host {

Json SettingsRecordToJson(const _TEXTPARAM& settings);
_TEXTPARAM SettingsRecordFromJson(const Json& json, const std::string& path);

Json DialogsRecordToJson(const _TEXT_DIALOG_PARAM& dialogs);
_TEXT_DIALOG_PARAM DialogsRecordFromJson(const Json& json, const std::string& path);

} // namespace host
