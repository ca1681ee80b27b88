// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/TrackJson.h"

#include <string>

#include "host/document/RecordJson.h"
#include "host/text/TextField.h"
#include "host/text/TokenText.h"
#include "platform/TextEncoding.h"

namespace host {

namespace {

constexpr const char* kAllFrames = "all";
constexpr const char* kNoFrames = "none";

// Each of a list's values, refused with its place, from 1.
template <class Read>
void ForEach(const Json& list, const char* what, const Read& read) {
    std::size_t number = 0;
    for (const auto& value : ArrayOf(list))
        Within(what + (" " + std::to_string(++number)), [&] { read(value); });
}

// Cues ------------------------------------------------------------------------------------------

Json ToJson(const Cue& cue) {
    Json json;
    json["frames"] = { cue.first, cue.last };
    json["text"] = cue.text;
    if (!cue.character.empty())
        json["character"] = cue.character;
    return json;
}

Cue CueOf(const Json& json) {
    const ObjectReader reader(json, { "frames", "text" }, { "character" });
    Cue cue;
    reader.Get("frames", [&](const Json& frames) {
        cue.first = IntegerOf(TupleOf(frames, 2)[0], -kFrameMax, kFrameMax);
        cue.last = IntegerOf(frames[1], -kFrameMax, kFrameMax);
        if (cue.last < cue.first)
            throw Refused { "ends before it starts" };
    });
    cue.text = reader.Get("text", [](const Json& text) { return TextOf(text); });
    if (reader.Find("character"))
        cue.character = reader.Get("character", [](const Json& text) { return TextOf(text); });
    return cue;
}

// Anchors ---------------------------------------------------------------------------------------

Json ToJson(const Anchor& anchor) {
    if (anchor.place == AnchorPlace::kNone)
        return nullptr;
    Json json;
    json["place"] = NameOf(anchor.place);
    json["area"] = NameOf(anchor.area);
    json["margin"] = { MarginText(anchor.x), MarginText(anchor.y) };
    return json;
}

Margin MarginOf(const Json& json) {
    Margin margin;
    if (!MarginFrom(TextOf(json), margin))
        throw Refused { "'" + TextOf(json) + "' is no margin, such as \"10\" or \"5%\"" };
    return margin;
}

Anchor AnchorOf(const Json& json) {
    Anchor anchor;
    if (json.is_null())
        return anchor;
    const ObjectReader reader(json, { "place", "area", "margin" });
    reader.Get("place", [&](const Json& place) {
        if (!PlaceNamed(TextOf(place), anchor.place))
            throw Refused { "'" + TextOf(place) + "' is no place, such as \"bottom-left\"" };
    });
    reader.Get("area", [&](const Json& area) {
        if (!AreaNamed(TextOf(area), anchor.area))
            throw Refused { "'" + TextOf(area) +
                            "' is none of frame, action, title, action90, title80" };
    });
    reader.Get("margin", [&](const Json& margins) {
        anchor.x = MarginOf(TupleOf(margins, 2)[0]);
        anchor.y = MarginOf(margins[1]);
    });
    return anchor;
}

// Tracks ----------------------------------------------------------------------------------------

Json ToJson(const Track& track) {
    Json json;
    json["name"] = track.name;
    json["on"] = RangesToJson(track.on);
    json["shown"] = track.isShown;
    json["locked"] = track.isLocked;
    json["anchor"] = ToJson(track.anchor);
    json["referenceHeight"] = track.referenceHeight;
    json["settings"] = SettingsRecordToJson(track.settings);
    if (track.cues.empty())
        return json;
    for (const auto& cue : track.cues)
        json["cues"].push_back(ToJson(cue));
    return json;
}

Track TrackOf(const Json& json) {
    const ObjectReader reader(
        json, { "name", "on", "shown", "locked", "anchor", "referenceHeight", "settings" },
        { "cues" });
    Track track;
    track.name = reader.Get("name", [](const Json& name) { return TextOf(name); });
    track.on = reader.Get("on", RangesOf);
    track.isShown = reader.Get("shown", BooleanOf);
    track.isLocked = reader.Get("locked", BooleanOf);
    track.anchor = reader.Get("anchor", AnchorOf);
    track.referenceHeight =
        static_cast<std::int32_t>(reader.Get("referenceHeight", [](const Json& height) {
            return IntegerOf(height, 0, Track::kReferenceHeightMax);
        }));
    track.settings = reader.Get("settings", SettingsRecordFromJson);
    if (reader.Find("cues"))
        reader.Get("cues", [&](const Json& cues) {
            ForEach(cues, "cue", [&](const Json& cue) { track.cues.push_back(CueOf(cue)); });
        });
    track.SortCues();
    return track;
}

void DoubleLoneBraces(std::span<char> field) {
    const auto text = platform::DecodeText(FieldBytes(field));
    std::string ignored;
    if (TokenText::Parse(text, ignored))
        return;
    SetField(field, {}, TokenText::Literal(text), ignored);
}

} // namespace

Json RangesToJson(const FrameRanges& ranges) {
    const auto text = ranges.ToString();
    return text.empty() ? kNoFrames : text == FrameRanges::All().ToString() ? kAllFrames : text;
}

FrameRanges RangesOf(const Json& json) {
    const auto& text = TextOf(json);
    if (text == kNoFrames)
        return {};
    std::string why;
    const auto ranges = text == kAllFrames ? FrameRanges::All() : FrameRanges::Parse(text, why);
    if (!ranges)
        throw Refused { why + "; or write all, or none" };
    return *ranges;
}

Json TracksToJson(const std::vector<Track>& tracks) {
    auto json = Json::array();
    for (const auto& track : tracks)
        json.push_back(ToJson(track));
    return json;
}

std::vector<Track> TracksOf(const Json& json) {
    if (ArrayOf(json).empty() || json.size() > kMaxTracks)
        throw Refused { "has " + std::to_string(json.size()) + " tracks, and 1 to " +
                        std::to_string(kMaxTracks) + " are allowed" };
    std::vector<Track> tracks;
    ForEach(json, "track", [&](const Json& track) { tracks.push_back(TrackOf(track)); });
    return tracks;
}

void DoubleLoneBraces(_TEXTPARAM& settings) {
    DoubleLoneBraces(settings.szInfoText);
    DoubleLoneBraces(settings.szCharacter);
    DoubleLoneBraces(settings.szDialogue);
}

} // namespace host
