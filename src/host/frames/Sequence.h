// SPDX-License-Identifier: BSD-3-Clause
// Which frames an input stands for, and where each of them goes: a picture, a numbered sequence or a
// folder of pictures.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/frames/FrameFiles.h"
#include "host/frames/FramePattern.h"
#include "host/frames/FrameRanges.h"

namespace host {

class Sequence {
public:
    enum class Kind : std::uint8_t { kPicture, kPattern, kFolder };

    // A file that exists under this very name is a picture, also when a '#' is in it; it has the last
    // number in its name, or 1. Looks into the folder once. Nothing, and `why` names the input and the
    // reason, when there is not one frame, or when it is not clear which frames of a folder are meant;
    // choices are then the patterns that are in it.
    static std::optional<Sequence> Open(std::string_view input, std::string& why,
                                        std::vector<std::string>* choices = nullptr);

    Kind InputKind() const { return m_kind; }
    // Ascending by number; never empty.
    const std::vector<FrameFile>& Frames() const { return m_frames; }
    std::vector<std::int64_t> Numbers() const;

private:
    friend class SequenceOutput;

    Kind m_kind = Kind::kPicture;
    std::string m_input;
    std::vector<FrameFile> m_frames;
};

// Devices and pipes take any bytes; files must have a name by which they are known as PNG.
bool MayHoldPng(const std::filesystem::path& file);

// Makes the folder where it is missing, with those above it. An empty path is the current folder.
bool MakeFolder(const std::filesystem::path& folder, std::string& why);

// Where the frames of a sequence go. A pattern, a folder (the frames keep their names) or, for a
// picture, a file. A folder is what exists as one or ends in a slash and, where it cannot be a file
// because there are several frames, a new name without an extension.
class SequenceOutput {
public:
    // Nothing, and `why` says what would fit, when the output cannot take this sequence, or a
    // frame would be written over its own input.
    static std::optional<SequenceOutput> Open(const Sequence& sequence, std::string_view output,
                                              std::string& why);

    std::filesystem::path PathOf(const FrameFile& frame) const;
    // Where they all lie; empty for the current folder.
    std::filesystem::path Folder() const { return m_isFolder ? m_path : m_path.parent_path(); }

private:
    std::optional<FramePattern> m_pattern;
    std::filesystem::path m_path;
    bool m_isFolder = false;
};

} // namespace host
