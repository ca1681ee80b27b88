// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/FrameFiles.h"

#include <algorithm>
#include <map>
#include <optional>

#include "host/Message.h"
#include "host/frames/FramePattern.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kNamed = 3;    // of many sequences
constexpr std::size_t kChoices = 20; // more than anybody reads

struct Grouped {
    // By what is the same in all of a sequence's names. The ending may be in capitals in some.
    std::map<std::string, std::vector<FrameFile>> sequences;
    std::vector<std::string> without; // a number
};

// place counts the numbers of a name from its end.
Grouped Group(const fs::path& folder, const std::vector<std::string>& names, std::size_t place) {
    Grouped grouped;
    for (const auto& name : names) {
        const auto stem = fs::path(name).stem().native();
        const auto numbers = NumbersIn(stem);
        if (place >= numbers.size()) {
            grouped.without.push_back(name);
            continue;
        }
        const auto& [at, length, number] = numbers[place];
        const auto rest = std::string(stem).replace(at, length, "/");
        grouped.sequences[rest].push_back({ number, folder / name });
    }
    return grouped;
}

bool IsClear(Grouped& grouped, std::string& reason) {
    return grouped.without.empty() && grouped.sequences.size() == 1 &&
           SortFrames(grouped.sequences.begin()->second, reason);
}

// Wide enough for all of them, and of the sequence alone.
std::optional<std::string> PatternOf(const std::vector<FrameFile>& sequence) {
    std::optional<std::string> shortest;
    for (const auto& frame : sequence)
        if (auto pattern = FramePattern::Of(frame.path.native());
            pattern && (!shortest || pattern->size() < shortest->size()))
            shortest = std::move(pattern);
    return shortest;
}

std::string FileName(const fs::path& path) {
    return Printable(path.filename().native());
}

std::string Listed(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), kNamed); ++i)
        text += (i == 0                                            ? ""
                 : i + 1 == names.size() && names.size() <= kNamed ? " and "
                                                                   : ", ") +
                FileName(names[i]);
    const auto more = names.size() - std::min(names.size(), kNamed);
    return more > 0 ? text + " and " + std::to_string(more) + " more" : text;
}

// What is there in the place of one sequence.
FolderFrames Unclear(const Grouped& grouped, const std::string& reason) {
    std::vector<const std::vector<FrameFile>*> sequences;
    for (const auto& [rest, frames] : grouped.sequences)
        sequences.push_back(&frames);
    std::ranges::stable_sort(sequences, std::ranges::greater(),
                             [](const auto* frames) { return frames->size(); });
    FolderFrames folder;
    std::vector<std::string> shown;
    for (const auto* frames : sequences) {
        const auto pattern = PatternOf(*frames);
        shown.push_back(pattern.value_or(frames->front().path.native()));
        if (pattern && folder.choices.size() < kChoices)
            folder.choices.push_back(*pattern);
    }
    folder.reason = reason;
    if (sequences.size() > 1)
        folder.reason = "holds more than one sequence, " + Listed(shown);
    if (!grouped.without.empty())
        folder.reason = (sequences.size() > 1 ? folder.reason + ", and " : "") +
                        Listed(grouped.without) +
                        (grouped.without.size() > 1 ? " have no number" : " has no number") +
                        ", and a frame has the number of its file";
    folder.reason += folder.choices.empty() ? "; name one picture, or number them, as shot.0001.png"
                                            : "; choose by the names' pattern, as " +
                                                  Printable(folder.choices.front());
    return folder;
}

} // namespace

bool SortFrames(std::vector<FrameFile>& frames, std::string& reason) {
    std::ranges::sort(frames, {}, &FrameFile::number);
    const auto twice = std::ranges::adjacent_find(frames, {}, &FrameFile::number);
    if (twice == frames.end())
        return true;
    reason = FileName(twice->path) + " and " + FileName((twice + 1)->path) + " are both frame " +
             std::to_string(twice->number);
    return false;
}

FolderFrames NumberPictures(const fs::path& folder, std::vector<std::string> names) {
    std::ranges::sort(names);
    std::string reason;
    auto last = Group(folder, names, 0);
    if (IsClear(last, reason))
        return { .frames = std::move(last.sequences.begin()->second) };
    for (std::size_t place = 1;; ++place) {
        auto grouped = Group(folder, names, place);
        std::string ignored;
        if (grouped.sequences.empty())
            return Unclear(last, reason);
        if (IsClear(grouped, ignored))
            return { .frames = std::move(grouped.sequences.begin()->second) };
    }
}

} // namespace host
