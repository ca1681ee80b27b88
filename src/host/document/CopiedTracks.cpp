// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/CopiedTracks.h"

#include "host/document/Document.h"
#include "host/document/StrictJson.h"
#include "host/document/TrackJson.h"

namespace host {

namespace {

constexpr const char* kFormat = "telop-tracks";

} // namespace

std::string CopyTracks(const std::vector<Track>& tracks) {
    Json json;
    json["format"] = kFormat;
    json["version"] = Document::kVersion;
    json["tracks"] = TracksToJson(tracks);
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::optional<std::vector<Track>> PasteTracks(std::string_view text, std::string& why) {
    // A clipboard may hold anything, most of which is not even JSON.
    if (text.find(kFormat) == std::string_view::npos) {
        why = "it holds no tracks";
        return std::nullopt;
    }
    try {
        const auto json = ParseStrict(text);
        const ObjectReader reader(json, { "format", "version", "tracks" });
        reader.Get("format", [](const Json& format) {
            if (TextOf(format) != kFormat)
                throw Refused { "is not '" + std::string(kFormat) + "'" };
        });
        reader.Get("version", [](const Json& version) {
            IntegerOf(version, Document::kVersion, Document::kVersion);
        });
        return reader.Get("tracks", TracksOf);
    } catch (const Refused& refused) {
        why = refused.Text();
        return std::nullopt;
    }
}

} // namespace host
