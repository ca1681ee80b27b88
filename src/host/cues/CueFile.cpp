// SPDX-License-Identifier: BSD-3-Clause
#include "host/cues/CueFile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/cues/CueCollector.h"
#include "host/cues/SubtitleBlocks.h"
#include "host/text/TextFile.h"
#include "platform/TextContext.h"

namespace host {

namespace {

std::string LowerExtension(std::string_view fileName) {
    const auto name = fileName.substr(fileName.find_last_of('/') + 1);
    const auto point = name.find_last_of('.');
    std::string extension(point == std::string_view::npos ? "" : name.substr(point + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return extension;
}

} // namespace

std::optional<CueKind> CueKindOf(std::string_view fileName, std::string_view utf8) {
    constexpr std::array<std::pair<std::string_view, CueKind>, 6> kExtensions { {
        { "srt", CueKind::kSubRip },
        { "vtt", CueKind::kWebVtt },
        { "ass", CueKind::kAss },
        { "ssa", CueKind::kAss },
        { "csv", CueKind::kTable },
        { "tsv", CueKind::kTable },
    } };
    const auto extension = LowerExtension(fileName);
    for (const auto& [known, kind] : kExtensions)
        if (extension == known)
            return kind;
    if (utf8.starts_with("WEBVTT"))
        return CueKind::kWebVtt;
    const auto firstMark = utf8.find_first_not_of(" \t\n");
    if (firstMark == std::string_view::npos)
        return std::nullopt;
    auto rest = utf8.substr(firstMark);
    const auto first = TakeLine(rest);
    if (first.starts_with("[Script Info]") || first.starts_with("[Events]"))
        return CueKind::kAss;
    if (first.find("-->") != std::string_view::npos ||
        TakeLine(rest).find("-->") != std::string_view::npos)
        return CueKind::kSubRip;
    if (first.find_first_of(",;\t") != std::string_view::npos)
        return CueKind::kTable;
    return std::nullopt;
}

std::optional<CueFile> ReadCues(std::string_view bytes, std::string_view fileName,
                                const CueOptions& options, std::string& why) {
    if (bytes.size() > CueFile::kMaxBytes) {
        why = "is larger than " + std::to_string(CueFile::kMaxBytes >> 20) + " MiB";
        return std::nullopt;
    }
    const auto file = TextFile::Decode(bytes, options.encoding, why);
    if (!file)
        return std::nullopt;
    const auto kind = CueKindOf(fileName, file->utf8);
    if (!kind) {
        why = "is no SubRip, WebVTT, ASS, CSV or TSV file";
        return std::nullopt;
    }
    platform::TextContext context(options.documentEncoding);
    const platform::TextScope scope(context);
    CueCollector collector(options);
    for (const auto line : file->badLines)
        collector.Note(line, "there are bytes that are no " +
                                 (options.encoding ? options.encoding->Name() : "UTF"));
    constexpr std::array kReaders { ReadSubRip, ReadWebVtt, ReadAss, ReadCueTable };
    kReaders[static_cast<std::size_t>(*kind)](file->utf8, collector);
    return collector.Finish();
}

} // namespace host
