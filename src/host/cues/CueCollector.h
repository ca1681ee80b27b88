// SPDX-License-Identifier: BSD-3-Clause
// Takes what the readers of the kinds find, and checks it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/cues/CueFile.h"

namespace host {

class CueCollector {
public:
    // The thread's text context is the document's.
    explicit CueCollector(const CueOptions& options) : m_options(options) {}

    const CueTiming& Timing() const { return m_options.timing; }
    // What stands at the line is not read.
    void Lose(std::size_t line, std::string why);
    // It is read, and yet wrong.
    void Note(std::size_t line, std::string why);

    // A cue whose last frame is the one before end; text and character have tokens. Blanks around
    // them and line ends in the character go.
    void Add(std::size_t line, std::int64_t first, std::int64_t end, std::string_view text,
             std::string_view character);
    // The same with a plain text.
    void AddPlain(std::size_t line, std::int64_t first, std::int64_t end, std::string_view text,
                  std::string_view character);

    CueFile Finish();

private:
    void Tell(std::size_t line, std::string why, bool lost);
    void CheckText(std::size_t line, std::string_view name, std::string_view text,
                   std::size_t limit);
    void FindOverlaps();

    const CueOptions& m_options;
    CueFile m_file;
    bool m_full = false;
};

// The readers: UTF-8 whose lines end with LF.
void ReadSubRip(std::string_view utf8, CueCollector& out);
void ReadWebVtt(std::string_view utf8, CueCollector& out);
void ReadAss(std::string_view utf8, CueCollector& out);
void ReadCueTable(std::string_view utf8, CueCollector& out);

} // namespace host
