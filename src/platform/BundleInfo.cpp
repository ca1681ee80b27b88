// SPDX-License-Identifier: BSD-3-Clause
#include "platform/BundleInfo.h"

#include <nlohmann/json.hpp>

namespace platform {

std::optional<BundleInfo> ParseBundleInfo(std::string_view json, std::string& why) {
    const auto info = nlohmann::json::parse(json, nullptr, /*allow_exceptions=*/false);
    if (!info.is_object()) {
        why = info.is_discarded() ? "it is no JSON" : "it is no JSON object";
        return std::nullopt;
    }
    BundleInfo result;
    for (const auto& [key, member] : { std::pair { "identifier", &BundleInfo::identifier },
                                       std::pair { "name", &BundleInfo::name },
                                       std::pair { "version", &BundleInfo::version } }) {
        const auto value = info.find(key);
        if (value == info.end() || !value->is_string()) {
            why = std::string("its \"") + key + "\" is no string";
            return std::nullopt;
        }
        result.*member = value->get<std::string>();
    }
    return result;
}

} // namespace platform
