// SPDX-License-Identifier: BSD-3-Clause
// What a bundle says about itself in its Info.json.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct BundleInfo {
    std::string identifier; // as "org.example.effect.name"
    std::string name;       // for people
    std::string version;
};

// An object with the string members "identifier", "name" and "version"; others may stand beside
// them. Nothing, and the reason in why, when the text is something else.
std::optional<BundleInfo> ParseBundleInfo(std::string_view json, std::string& why);

} // namespace platform
