// SPDX-License-Identifier: BSD-3-Clause
// Files that appear whole or not at all: written beside their place under a hidden name, then renamed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace host {

// What to do with a file that is there already.
enum class Existing : std::uint8_t { kRefuse, kOverwrite, kSkip };

enum class OutputResult : std::uint8_t { kWritten, kSkipped, kFailed };

// When the bytes are to be safe from a power cut: before the file gets its name, or once FlushFolder
// is called for all the files of a run.
enum class Flush : std::uint8_t { kNow, kLater };

// kFailed: `why` names the file and the reason, and no part of it stays behind. Under kRefuse and
// kSkip a file that another program makes meanwhile is never replaced. An overwritten file keeps its
// permissions, but for those of running as somebody else, and a symbolic link keeps pointing to the
// file that is replaced. What is no regular file, such as /dev/null, is written straight.
OutputResult WriteWhole(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                        Existing existing, std::string& why, Flush flush = Flush::kNow);

// Puts on the disk what was written into the folder; empty is the current one. False with the reason.
bool FlushFolder(const std::filesystem::path& folder, std::string& why);

// Removes the hidden files that a writer left in the folder when it was killed, and none that a
// writer still holds.
void RemoveLeftovers(const std::filesystem::path& folder);

} // namespace host
