// SPDX-License-Identifier: BSD-3-Clause
// Finds frames with one look into their folder, and matches them with their outputs.

#include "host/frames/Sequence.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <set>
#include <tuple>
#include <utility>

#include <sys/stat.h>

#include "host/Message.h"

namespace host {
namespace {

namespace fs = std::filesystem;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsPng(const fs::path& file) {
    std::string extension = file.extension().native();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".png";
}

// The last run of digits in the name before its extension.
std::optional<std::int64_t> LastNumberIn(const fs::path& file) {
    const std::string stem = file.stem().native();
    const std::size_t last = stem.find_last_of("0123456789");
    if (last == std::string::npos)
        return {};
    std::size_t first = last;
    while (first > 0 && IsDigit(stem[first - 1]))
        --first;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(&stem[first], &stem[last] + 1, number);
    if (error != std::errc() || number > kFrameMax)
        return {};
    return number;
}

// Digits without the zeros in front, for comparing numbers of any length.
std::string_view TakeNumber(std::string_view& text) {
    const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
    std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

// "cut9" before "cut10".
bool NaturallyLess(std::string_view a, std::string_view b) {
    const auto whole = std::pair(a, b);
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a[0]) && IsDigit(b[0])) {
            const std::string_view left = TakeNumber(a);
            const std::string_view right = TakeNumber(b);
            if (left != right)
                return std::tuple(left.size(), left) < std::tuple(right.size(), right);
        } else {
            if (a[0] != b[0])
                return static_cast<unsigned char>(a[0]) < static_cast<unsigned char>(b[0]);
            a.remove_prefix(1);
            b.remove_prefix(1);
        }
    }
    return a.empty() && b.empty() ? whole.first < whole.second : a.empty();
}

bool ByNumber(const FrameFile& a, const FrameFile& b) {
    return a.number < b.number;
}

// Calls take(name) for every file of the folder that is not hidden. False: `error` says why the
// folder cannot be read.
template <typename Take>
bool ForEachFile(const fs::path& folder, std::error_code& error, Take take) {
    fs::directory_iterator at(folder.empty() ? "." : folder, error);
    while (!error && at != fs::directory_iterator()) {
        std::error_code gone;
        if (at->path().filename().native()[0] != '.' && !at->is_directory(gone))
            take(at->path().filename());
        at.increment(error);
    }
    return !error;
}

bool ListPattern(const FramePattern& pattern, std::vector<FrameFile>& frames, std::string& reason) {
    std::error_code error;
    const bool read = ForEachFile(pattern.Folder(), error, [&](const fs::path& name) {
        if (const auto number = pattern.NumberIn(name.native()))
            frames.push_back({ *number, pattern.Folder() + name.native() });
    });
    std::sort(frames.begin(), frames.end(), ByNumber);
    if (!read)
        reason = "its folder cannot be read: " + error.message();
    else if (frames.empty())
        reason = "no frame has such a name; the first would be " + Printable(pattern.PathOf(1));
    return !frames.empty() && read;
}

// Numbers from the names if each has one of its own, else places.
void NumberFrames(std::vector<FrameFile>& frames) {
    std::set<std::int64_t> numbers;
    for (const FrameFile& frame : frames)
        if (const auto number = LastNumberIn(frame.path))
            numbers.insert(*number);
    const bool ownNumbers = numbers.size() == frames.size();
    for (std::size_t i = 0; i < frames.size(); ++i)
        frames[i].number = ownNumbers ? *LastNumberIn(frames[i].path) : std::int64_t(i) + 1;
    std::sort(frames.begin(), frames.end(), ByNumber);
}

bool ListFolder(const fs::path& folder, std::vector<FrameFile>& frames, std::string& reason) {
    std::error_code error;
    const bool read = ForEachFile(folder, error, [&](const fs::path& name) {
        if (IsPng(name))
            frames.push_back({ 0, folder / name });
    });
    std::sort(frames.begin(), frames.end(), [](const FrameFile& a, const FrameFile& b) {
        return NaturallyLess(a.path.filename().native(), b.path.filename().native());
    });
    NumberFrames(frames);
    if (!read)
        reason = "the folder cannot be read: " + error.message();
    else if (frames.empty())
        reason = "the folder holds no PNG files";
    return !frames.empty() && read;
}

using FileIdentity = std::pair<dev_t, ino_t>;

