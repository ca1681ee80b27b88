// SPDX-License-Identifier: BSD-3-Clause
// Settings as people write them: JSON, frame tokens and colours. Settings that were understood must
// come back from their own JSON.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/document/SettingsJson.h"
#include "host/text/ColorText.h"
#include "host/text/TokenText.h"

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::string why;
    if (const auto param = host::SettingsFromJson(text, _TEXTPARAM {}, why)) {
        const std::string json = host::SettingsToJson(*param);
        const auto again = host::SettingsFromJson(json, _TEXTPARAM {}, why);
        Require(again && host::SettingsToJson(*again) == json);
    }
    if (const auto tokens = host::TokenText::Parse(text, why)) {
        const std::string resolved = tokens->Resolve({ 1001, "shot" });
        Require(resolved.size() >= tokens->Shortest().size());
    }
    if (const auto color = host::ParseColor(text, why))
        Require(host::ParseColor(host::FormatColor(*color), why) == color);
    return 0;
}
