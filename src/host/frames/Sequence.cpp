// SPDX-License-Identifier: BSD-3-Clause
// Finds frames with one look into their folder, and matches them with their outputs.

#include "host/frames/Sequence.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include <sys/stat.h>

#include "host/Message.h"
#include "host/frames/OtherFormats.h"
#include "host/frames/PngReader.h"

namespace host {
namespace {

namespace fs = std::filesystem;

bool IsPng(const fs::path& file) {
    std::string extension = file.extension().native();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".png";
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
    if (!read)
        reason = "its folder cannot be read: " + error.message();
    else if (frames.empty())
        reason = "no frame has such a name; the first would be " + Printable(pattern.PathOf(1));
    return read && !frames.empty() && SortFrames(frames, reason);
}

FolderFrames ListFolder(const fs::path& folder) {
    std::error_code error;
    std::vector<std::string> names;
    std::string way; // to PNG files from what else is there
    const bool read = ForEachFile(folder, error, [&](const fs::path& name) {
        if (IsPng(name))
            names.push_back(name.native());
        else if (way.empty())
            way = WayFrom(name);
    });
    if (!read)
        return { .reason = "the folder cannot be read: " + error.message() };
    if (names.empty())
        return { .reason = "the folder holds no PNG files" + (way.empty() ? "" : ", and " + way) };
    return NumberPictures(folder, std::move(names));
}

// False, with the way out, for what another program has to turn into PNG before.
bool MayBePng(const fs::path& file, std::string& reason) {
    const auto way = IsPng(file) ? "" : WayFrom(file);
    if (way.empty() || LookAtPng(file))
        return true;
    reason = "is not a PNG file; " + way;
    return false;
}

std::string WhyNotThere(std::string_view input, const std::error_code& error) {
    if (input.empty())
        return "no input is given";
    if (error && error != std::errc::no_such_file_or_directory)
        return "cannot be read: " + error.message();
    const bool isWildcard = input.find_first_of("*?") != std::string_view::npos;
    return std::string("there is no such file or folder") +
           (isWildcard ? "; the frames of a sequence are named by their folder, or by a pattern "
                         "such as shot.####.png"
                       : "");
}

std::int64_t NumberOf(const fs::path& picture) {
    const auto numbers = NumbersIn(picture.stem().native());
    return numbers.empty() ? 1 : numbers.front().number;
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

std::optional<Sequence> Sequence::Open(std::string_view input, std::string& why,
                                       std::vector<std::string>* choices) {
    Sequence sequence;
    sequence.m_input = input;
    const fs::path path(input);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    std::string reason;
    bool found = true;
    if (fs::is_directory(status)) {
        sequence.m_kind = Kind::kFolder;
        auto folder = ListFolder(path);
        found = !folder.frames.empty();
        sequence.m_frames = std::move(folder.frames);
        reason = folder.reason;
        if (choices)
            *choices = std::move(folder.choices);
    } else if (fs::exists(status)) {
        sequence.m_frames.push_back({ NumberOf(path), path });
        found = MayBePng(path, reason);
    } else if (FramePattern::LooksLikeOne(input)) {
        const auto pattern = FramePattern::Parse(input, why);
        if (!pattern)
            return {};
        sequence.m_kind = Kind::kPattern;
        found = ListPattern(*pattern, sequence.m_frames, reason) &&
                MayBePng(sequence.m_frames.front().path, reason);
    } else {
        found = false;
        reason = WhyNotThere(input, error);
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
    const auto way = WayTo(out.m_path);
    if (IsFolder(output, sequence.InputKind())) {
        out.m_isFolder = true;
    } else if (FramePattern::LooksLikeOne(output)) {
        out.m_pattern = FramePattern::Parse(output, why);
        if (!out.m_pattern)
            return {};
    } else if (sequence.InputKind() != Sequence::Kind::kPicture && way.empty()) {
        return fail("is one file, but " + Printable(sequence.m_input) +
                    " is a sequence; name a folder, as " + Printable(output) +
                    "/, or a place for the frame's number, as " +
                    Printable((out.m_path.parent_path() / out.m_path.stem()).native()) +
                    ".%04d.png");
    }
    if (!out.m_isFolder && !MayHoldPng(out.m_path))
        return fail("frames are written as PNG; " +
                    (way.empty() ? "let the name end in .png" : way));

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
