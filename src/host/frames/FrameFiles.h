// SPDX-License-Identifier: BSD-3-Clause
// Which frames the pictures of a folder are: the one number in which their names differ.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace host {

struct FrameFile {
    std::int64_t number = 0;
    std::filesystem::path path;
};

// Ascending by number. Two files of one number are named in `reason`, and the answer is false.
bool SortFrames(std::vector<FrameFile>& frames, std::string& reason);

struct FolderFrames {
    std::vector<FrameFile> frames = {}; // ascending; empty when it is not clear which they are
    std::string reason = {};            // why, and how to choose
    // Paths of the patterns that are there, the one of the most frames first, 20 at most.
    std::vector<std::string> choices = {};
};
// The number of a frame is the last one in its name or, where only an earlier one differs, that. It is
// not clear which frames are meant when a name has no number, when there are several sequences, and
// when two names have the same number.
FolderFrames NumberPictures(const std::filesystem::path& folder, std::vector<std::string> names);

} // namespace host
