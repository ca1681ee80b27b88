// SPDX-License-Identifier: BSD-3-Clause
// ASS and SSA: sections of lines "Key: values"; in [Events] a Format line names the values of the Dialogue
// lines, of which the last, the text, may hold commas.
#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cues/CueCollector.h"
#include "host/cues/SubtitleBlocks.h"
#include "host/text/Trimmed.h"

namespace host {

namespace {

// Which of a line's values is which; of version 4 and later, until a Format line says otherwise.
struct Columns {
    std::optional<std::size_t> start = 1, end = 2, name = 4;
    std::size_t count = 10; // the text is the last

    bool AreWhole() const { return start && end; }
};

bool StartsWithWord(std::string_view line, std::string_view lowerCase) {
    return line.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), line.begin(), [](char word, char c) {
               return word == (c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
           });
}

// Takes a value and the comma behind it.
std::string_view TakeValue(std::string_view& values) {
    const auto end = std::min(values.find(','), values.size());
    const auto value = Trimmed(values.substr(0, end));
    values.remove_prefix(std::min(end + 1, values.size()));
    return value;
}

Columns ColumnsOf(std::string_view format) {
    Columns columns { .start = {}, .end = {}, .name = {}, .count = 0 };
    for (; !format.empty(); ++columns.count) {
        const auto value = TakeValue(format);
        if (StartsWithWord(value, "start"))
            columns.start = columns.count;
        else if (StartsWithWord(value, "end"))
            columns.end = columns.count;
        else if (StartsWithWord(value, "name") || StartsWithWord(value, "actor"))
            columns.name = columns.count;
    }
    return columns;
}

// Whether what follows a block of codes is a drawing; nothing when the codes do not say.
std::optional<bool> DrawsAfter(std::string_view codes) {
    std::optional<bool> draws;
    for (auto at = codes.find("\\p"); at != std::string_view::npos; at = codes.find("\\p", at + 2))
        if (at + 2 < codes.size() && codes[at + 2] >= '0' && codes[at + 2] <= '9')
            draws = codes[at + 2] != '0';
    return draws;
}

// Without codes and drawings.
std::string Words(std::string_view text) {
    std::string words;
    bool draws = false;
    bool mayHaveCodes = true;
    while (!text.empty()) {
        const auto end = mayHaveCodes && text[0] == '{' ? text.find('}') : std::string_view::npos;
        if (end != std::string_view::npos) {
            draws = DrawsAfter(text.substr(0, end)).value_or(draws);
            text.remove_prefix(end + 1);
            continue;
        }
        mayHaveCodes = mayHaveCodes && text[0] != '{';
        const bool escape =
            text.starts_with("\\N") || text.starts_with("\\n") || text.starts_with("\\h");
        if (!draws)
            words += !escape ? text[0] : text[1] == 'h' ? ' ' : '\n';
        text.remove_prefix(escape ? 2 : 1);
    }
    return words;
}

void ReadDialogue(std::size_t number, std::string_view values, const Columns& columns,
                  CueCollector& out) {
    std::string_view start, end, name;
    for (std::size_t i = 0; i + 1 < columns.count; ++i) {
        if (values.empty())
            return out.Lose(number, "the line has fewer values than its Format line names");
        const auto value = TakeValue(values);
        start = i == columns.start ? value : start;
        end = i == columns.end ? value : end;
        name = i == columns.name ? value : name;
    }
    const auto startTime = ParseClock(start);
    const auto endTime = ParseClock(end);
    if (!startTime || !endTime)
        return out.Lose(number, "the times are not h:mm:ss.cc");
    const auto words = Words(values);
    // A drawing alone is no text that is missing.
    if (Trimmed(words, " \n").empty() && values.find("\\p") != std::string_view::npos)
        return;
    out.AddPlain(number, out.Timing().FrameAtClock(*startTime), out.Timing().FrameAtClock(*endTime),
                 words, name);
}

} // namespace

void ReadAss(std::string_view utf8, CueCollector& out) {
    bool inEvents = false;
    Columns columns;
    for (std::size_t number = 1; !utf8.empty(); ++number) {
        const auto line = Trimmed(TakeLine(utf8));
        const auto values = line.substr(std::min(line.find(':'), line.size() - 1) + 1);
        if (line.starts_with('[')) {
            inEvents = StartsWithWord(line, "[events]");
        } else if (inEvents && StartsWithWord(line, "format:")) {
            columns = ColumnsOf(values);
            if (!columns.AreWhole())
                out.Lose(number, "the Format line names no Start and End");
        } else if (inEvents && StartsWithWord(line, "dialogue:") && columns.AreWhole()) {
            ReadDialogue(number, values, columns, out);
        }
    }
}

} // namespace host
