// SPDX-License-Identifier: BSD-3-Clause
// What the platform layer tells its process about text that it could not honour to the letter. Each
// fact is reported once in a process, however many frames meet it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace platform {

enum class ReportKind {
    kFontSubstituted, // the family asked for is not installed
    kFontBroken,      // a font file could not be read
    kGlyphMissing,    // no installed font has the character
    kTextMalformed,   // bytes that are no text in the application's encoding
    kTextTooLarge,    // no picture can hold the text at its font size
    kBundleBroken,    // a bundle's file is missing or not readable
};

struct Report {
    ReportKind kind;
    std::string asked;  // family name, character as U+XXXX, bytes in hex, points, or path, in UTF-8
    std::string used;   // what stands in for it; empty for nothing
    std::string reason; // why, one clause without a full stop
};

// One line for people: what was asked, what is used instead and why.
std::string Describe(const Report& report);

// Called on the thread that met the fact, with no lock of the platform held. Only one handler is
// installed at a time; an empty one (the start) keeps silent. The handlers that are running finish
// before this returns, so a handler must not call it. The fact may be met in the middle of a line, so
// a handler must not draw, measure or convert text either.
using ReportHandler = std::function<void(const Report&)>;
void SetReportHandler(ReportHandler handler);

// So many different facts are kept and handed on; a text made to be malformed in ever new ways shall
// not fill the memory.
inline constexpr std::size_t kMaxReports = 4096;

// Hands the report to the handler unless one of the same kind and subject went before it.
void ReportOnce(const Report& report);

// Every report so far, in order; for a host that installs its handler late.
std::vector<Report> ReportsSoFar();

// Forgets what was reported, so that it is reported again.
void ForgetReports();

} // namespace platform
