// SPDX-License-Identifier: BSD-3-Clause
// Tables with a heading row.
#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cues/CueCollector.h"
#include "host/text/DelimitedText.h"
#include "host/text/NearestName.h"
#include "host/text/Trimmed.h"

namespace host {

namespace {

using Column = std::optional<std::size_t>;

struct Columns {
    Column start, end, duration, text, character;
};

constexpr std::array<std::pair<std::string_view, Column Columns::*>, 5> kColumns { {
    { "start", &Columns::start },
    { "end", &Columns::end },
    { "duration", &Columns::duration },
    { "text", &Columns::text },
    { "character", &Columns::character },
} };

void TellMissing(const DelimitedRow& header, std::string_view name, CueCollector& out) {
    const std::vector<std::string_view> headings(header.fields.begin(), header.fields.end());
    const auto nearest = NearestName(name, headings);
    out.Lose(header.line,
             "there is no column '" + std::string(name) + "'" +
                 (nearest.empty() ? "" : ", '" + std::string(nearest) + "' is near it") +
                 "; the first row names the columns: start, end or duration, text, and "
                 "character where there are any");
}

// Nothing when a column that has to be there is not.
std::optional<Columns> ColumnsOf(const DelimitedRow& header, CueCollector& out) {
    Columns columns;
    for (const auto& [name, member] : kColumns)
        columns.*member = FindColumn(header, name);
    const auto need = [&](bool there, std::string_view name) {
        if (!there)
            TellMissing(header, name, out);
        return there;
    };
    const bool start = need(columns.start.has_value(), "start");
    const bool end = need(columns.end || columns.duration, "end");
    const bool text = need(columns.text.has_value(), "text");
    return start && end && text ? std::optional(columns) : std::nullopt;
}

// The frame behind the last; nothing, with the reason in why.
std::optional<std::int64_t> EndOf(const CueTiming& timing, CueTime start, std::string_view endText,
                                  std::string_view durationText, std::string& why) {
    if (endText.empty() && durationText.empty()) {
        why = "the row has no end and no duration";
        return std::nullopt;
    }
    std::optional<std::int64_t> byEnd, byDuration;
    if (!endText.empty()) {
        const auto end = timing.Parse(endText, why);
        if (!end)
            return std::nullopt;
        byEnd = timing.EndFrame(*end, timing.FirstFrame(start));
    }
    if (!durationText.empty()) {
        const auto duration = timing.Parse(durationText, why);
        if (!duration)
            return std::nullopt;
        byDuration = timing.EndAfter(start, *duration);
    }
    if (byEnd && byDuration && byEnd != byDuration) {
        why = "the end and the duration say different things";
        return std::nullopt;
    }
    return byEnd ? byEnd : byDuration;
}

void ReadRow(const DelimitedRow& row, const Columns& columns, CueCollector& out) {
    const auto& timing = out.Timing();
    std::string why;
    if (!row.fault.empty())
        return out.Lose(row.line, "the row " + row.fault);
    const auto start = timing.Parse(row.Field(columns.start), why);
    const auto end = start ? EndOf(timing, *start, Trimmed(row.Field(columns.end), " \t\n"),
                                   Trimmed(row.Field(columns.duration), " \t\n"), why)
                           : std::nullopt;
    if (!end)
        return out.Lose(row.line, why);
    out.Add(row.line, timing.FirstFrame(*start), *end, row.Field(columns.text),
            row.Field(columns.character));
}

} // namespace

void ReadCueTable(std::string_view utf8, CueCollector& out) {
    DelimitedReader reader(utf8, DelimitedReader::SeparatorOf(utf8));
    std::optional<Columns> columns;
    for (DelimitedRow row; reader.Next(row);) {
        if (row.IsEmpty())
            continue;
        if (columns)
            ReadRow(row, *columns, out);
        else if (!(columns = ColumnsOf(row, out)))
            return;
    }
}

} // namespace host
