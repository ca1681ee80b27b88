// SPDX-License-Identifier: BSD-3-Clause
#include "platform/StringTable.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <stdexcept>

#include "platform/Utf8.h"

namespace platform {
namespace {

// Why the entry at hand cannot be read. Stays within this file.
struct Malformed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

bool IsWordByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           c == '.' || c == '-';
}

class Reader {
public:
    explicit Reader(std::string_view text) : m_text(text) {
        if (m_text.starts_with("\xEF\xBB\xBF"))
            m_text.remove_prefix(3);
    }

    // True at the start of an entry, false at the end of the text.
    bool FindEntry() {
        SkipBlanks();
        m_entry = m_at;
        return m_at < m_text.size();
    }

    void ReadEntry(StringTable& table) {
        std::string key = ReadToken("a key");
        Expect('=');
        std::string value = ReadToken("a value");
        Expect(';');
        table.insert_or_assign(std::move(key), std::move(value));
    }

    // Entries come in order, so the lines are counted on from where the count stood.
    std::size_t EntryLine() {
        const std::string_view part = m_text.substr(m_counted, m_entry - m_counted);
        m_line += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
        m_counted = m_entry;
        return m_line;
    }

    void SkipEntryLine() { m_at = std::min(m_text.find('\n', m_entry), m_text.size() - 1) + 1; }

private:
    bool At(std::string_view what) const { return m_text.substr(m_at).starts_with(what); }

    void SkipBlanks() {
        while (m_at < m_text.size()) {
            if (At("//")) {
                m_at = std::min(m_text.find('\n', m_at), m_text.size());
            } else if (At("/*")) {
                // Behind one without an end none has any.
                const std::size_t end =
                    m_lastComment ? std::string_view::npos : m_text.find("*/", m_at + 2);
                m_lastComment = end == std::string_view::npos;
                if (m_lastComment) {
                    m_entry = m_at;
                    throw Malformed("the comment has no end");
                }
                m_at = end + 2;
            } else if (std::string_view(" \t\r\n\f\v").find(m_text[m_at]) !=
                       std::string_view::npos) {
                ++m_at;
            } else {
                return;
            }
        }
    }

    void Expect(char mark) {
        SkipBlanks();
        if (m_at == m_text.size() || m_text[m_at] != mark)
            throw Malformed(std::string("'") + mark + "' is missing");
        ++m_at;
    }

    std::string ReadToken(const char* what) {
        SkipBlanks();
        if (At("\"")) {
            ++m_at;
            return ReadQuoted();
        }
        std::size_t end = m_at;
        while (end < m_text.size() && IsWordByte(m_text[end]))
            ++end;
        if (end == m_at)
            throw Malformed(std::string(what) + " is missing");
        const std::string_view word = m_text.substr(m_at, end - m_at);
        m_at = end;
        return std::string(word);
    }

    std::string ReadQuoted() {
        std::string out;
        while (m_at < m_text.size()) {
            if (m_text[m_at] == '"') {
                ++m_at;
                return out;
            }
            if (m_text[m_at] == '\\') {
                ++m_at;
                ReadEscape(out);
                continue;
            }
            const std::size_t length = Utf8SequenceLength(m_text.substr(m_at));
            if (length == 0)
                throw Malformed("the text is not UTF-8");
            out += m_text.substr(m_at, length);
            m_at += length;
        }
        throw Malformed("the closing quote is missing");
    }

    void ReadEscape(std::string& out) {
        const char c = m_at < m_text.size() ? m_text[m_at++] : '\0';
        constexpr std::string_view kNames = "nrt\"\\'";
        constexpr std::string_view kMeanings = "\n\r\t\"\\'";
        const std::size_t index = kNames.find(c);
        if (index != std::string_view::npos)
            out += kMeanings[index];
        else if (c == 'U' || c == 'u')
            AppendUtf8(out, ReadCodePoint());
        else
            throw Malformed("the backslash stands before no known character");
    }

    std::uint32_t ReadCodePoint() {
        const std::uint32_t first = ReadUnit();
        if (first < 0xD800 || first > 0xDFFF)
            return first;
        if (first < 0xDC00 && (At("\\U") || At("\\u"))) {
            m_at += 2;
            const std::uint32_t second = ReadUnit();
            if (second >= 0xDC00 && second <= 0xDFFF)
                return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
        }
        throw Malformed("half a surrogate pair");
    }

    std::uint32_t ReadUnit() {
        const std::string_view digits = m_text.substr(m_at, 4);
        std::uint32_t unit = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
        if (digits.size() < 4 || error != std::errc() || end != digits.data() + 4)
            throw Malformed("\\U takes four hexadecimal digits");
        m_at += 4;
        return unit;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_entry = 0; // where the entry at hand starts
    std::size_t m_counted = 0;
    std::size_t m_line = 1;     // of m_counted
    bool m_lastComment = false; // one without an end was met
};

} // namespace

StringTable ParseStringTable(std::string_view text, const StringTableFault& fault) {
    StringTable table;
    Reader reader(text);
    for (;;) {
        try {
            if (!reader.FindEntry())
                return table;
            reader.ReadEntry(table);
        } catch (const Malformed& malformed) {
            fault(reader.EntryLine(), malformed.what());
            reader.SkipEntryLine();
        }
    }
}

} // namespace platform
