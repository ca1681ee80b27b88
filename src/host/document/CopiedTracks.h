// SPDX-License-Identifier: BSD-3-Clause
// Tracks as a text that goes through a clipboard from one document to another, also of another program.
//
//   { "format": "telop-tracks", "version": 2, "tracks": [ ... ] }      as in a document of that version
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/Track.h"

namespace host {

// The settings' texts are in the thread's encoding.
std::string CopyTracks(const std::vector<Track>& tracks);
// Nothing, with the reason in why, when the text holds no tracks, those of a newer program, or words
// that the thread's encoding lacks.
std::optional<std::vector<Track>> PasteTracks(std::string_view text, std::string& why);

} // namespace host
