// SPDX-License-Identifier: BSD-3-Clause
// Tables as spreadsheets write them: a record on a line, fields with a comma, semicolon or tab between
// them. A field in double quotes may hold all of these and line ends, and a quote as two of them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct DelimitedRow {
    std::size_t line = 0; // from 1, where it starts
    std::vector<std::string> fields;
    std::string fault; // why the fields are not all that was meant; empty: they are

    bool IsEmpty() const; // no field has anything but blanks
    // Empty where the row ends before it.
    std::string_view Field(std::optional<std::size_t> column) const;
};

class DelimitedReader {
public:
    static constexpr std::size_t kMaxFields = 1000; // in a row

    // UTF-8, which the reader borrows, with any line ends.
    DelimitedReader(std::string_view utf8, char separator) : m_rest(utf8), m_separator(separator) {}
    // The separator that the first row has most of; a comma when it has none.
    static char SeparatorOf(std::string_view utf8);

    // False at the end. Line ends within a field become LF. Linear in what is read.
    bool Next(DelimitedRow& row);

private:
    void ReadField(DelimitedRow& row);
    void ReadQuoted(DelimitedRow& row, std::string& field);
    bool TakeLineEnd();

    std::string_view m_rest;
    char m_separator;
    std::size_t m_line = 1;
};

// The number of the column whose heading is name, without regard to case and blanks around it; the
// first of several.
std::optional<std::size_t> FindColumn(const DelimitedRow& header, std::string_view name);

// Appends a field to a line of a table, in quotes where it needs them, behind a comma where it is not the
// line's first.
void AppendField(std::string& line, std::string_view field);

} // namespace host
