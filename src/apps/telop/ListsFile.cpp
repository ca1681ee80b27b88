// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/ListsFile.h"

#include <algorithm>

#include "apps/telop/CommandError.h"
#include "host/text/TextField.h"
#include "platform/TextEncoding.h"

namespace telop {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsText(std::string_view bytes) {
    const auto decoded = platform::EncodeText(platform::DecodeText(bytes));
    return decoded.complete && decoded.bytes == bytes;
}

std::string LineName(const ListLines::Line& line) {
    return "line " + std::to_string(line.number);
}

// The entry of one line, and what is lost on its way into the list.
std::string ReadEntry(const ListLines::Line& line, std::vector<std::string>& warnings) {
    auto bytes = line.bytes.substr(0, kEntryBytes);
    if (line.bytes.size() > kEntryBytes) {
        const auto whole = platform::CutToWholeCharacters(line.bytes, kEntryBytes).size();
        warnings.push_back(LineName(line) + " has " + std::to_string(line.bytes.size()) +
                           " bytes and is cut to " + std::to_string(kEntryBytes) +
                           (whole < kEntryBytes ? ", in the middle of a character" : ""));
    } else if (!IsText(bytes)) {
        warnings.push_back(LineName(line) + " is no text in " +
                           platform::ApplicationTextEncoding() +
                           "; --encoding names the file's encoding");
    }
    const auto end = bytes.find('\0');
    if (end != std::string_view::npos)
        warnings.push_back(LineName(line) + " has a zero byte, where its entry ends" +
                           (end == 0 ? " and the list with it" : ""));
    return std::string(bytes.substr(0, end));
}

void WarnOfLineFeeds(std::string_view text, const ListLines& lines,
                     std::vector<std::string>& warnings) {
    const bool anyFeed = std::any_of(lines.first.begin(), lines.first.end(), [](const auto& line) {
        return line.bytes.find('\n') != std::string_view::npos;
    });
    if (anyFeed)
        warnings.push_back(
            "its lines end with " +
            std::string(text.find('\r') == std::string_view::npos ? "LF" : "CR LF") +
            ", and the LF becomes part of the entries; 'telop lists save --from' rewrites it");
    if (text.starts_with(kByteOrderMark))
        warnings.emplace_back("a byte-order mark becomes part of the first entry; 'telop lists "
                              "save --from' rewrites it");
}

ListLines Split(std::string_view text, bool atLineFeeds) {
    ListLines lines;
    const auto isEnd = [&](char c) { return c == '\r' || (c == '\n' && atLineFeeds); };
    for (std::size_t number = 1; !text.empty(); ++number) {
        std::size_t at = 0;
        while (at < text.size() && !isEnd(text[at]))
            at += platform::CharacterLength(text.substr(at));
        if (at == 0)
            ++lines.withoutText;
        else if (++lines.withText <= kListEntries)
            lines.first.push_back({ number, text.substr(0, at) });
        const bool two = atLineFeeds && text.substr(at, 2) == "\r\n";
        text.remove_prefix(std::min(text.size(), at + (two ? 2 : 1)));
    }
    return lines;
}

} // namespace

ListLines SplitAtReturns(std::string_view text) {
    return Split(text, false);
}

ListLines SplitAtAnyEnd(std::string_view text) {
    return Split(text, true);
}

std::vector<std::string> ReadEntries(std::string_view text, std::vector<std::string>& warnings,
                                     Reading reading) {
    if (reading == Reading::kAsMeant && text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    const auto lines = reading == Reading::kAsMeant ? SplitAtAnyEnd(text) : SplitAtReturns(text);
    if (reading == Reading::kAsEditor)
        WarnOfLineFeeds(text, lines, warnings);
    std::vector<std::string> entries;
    bool ended = false;
    for (const auto& line : lines.first) {
        auto entry = ReadEntry(line, warnings);
        ended = ended || entry.empty();
        if (!ended)
            entries.push_back(std::move(entry));
    }
    if (lines.withoutText > 0)
        warnings.push_back("empty lines are skipped: " + std::to_string(lines.withoutText));
    if (lines.withText > kListEntries)
        warnings.push_back("has " + std::to_string(lines.withText) +
                           " lines with text; the first " + std::to_string(kListEntries) +
                           " are read");
    return entries;
}

std::string WriteEntries(const std::vector<std::string>& entries, LineEnds ends) {
    std::string file;
    for (const auto& entry : entries) {
        file += entry;
        file += ends == LineEnds::kCr ? "\r" : ends == LineEnds::kCrLf ? "\r\n" : "\n";
    }
    const auto lines = ends == LineEnds::kCr ? SplitAtReturns(file) : SplitAtAnyEnd(file);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i >= lines.first.size() || lines.first[i].bytes != entries[i])
            throw CommandError(
                ExitCode::kBadInput,
                "entry " + std::to_string(i + 1) + ", '" + host::EscapeBytes(entries[i]) +
                    "', would not come back from the file: it has a line end or half "
                    "a character in it");
    }
    return file;
}

} // namespace telop