std::optional<FileIdentity> IdentityOf(const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0)
        return {};
    return FileIdentity { status.st_dev, status.st_ino };
}

bool IsFolder(std::string_view path, Sequence::Kind input) {
    std::error_code error;
    if (path.ends_with('/') || fs::is_directory(path, error))
        return true;
    return input != Sequence::Kind::kPicture && !FramePattern::LooksLikeOne(path) &&
           !fs::path(path).has_extension() && !fs::exists(path, error);
}

} // namespace

bool MayHoldPng(const fs::path& file) {
    std::error_code error;
    return IsPng(file) || fs::is_other(file, error);
}

std::optional<Sequence> Sequence::Open(std::string_view input, std::string& why) {
    Sequence sequence;
    sequence.m_input = input;
    const fs::path path(input);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    std::string reason;
    bool found = true;
    if (fs::is_directory(status)) {
        sequence.m_kind = Kind::kFolder;
        found = ListFolder(path, sequence.m_frames, reason);
    } else if (fs::exists(status)) {
        sequence.m_frames.push_back({ LastNumberIn(path).value_or(1), path });
    } else if (FramePattern::LooksLikeOne(input)) {
        const auto pattern = FramePattern::Parse(input, why);
        if (!pattern)
            return {};
        sequence.m_kind = Kind::kPattern;
        found = ListPattern(*pattern, sequence.m_frames, reason);
    } else {
        found = false;
        reason = input.empty() ? "no input is given" : "cannot be read: " + error.message();
        if (!error)
            reason = "there is no such file or folder";
    }
    if (found)
        return sequence;
    why = (input.empty() ? "" : Printable(input) + ": ") + reason;
    return {};
}

std::vector<std::int64_t> Sequence::Numbers() const {
    std::vector<std::int64_t> numbers;
    for (const FrameFile& frame : m_frames)
        numbers.push_back(frame.number);
    return numbers;
}

std::optional<SequenceOutput> SequenceOutput::Open(const Sequence& sequence,
                                                   std::string_view output, std::string& why) {
    const auto fail = [&](const std::string& reason) {
        why = (output.empty() ? "" : Printable(output) + ": ") + reason;
        return std::nullopt;
    };
    SequenceOutput out;
    out.m_path = output;
    if (output.empty())
        return fail("no output is given");
    if (IsFolder(output, sequence.InputKind())) {
        out.m_isFolder = true;
    } else if (FramePattern::LooksLikeOne(output)) {
        out.m_pattern = FramePattern::Parse(output, why);
        if (!out.m_pattern)
            return {};
    } else if (sequence.InputKind() != Sequence::Kind::kPicture) {
        return fail("is one file, but " + Printable(sequence.m_input) +
                    " is a sequence; name a folder, as " + Printable(output) +
                    "/, or a place for the frame's number, as " +
                    Printable((out.m_path.parent_path() / out.m_path.stem()).native()) +
                    ".%04d.png");
    }
    if (!out.m_isFolder && !MayHoldPng(out.m_path))
        return fail("frames are written as PNG; let the name end in .png");

    std::set<FileIdentity> inputs;
    for (const FrameFile& frame : sequence.Frames())
        if (const auto identity = IdentityOf(frame.path))
            inputs.insert(*identity);
    for (const FrameFile& frame : sequence.Frames()) {
        const auto identity = IdentityOf(out.PathOf(frame));
        if (identity && inputs.contains(*identity))
            return fail((sequence.InputKind() == Sequence::Kind::kPicture
                             ? "the frame"
                             : "frame " + std::to_string(frame.number)) +
                        " would be written over an input, " +
                        Printable(out.PathOf(frame).native()) + "; name another place");
    }
    return out;
}

fs::path SequenceOutput::PathOf(const FrameFile& frame) const {
    if (m_pattern)
        return m_pattern->PathOf(frame.number);
    return m_isFolder ? m_path / frame.path.filename() : m_path;
}

bool MakeFolder(const fs::path& folder, std::string& why) {
    std::error_code error;
    if (!folder.empty() && !fs::is_directory(folder, error))
        fs::create_directories(folder, error);
    if (folder.empty() || fs::is_directory(folder))
        return true;
    why = Printable(folder.native()) + ": the folder cannot be made: " + error.message();
    return false;
}

} // namespace host
