// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/Memory.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

// The number behind the key at the start of a line; without a key that at the file's start. Nothing
// for "max" too.
std::optional<std::uint64_t> NumberIn(const fs::path& file, std::string_view key = {}) {
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string word;
        std::uint64_t number = 0;
        if ((key.empty() || (words >> word && word == key)) && words >> number)
            return number;
    }
    return std::nullopt;
}

// A kind of control group: where it lies, and what it calls its limit, what is used, and what of that
// is a copy of files, which goes when the room is needed.
struct GroupFiles {
    const char* folder;
    const char* limit;
    const char* used;
    const char* copies;
};
constexpr GroupFiles kSecond { "sys/fs/cgroup", "memory.max", "memory.current", "inactive_file" };
constexpr GroupFiles kFirst { "sys/fs/cgroup/memory", "memory.limit_in_bytes",
                              "memory.usage_in_bytes", "total_inactive_file" };

// What a group and all those around it leave. In a container the folders that the group's path names
// may be missing, and the outermost one is the container's.
std::uint64_t FreeInGroup(const fs::path& root, const GroupFiles& files, fs::path group) {
    std::uint64_t least = kNoLimit;
    const fs::path top = root / files.folder;
    for (group = group.relative_path();; group = group.parent_path()) {
        const fs::path folder = group.empty() ? top : top / group;
        if (const auto limit = NumberIn(folder / files.limit)) {
            const auto used = NumberIn(folder / files.used).value_or(0);
            const auto copies = NumberIn(folder / "memory.stat", files.copies).value_or(0);
            const auto taken = used - std::min(used, copies);
            least = std::min(least, *limit - std::min(*limit, taken));
        }
        if (group.empty())
            return least;
    }
}

} // namespace

std::uint64_t FreeMemory(const fs::path& root) {
    std::uint64_t least = kNoLimit;
    if (const auto kibibytes = NumberIn(root / "proc/meminfo", "MemAvailable:"))
        least = *kibibytes * 1024;
    // Each line is "number:controllers:path"; the second version has neither a number nor controllers.
    std::ifstream groups(root / "proc/self/cgroup");
    for (std::string line; std::getline(groups, line);) {
        const auto first = line.find(':');
        const auto second = line.find(':', first + 1);
        if (first == std::string::npos || second == std::string::npos)
            continue;
        const auto controllers = "," + line.substr(first + 1, second - first - 1) + ",";
        const auto path = line.substr(second + 1);
        if (controllers == ",,")
            least = std::min(least, FreeInGroup(root, kSecond, path));
        else if (controllers.find(",memory,") != std::string::npos)
            least = std::min(least, FreeInGroup(root, kFirst, path));
    }
    return least;
}

} // namespace host
