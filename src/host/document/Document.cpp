// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/Document.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <system_error>

#include "host/WholeFile.h"
#include "host/document/RecordJson.h"
#include "host/document/TrackJson.h"
#include "host/frames/OutputFile.h"
#include "platform/TextContext.h"
#include "platform/Utf8.h"

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr const char* kFormat = "telop-document";
constexpr std::size_t kMaxFile = std::size_t { 16 } << 20;

// The frames -------------------------------------------------------------------------------------

// As it is stored, and found again when the folder has moved with all that lies in it.
std::string Relative(const std::string& input, const fs::path& folder) {
    const auto path = fs::absolute(input).lexically_normal();
    const auto relative = path.lexically_relative(folder.lexically_normal());
    return relative.empty() || *relative.begin() == ".." ? path.string() : relative.string();
}

// File names are bytes; those that are no text stand in base64.
Json InputToJson(const std::string& input, const fs::path& folder) {
    if (input.empty())
        return nullptr;
    const auto stored = Relative(input, folder);
    if (platform::IsUtf8(stored))
        return stored;
    return { { "base64", ToBase64(stored) } };
}

std::string InputOf(const Json& json, const fs::path& folder) {
    if (json.is_null())
        return {};
    const auto stored =
        json.is_object() ? ObjectReader(json, { "base64" }).Get("base64", BytesOf) : TextOf(json);
    if (stored.empty() || stored.find('\0') != std::string::npos)
        throw Refused { "is no path; null stands for no frames" };
    return (folder / stored).lexically_normal().string();
}

// The other parts --------------------------------------------------------------------------------

void ReadStrings(const Json& json, Document& document) {
    const ObjectReader reader(json, { "present", "texts" });
    document.stringsPresent = reader.Get("present", BooleanOf);
    reader.Get("texts", [&](const Json& texts) {
        for (std::size_t i = 0; i < document.strings.size(); ++i)
            document.strings[i] = TextOf(TupleOf(texts, document.strings.size())[i]);
    });
}

platform::TextEncoding EncodingOf(const Json& json) {
    const auto encoding = platform::TextEncoding::Find(TextOf(json));
    if (!encoding)
        throw Refused { "'" + TextOf(json) + "' is no known encoding" };
    return *encoding;
}

ShotClock ClockOf(const ObjectReader& reader) {
    std::string why;
    FrameRate rate;
    if (reader.Find("rate"))
        reader.Get("rate", [&](const Json& name) {
            const auto parsed = FrameRate::Parse(TextOf(name), why);
            if (!parsed)
                throw Refused { why };
            rate = *parsed;
        });
    ShotClock clock { TimeCode(rate) };
    if (reader.Find("timecode"))
        reader.Get("timecode", [&](const Json& start) {
            const auto parsed = ShotClock::Make(rate, false, TextOf(start), why);
            if (!parsed)
                throw Refused { why };
            clock = *parsed;
        });
    return clock;
}

void ClockToJson(const ShotClock& clock, Json& json) {
    if (clock.timeCode.Rate() != FrameRate())
        json["rate"] = clock.timeCode.Rate().Name();
    if (clock.startCode != 0 || clock.timeCode.IsDropFrame())
        json["timecode"] = clock.Start();
}

Defines DefinesOf(const Json& json) {
    if (!json.is_object())
        throw Refused { "is no object of names and texts" };
    Defines defines;
    for (const auto& [name, value] : json.items())
        Within(name, [&, &name = name, &value = value] {
            std::string why;
            if (!TokenText::IsDefinable(name, why))
                throw Refused { why };
            defines[name] = TextOf(value);
        });
    return defines;
}

// Told before anything else is looked at, for there may be keys that only a newer program knows.
std::int64_t CheckFormat(const Json& json) {
    const auto format = json.is_object() ? json.find("format") : json.end();
    if (!json.is_object() || format == json.end() || *format != kFormat)
        throw Refused { "is no Telop document" };
    const auto found = json.find("version");
    if (found == json.end())
        throw Refused { "is missing", "version" };
    const auto version = Within("version", [&] { return IntegerOf(*found, 1, kFrameMax); });
    if (version > Document::kVersion)
        throw Refused { "was written by a newer Telop: the document has version " +
                        std::to_string(version) + ", and this program reads up to " +
                        std::to_string(Document::kVersion) };
    return version;
}

// Version 1 had one text, without tokens.
std::vector<Track> TheOneTrack(const ObjectReader& reader) {
    Track track;
    track.on = reader.Get("textOn", RangesOf);
    track.settings = reader.Get("settings", SettingsRecordFromJson);
    DoubleLoneBraces(track.settings);
    return { std::move(track) };
}

ObjectReader ReaderOf(const Json& json, std::int64_t version) {
    if (version == 1)
        return { json,
                 { "format", "version", "frames", "currentFrame", "textOn", "strings", "encoding",
                   "settings", "dialogs" } };
    return { json,
             { "format", "version", "frames", "currentFrame", "strings", "encoding", "tracks",
               "dialogs" },
             { "language", "fallbacks", "rate", "timecode", "defines" } };
}

