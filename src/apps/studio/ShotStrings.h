// SPDX-License-Identifier: BSD-3-Clause
// The shot's four information strings as they are typed, with tokens, and what a frame makes of them.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include <QString>

#include <epi/epi.h>

#include "host/text/TokenText.h"

namespace studio {

struct ShotStrings {
    // Whether the shot has any. When not, the plug-in composes no score line from them.
    bool present = true;
    std::array<std::string, 4> texts { "", "", "", "{frame}" }; // UTF-8

    bool operator==(const ShotStrings&) const = default;
};

// One of them, or another text, at a frame.
struct StringHere {
    QString trouble {}; // what is wrong with it, for people; empty when it can be used
    bool hasTokens = false;
    std::string text {};  // UTF-8
    std::string bytes {}; // the same in the thread's text encoding; empty with trouble
};
// What a field of the effect's records takes.
struct FieldRoom {
    std::size_t room = sizeof(_EPIRECORD::szInfo1) - 1; // bytes
    bool lines = false;                                 // several
};
StringHere Resolve(const std::string& text, const host::TokenValues& values, FieldRoom field = {});

// The bytes of all; all are empty when there are none.
std::array<std::string, 4> Resolve(const ShotStrings& strings, const host::TokenValues& values);

} // namespace studio
