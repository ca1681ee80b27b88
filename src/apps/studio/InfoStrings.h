// SPDX-License-Identifier: BSD-3-Clause
// The shot's four information strings as they are typed, with tokens, and what a frame makes of them.
#pragma once

#include <array>
#include <string>

#include <QString>

#include "host/text/TokenText.h"

namespace studio {

struct InfoStrings {
    // Whether the shot has any. When not, the plug-in composes no score line from them.
    bool present = true;
    std::array<std::string, 4> texts { "", "", "", "{frame}" }; // UTF-8

    bool operator==(const InfoStrings&) const = default;
};

// What is wrong with one of them at this frame, for people; empty when it can be used.
QString TroubleWith(const std::string& text, const host::TokenValues& values);

// In the application's encoding. One with trouble, and all when there are none, are empty.
std::array<std::string, 4> Resolve(const InfoStrings& strings, const host::TokenValues& values);

} // namespace studio