Document Read(std::string_view text, const fs::path& folder) {
    const auto json = ParseStrict(text);
    const auto version = CheckFormat(json);
    const auto reader = ReaderOf(json, version);
    Document document;
    document.input =
        reader.Get("frames", [&](const Json& frames) { return InputOf(frames, folder); });
    document.currentFrame = reader.Get(
        "currentFrame", [](const Json& frame) { return IntegerOf(frame, -kFrameMax, kFrameMax); });
    reader.Get("strings", [&](const Json& strings) { ReadStrings(strings, document); });
    document.encoding = reader.Get("encoding", EncodingOf);
    if (reader.Find("language"))
        document.language = reader.Get("language", [](const Json& name) { return TextOf(name); });
    if (reader.Find("fallbacks"))
        reader.Get("fallbacks", [&](const Json& names) {
            for (const auto& name : ArrayOf(names))
                document.fallbacks.push_back(TextOf(name));
        });
    document.clock = ClockOf(reader);
    if (reader.Find("defines"))
        document.defines = reader.Get("defines", DefinesOf);
    platform::TextContext context(document.encoding);
    const platform::TextScope scope(context);
    document.tracks = version == 1 ? TheOneTrack(reader) : reader.Get("tracks", TracksOf);
    document.dialogs = reader.Get("dialogs", DialogsRecordFromJson);
    return document;
}

} // namespace

std::optional<Document> Document::FromJson(std::string_view json, const fs::path& folder,
                                           std::string& why) {
    try {
        return Read(json, folder);
    } catch (const Refused& refused) {
        why = refused.Text();
        return std::nullopt;
    }
}

std::optional<Document> Document::Load(const fs::path& file, std::string& why) {
    const auto bytes = ReadWholeFile(file, kMaxFile, why);
    if (!bytes)
        return std::nullopt;
    const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    auto document = FromJson(text, fs::absolute(file).parent_path(), why);
    if (!document && bytes->size() == Effect::kArchiveSize && !text.starts_with('{'))
        why = "is no Telop document; it has the size of a settings archive";
    if (!document)
        why = file.string() + ": " + why;
    return document;
}

std::string Document::ToJson(const fs::path& folder) const {
    Json json;
    json["format"] = kFormat;
    json["version"] = kVersion;
    json["frames"] = InputToJson(input, folder);
    json["currentFrame"] = currentFrame;
    json["strings"]["present"] = stringsPresent;
    json["strings"]["texts"] = strings;
    json["encoding"] = encoding.Name();
    if (!language.empty())
        json["language"] = language;
    if (!fallbacks.empty())
        json["fallbacks"] = fallbacks;
    ClockToJson(clock, json);
    if (!defines.empty())
        json["defines"] = defines;
    platform::TextContext context(encoding);
    const platform::TextScope scope(context);
    json["tracks"] = TracksToJson(tracks);
    json["dialogs"] = DialogsRecordToJson(dialogs);
    // Strings that are no text come from no file and no field; their bytes become U+FFFD.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

bool Document::Save(const fs::path& file, std::string& why) const {
    const auto json = ToJson(fs::absolute(file).parent_path());
    const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(json.data()), json.size());
    if (bytes.size() > kMaxFile) {
        why = file.string() + ": cannot be written: more than " + std::to_string(kMaxFile) +
              " bytes, which no program would read";
        return false;
    }
    return WriteWhole(file, bytes, Existing::kOverwrite, why) == OutputResult::kWritten;
}

void Document::TakeFrom(Effect& effect) {
    tracks.resize(1);
    tracks.front().settings = effect.CopyParams();
    const auto block = effect.Settings();
    if (block.size() == sizeof dialogs)
        std::memcpy(&dialogs, block.data(), sizeof dialogs);
    encoding = platform::TextContext::Current().Encoding();
}

bool Document::GiveTo(Effect& effect, std::string& why) const {
    const auto block = effect.Settings();
    if (block.size() != sizeof dialogs) {
        why = "the plug-in keeps " + std::to_string(block.size()) +
              " bytes of dialog settings, and a document has " + std::to_string(sizeof dialogs);
        return false;
    }
    effect.SetParams(tracks.front().settings);
    std::memcpy(block.data(), &dialogs, sizeof dialogs);
    return true;
}

bool Document::operator==(const Document& other) const {
    return input == other.input && currentFrame == other.currentFrame &&
           stringsPresent == other.stringsPresent && strings == other.strings &&
           encoding == other.encoding && language == other.language &&
           fallbacks == other.fallbacks && clock == other.clock && defines == other.defines &&
           tracks == other.tracks && std::memcmp(&dialogs, &other.dialogs, sizeof dialogs) == 0;
}

} // namespace host
