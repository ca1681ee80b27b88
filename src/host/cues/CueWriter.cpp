// SPDX-License-Identifier: BSD-3-Clause
#include "host/cues/CueWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "host/text/DelimitedText.h"
#include "host/text/TokenText.h"

namespace host {

namespace {

std::string Clock(std::int64_t milliseconds) {
    std::array<char, 40> text {};
    const auto field = [&](std::int64_t unit, std::int64_t size) {
        return static_cast<int>(milliseconds / unit % size);
    };
    std::snprintf(text.data(), text.size(), "%02lld:%02d:%02d,%03d",
                  static_cast<long long>(milliseconds / 3'600'000), field(60'000, 60),
                  field(1000, 60), field(1, 1000));
    return text.data();
}

// The text as it is drawn, where all frames draw the same.
std::string Words(const TimedCue& cue, std::vector<CueProblem>& problems) {
    std::string why;
    const auto parsed = TokenText::Parse(cue.text, why);
    if (parsed && !parsed->HasTokens())
        return parsed->Resolve({});
    problems.push_back({ cue.line, "the tokens of the text stay as they are typed", false });
    return cue.text;
}

// An empty line would end the cue: a space that no program takes for a blank keeps it.
void AppendLines(std::string& file, std::string_view text) {
    bool lineIsEmpty = true;
    for (const char c : text) {
        if (c == '\n' && lineIsEmpty)
            file += "\xC2\xA0";
        lineIsEmpty = c == '\n' || (lineIsEmpty && (c == ' ' || c == '\t'));
        file += c;
    }
    file += '\n';
}

} // namespace

std::string WriteSubRip(std::span<const TimedCue> cues, const CueTiming& timing,
                        std::vector<CueProblem>& problems) {
    std::string file;
    int number = 0;
    for (const auto& cue : cues) {
        const auto& rate = timing.timeCode.Rate();
        const auto start = rate.MillisecondsAt(cue.first - timing.startFrame);
        const auto end = rate.MillisecondsAt(cue.last + 1 - timing.startFrame);
        if (start < 0)
            problems.push_back({ cue.line,
                                 "the cue begins before frame " +
                                     std::to_string(timing.startFrame) + ", which is time 0",
                                 end <= 0 });
        if (end <= 0)
            continue;
        file += std::to_string(++number) + "\n" + Clock(std::max<std::int64_t>(start, 0)) +
                " --> " + Clock(end) + "\n";
        AppendLines(file, Words(cue, problems));
        file += '\n';
    }
    return file;
}

std::string WriteCueTable(std::span<const TimedCue> cues) {
    std::string file = "start,end,character,text\n";
    for (const auto& cue : cues) {
        AppendField(file, std::to_string(cue.first));
        AppendField(file, std::to_string(cue.last));
        AppendField(file, cue.character);
        AppendField(file, cue.text);
        file += '\n';
    }
    return file;
}

} // namespace host
