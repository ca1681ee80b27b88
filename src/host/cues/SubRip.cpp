// SPDX-License-Identifier: BSD-3-Clause
// SubRip: numbered blocks; programs put a few tags into the text, and codes in braces that other
// formats have.
#include <algorithm>
#include <array>
#include <string>

#include "host/cues/CueCollector.h"
#include "host/cues/SubtitleBlocks.h"

namespace host {

namespace {

// What is longer is text.
constexpr std::size_t kLongestTag = 200;

// The length of a tag at the start of text, 0 when there is none: what else stands between angles
// may well be text.
std::size_t TagLength(std::string_view text) {
    constexpr std::array<std::string_view, 5> kTags { "b", "i", "u", "s", "font" };
    text = text.substr(0, kLongestTag);
    const auto end = text.find_first_of(">\n");
    if (end == std::string_view::npos || text[end] == '\n')
        return 0;
    auto tag = text.substr(1, end - 1);
    tag.remove_prefix(tag.starts_with('/') ? 1 : 0);
    std::string name(tag.substr(0, tag.find(' ')));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return std::find(kTags.begin(), kTags.end(), name) == kTags.end() ? 0 : end + 1;
}

// The same of "{\an8}".
std::size_t CodeLength(std::string_view text) {
    text = text.substr(0, kLongestTag);
    const auto end = text.starts_with("{\\") ? text.find_first_of("}\n") : std::string_view::npos;
    return end == std::string_view::npos || text[end] == '\n' ? 0 : end + 1;
}

std::string Words(std::string_view text) {
    std::string words;
    while (!text.empty()) {
        const auto length = text[0] == '<'   ? TagLength(text)
                            : text[0] == '{' ? CodeLength(text)
                                             : 0;
        if (length == 0)
            words += text[0];
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return words;
}

} // namespace

void ReadSubRip(std::string_view utf8, CueCollector& out) {
    ReadBlocks(
        utf8, [](std::string_view) { return false; },
        [&out](const SubtitleBlock& block) {
            out.AddPlain(block.line, out.Timing().FrameAtClock(block.start),
                         out.Timing().FrameAtClock(block.end), Words(block.text), {});
        },
        out);
}

} // namespace host
