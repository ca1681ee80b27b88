// SPDX-License-Identifier: BSD-3-Clause
// Tracks as JSON values. Internal to the host's documents. What reads throws Refused with the place
// below the value.
#pragma once

#include <string_view>
#include <vector>

#include "host/document/StrictJson.h"
#include "host/document/Track.h"

namespace host {

// "1001-1010,1020-", "all" or "none".
Json RangesToJson(const FrameRanges& ranges);
FrameRanges RangesOf(const Json& json);

// Texts of settings are in the thread's encoding.
Json TracksToJson(const std::vector<Track>& tracks);
std::vector<Track> TracksOf(const Json& json);

// A text of settings as it was before texts had tokens: a brace that is none of a token's is doubled,
// so that it is drawn as it was, where there is room for it.
void DoubleLoneBraces(_TEXTPARAM& settings);

} // namespace host
