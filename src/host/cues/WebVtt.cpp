// SPDX-License-Identifier: BSD-3-Clause
// WebVTT: blocks that may have names, notes and styles between them; tags, of which <v> says who speaks,
// and character references.
#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>

#include "host/cues/CueCollector.h"
#include "host/cues/SubtitleBlocks.h"
#include "host/text/Trimmed.h"
#include "platform/Utf8.h"

namespace host {

namespace {

struct Words {
    std::string text, speaker;
};

bool IsComment(std::string_view line) {
    constexpr std::array<std::string_view, 4> kBlocks { "WEBVTT", "NOTE", "STYLE", "REGION" };
    return std::find(kBlocks.begin(), kBlocks.end(), line.substr(0, line.find_first_of(" \t:"))) !=
           kBlocks.end();
}

// What a reference such as "&amp;" stands for; nothing when it is none.
std::string Referred(std::string_view reference) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kNames { {
        { "amp", "&" },
        { "lt", "<" },
        { "gt", ">" },
        { "quot", "\"" },
        { "apos", "'" },
        { "nbsp", "\xC2\xA0" },
        { "lrm", "\xE2\x80\x8E" },
        { "rlm", "\xE2\x80\x8F" },
    } };
    for (const auto& [name, text] : kNames)
        if (reference == name)
            return std::string(text);
    if (!reference.starts_with('#'))
        return {};
    reference.remove_prefix(1);
    const bool hex = reference.starts_with('x') || reference.starts_with('X');
    reference.remove_prefix(hex ? 1 : 0);
    std::uint32_t value = 0;
    const auto end = reference.data() + reference.size();
    const auto [stop, error] = std::from_chars(reference.data(), end, value, hex ? 16 : 10);
    const bool scalar = value >= 0x20 && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    std::string text;
    if (error == std::errc() && stop == end && scalar)
        platform::AppendUtf8(text, value);
    return text;
}

std::string Decoded(std::string_view text) {
    constexpr std::size_t kLongest = 10;
    std::string decoded;
    while (!text.empty()) {
        const auto end =
            text[0] == '&' ? text.substr(0, kLongest).find(';') : std::string_view::npos;
        const auto meaning =
            end == std::string_view::npos ? std::string() : Referred(text.substr(1, end - 1));
        decoded += meaning.empty() ? std::string(1, text[0]) : meaning;
        text.remove_prefix(meaning.empty() ? 1 : end + 1);
    }
    return decoded;
}

// Who speaks, by what stands between the angles of a tag; "v" may have classes behind points.
std::string_view SpeakerIn(std::string_view tag) {
    const auto blank = tag.find_first_of(" \t\n");
    const bool voice = tag == "v" || tag.starts_with("v ") || tag.starts_with("v\t") ||
                       tag.starts_with("v\n") || tag.starts_with("v.");
    return voice && blank != std::string_view::npos ? Trimmed(tag.substr(blank), " \t\n")
                                                    : std::string_view();
}

bool StartsTag(std::string_view text) {
    const char c = text.size() > 1 ? text[1] : ' ';
    return c == '/' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

Words WordsOf(const SubtitleBlock& block, CueCollector& out) {
    Words words;
    for (auto text = block.text; !text.empty();) {
        const auto open = std::min(text.find('<', text[0] == '<' ? 1 : 0), text.size());
        if (!StartsTag(text) || text[0] != '<') {
            words.text += Decoded(text.substr(0, open));
            text.remove_prefix(open);
            continue;
        }
        const auto close = text.find('>');
        if (close == std::string_view::npos) {
            words.text += Decoded(text);
            break;
        }
        const auto speaker = Decoded(SpeakerIn(text.substr(1, close - 1)));
        if (!words.speaker.empty() && !speaker.empty() && speaker != words.speaker)
            out.Note(block.line, "there are several voices, and the cue has only the first");
        if (words.speaker.empty())
            words.speaker = speaker;
        text.remove_prefix(close + 1);
    }
    return words;
}

} // namespace

void ReadWebVtt(std::string_view utf8, CueCollector& out) {
    if (!utf8.starts_with("WEBVTT"))
        out.Note(1, "the file does not start with WEBVTT");
    ReadBlocks(
        utf8, IsComment,
        [&out](const SubtitleBlock& block) {
            const auto words = WordsOf(block, out);
            out.AddPlain(block.line, out.Timing().FrameAtClock(block.start),
                         out.Timing().FrameAtClock(block.end), words.text, words.speaker);
        },
        out);
}

} // namespace host
