// SPDX-License-Identifier: BSD-3-Clause
#include "host/cues/SubtitleBlocks.h"

#include <algorithm>
#include <optional>

#include "host/text/Trimmed.h"

namespace host {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kArrow = "-->";

bool HasArrow(std::string_view line) {
    return line.find(kArrow) != std::string_view::npos;
}

// Behind the second time there may be settings of the cue's place.
std::optional<SubtitleBlock> ParseTimes(std::string_view line) {
    const auto arrow = line.find(kArrow);
    if (arrow == std::string_view::npos)
        return std::nullopt;
    const auto start = ParseClock(Trimmed(line.substr(0, arrow)));
    const auto rest = Trimmed(line.substr(arrow + kArrow.size()));
    const auto end = ParseClock(rest.substr(0, rest.find_first_of(kBlanks)));
    if (!start || !end)
        return std::nullopt;
    return SubtitleBlock { .line = 0, .start = *start, .end = *end, .text = {} };
}

bool IsNumber(std::string_view line) {
    line = Trimmed(line);
    return !line.empty() &&
           std::all_of(line.begin(), line.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Without a last line that is the number of the next cue.
std::string_view WithoutNumber(std::string_view text) {
    const auto lastEnd = text.rfind('\n');
    const auto last = lastEnd == std::string_view::npos ? 0 : lastEnd + 1;
    return IsNumber(text.substr(last)) ? text.substr(0, last) : text;
}

class BlockReader {
public:
    BlockReader(const std::function<bool(std::string_view)>& isComment,
                const std::function<void(const SubtitleBlock&)>& cue, CueCollector& out)
        : m_isComment(isComment), m_cue(cue), m_out(out) {}

    void Take(std::size_t number, std::string_view line) {
        if (Trimmed(line).empty())
            return EndBlock();
        if (auto times = ParseTimes(line)) {
            m_block.text = WithoutNumber(m_block.text);
            m_place = m_place == Place::kName ? Place::kBetween : m_place;
            EndBlock();
            m_block = *times;
            m_block.line = number;
            m_place = Place::kText;
            return;
        }
        TakeOther(number, line);
    }
    void EndBlock() {
        if (m_place == Place::kText)
            m_cue(m_block);
        else if (m_place == Place::kName)
            m_out.Lose(m_nameLine, kNoCue);
        m_block = {};
        m_place = Place::kBetween;
    }

private:
    static constexpr const char* kNoCue = "the line belongs to no cue: no times stand above it";

    void TakeOther(std::size_t number, std::string_view line) {
        if (m_place == Place::kText) {
            const auto begin = m_block.text.empty() ? line.data() : m_block.text.data();
            m_block.text = { begin, static_cast<std::size_t>(line.data() + line.size() - begin) };
        } else if (m_place != Place::kSkipped && HasArrow(line)) {
            m_out.Lose(number, "the times are not hh:mm:ss,mmm --> hh:mm:ss,mmm");
            m_place = Place::kSkipped;
        } else if (m_place == Place::kBetween) {
            m_nameLine = number;
            m_place = m_isComment(line) ? Place::kSkipped : Place::kName;
        } else if (m_place == Place::kName) {
            m_out.Lose(m_nameLine, kNoCue);
            m_place = Place::kSkipped;
        }
    }

    enum class Place { kBetween, kName, kText, kSkipped };
    const std::function<bool(std::string_view)>& m_isComment;
    const std::function<void(const SubtitleBlock&)>& m_cue;
    CueCollector& m_out;
    Place m_place = Place::kBetween;
    std::size_t m_nameLine = 0;
    SubtitleBlock m_block;
};

} // namespace

std::string_view TakeLine(std::string_view& text) {
    const auto end = std::min(text.find('\n'), text.size());
    const auto line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

void ReadBlocks(std::string_view utf8, const std::function<bool(std::string_view)>& isComment,
                const std::function<void(const SubtitleBlock&)>& cue, CueCollector& out) {
    BlockReader reader(isComment, cue, out);
    for (std::size_t number = 1; !utf8.empty(); ++number)
        reader.Take(number, TakeLine(utf8));
    reader.EndBlock();
}

} // namespace host
