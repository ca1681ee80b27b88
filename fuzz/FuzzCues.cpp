// SPDX-License-Identifier: BSD-3-Clause
// Files of subtitles and tables of cues, as each kind and in two encodings. What was read must be in
// order and come back from a table of it.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/cues/CueFile.h"
#include "host/cues/CueWriter.h"
#include "platform/TextEncoding.h"

namespace {

void Require(bool condition) {
    if (!condition)
        std::abort();
}

void CheckCues(const host::CueFile& file, const host::CueOptions& options) {
    for (std::size_t i = 0; i < file.cues.size(); ++i) {
        const auto& cue = file.cues[i];
        Require(cue.first <= cue.last && cue.line > 0);
        Require(i == 0 || file.cues[i - 1].first <= cue.first);
    }
    std::string why;
    const auto again = host::ReadCues(host::WriteCueTable(file.cues), "a.csv", options, why);
    Require(again && again->cues.size() == file.cues.size());
    for (std::size_t i = 0; i < file.cues.size(); ++i) {
        auto cue = again->cues[i];
        cue.line = file.cues[i].line;
        Require(cue == file.cues[i]);
    }
    std::vector<host::CueProblem> problems;
    host::WriteSubRip(file.cues, options.timing, problems);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    static const auto cp932 = platform::TextEncoding::Find("CP932");
    host::CueOptions options { .timing = { .startFrame = 1001 } };
    std::string why;
    for (const char* name : { "a.srt", "a.vtt", "a.ass", "a.csv", "a" })
        for (const auto& encoding : { std::optional<platform::TextEncoding>(), cp932 }) {
            options.encoding = encoding;
            const auto file = host::ReadCues(bytes, name, options, why);
            Require(file || !why.empty());
            options.encoding.reset();
            if (file)
                CheckCues(*file, options);
        }
    return 0;
}
