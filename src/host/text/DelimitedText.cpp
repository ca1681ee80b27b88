// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/DelimitedText.h"

#include <algorithm>
#include <array>

#include "host/text/Trimmed.h"

namespace host {

namespace {

bool IsSameWord(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

} // namespace

bool DelimitedRow::IsEmpty() const {
    return std::all_of(fields.begin(), fields.end(),
                       [](const std::string& field) { return Trimmed(field).empty(); });
}

std::string_view DelimitedRow::Field(std::optional<std::size_t> column) const {
    return column && *column < fields.size() ? std::string_view(fields[*column])
                                             : std::string_view();
}

char DelimitedReader::SeparatorOf(std::string_view utf8) {
    constexpr std::array<char, 3> kSeparators { ',', ';', '\t' };
    std::array<std::size_t, 3> counts {};
    bool quoted = false;
    for (const char c : utf8) {
        if (!quoted && (c == '\n' || c == '\r'))
            break;
        quoted = quoted != (c == '"');
        const auto separator = std::find(kSeparators.begin(), kSeparators.end(), c);
        if (!quoted && separator != kSeparators.end())
            ++counts[static_cast<std::size_t>(separator - kSeparators.begin())];
    }
    const auto most = std::max_element(counts.begin(), counts.end());
    return kSeparators[static_cast<std::size_t>(most - counts.begin())];
}

bool DelimitedReader::Next(DelimitedRow& row) {
    if (m_rest.empty())
        return false;
    row = {};
    row.line = m_line;
    for (;;) {
        ReadField(row);
        if (m_rest.empty() || TakeLineEnd())
            return true;
        m_rest.remove_prefix(1); // the separator
    }
}

void DelimitedReader::ReadField(DelimitedRow& row) {
    std::string field;
    if (m_rest.starts_with('"'))
        ReadQuoted(row, field);
    const char ends[] { m_separator, '\r', '\n' };
    const auto length = std::min(m_rest.find_first_of({ ends, 3 }), m_rest.size());
    field += m_rest.substr(0, length);
    m_rest.remove_prefix(length);
    if (row.fields.size() < kMaxFields)
        row.fields.push_back(std::move(field));
    else
        row.fault = "has more than " + std::to_string(kMaxFields) + " fields";
}

void DelimitedReader::ReadQuoted(DelimitedRow& row, std::string& field) {
    m_rest.remove_prefix(1);
    while (!m_rest.empty()) {
        if (TakeLineEnd()) {
            field += '\n';
            continue;
        }
        const char c = m_rest.front();
        m_rest.remove_prefix(1);
        if (c == '"' && !m_rest.starts_with('"'))
            return;
        m_rest.remove_prefix(c == '"' ? 1 : 0);
        field += c;
    }
    row.fault = "has a quote that is never closed";
}

bool DelimitedReader::TakeLineEnd() {
    const std::size_t length = m_rest.starts_with("\r\n")                             ? 2
                               : m_rest.starts_with('\n') || m_rest.starts_with('\r') ? 1
                                                                                      : 0;
    m_rest.remove_prefix(length);
    m_line += length > 0 ? 1 : 0;
    return length > 0;
}

std::optional<std::size_t> FindColumn(const DelimitedRow& header, std::string_view name) {
    for (std::size_t i = 0; i < header.fields.size(); ++i)
        if (IsSameWord(Trimmed(header.fields[i]), name))
            return i;
    return std::nullopt;
}

void AppendField(std::string& line, std::string_view field) {
    if (!line.empty() && line.back() != '\n')
        line += ',';
    if (field.find_first_of(",;\t\r\n\"") == std::string_view::npos && !field.empty()) {
        line += field;
        return;
    }
    line += '"';
    for (const char c : field)
        line.append(c == '"' ? 2 : 1, c);
    line += '"';
}

} // namespace host
