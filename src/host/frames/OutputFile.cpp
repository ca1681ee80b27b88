// SPDX-License-Identifier: BSD-3-Clause
// The system calls behind a file that appears at once.

#include "host/frames/OutputFile.h"

#include <cerrno>
#include <cstdio>
#include <optional>
#include <random>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "host/frames/Descriptor.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNameStart = ".telop-";
constexpr std::string_view kNameEnd = ".part";

const char* OrCurrent(const fs::path& folder) {
    return folder.empty() ? "." : folder.c_str();
}

// A new file beside another, gone again unless it takes the other's place. It is locked while it
// lives, so that no run takes it for a leftover.
class TemporaryFile {
public:
    // In the same folder, for only there a rename is one step. The name is short, so that
    // it is good wherever the file's own is.
    explicit TemporaryFile(const fs::path& beside) {
        std::random_device random;
        do {
            m_path = beside.parent_path() /
                     std::string(kNameStart).append(std::to_string(random())).append(kNameEnd);
            m_file = Descriptor(::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                       S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH));
        } while (m_file.Get() < 0 ? errno == EEXIST : !Hold());
        m_error = m_file.Get() < 0 ? errno : 0;
        m_exists = m_error == 0;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (m_exists)
            ::unlink(m_path.c_str());
    }

    // Each gives 0 or an errno.
    int Error() const { return m_error; }
    int Fill(std::span<const std::uint8_t> bytes, std::optional<mode_t> mode, Flush flush) {
        // Permissions that cannot be had, as on foreign file systems, are no reason to lose a frame.
        if (mode && ::fchmod(m_file.Get(), *mode) != 0)
            errno = 0;
        int error = WriteAll(m_file.Get(), bytes);
        if (error == 0 && flush == Flush::kNow && ::fsync(m_file.Get()) != 0 && errno != EINVAL)
            error = errno;
        // Keeps the lock until the file has its name.
        m_lock = Descriptor(::fcntl(m_file.Get(), F_DUPFD_CLOEXEC, 0));
        const int closed = m_file.Close();
        return error != 0 ? error : closed;
    }
    int MoveTo(const fs::path& place, Existing existing) {
        int moved = -1;
        if (existing != Existing::kOverwrite) {
            moved =
                ::renameat2(AT_FDCWD, m_path.c_str(), AT_FDCWD, place.c_str(), RENAME_NOREPLACE);
            // Not every file system can do that in one step.
            if (moved != 0 && errno != EINVAL && errno != ENOSYS)
                return errno;
            if (moved != 0 && ::access(place.c_str(), F_OK) == 0)
                return EEXIST;
        }
        if (moved != 0 && ::rename(m_path.c_str(), place.c_str()) != 0)
            return errno;
        m_exists = false;
        return 0;
    }

private:
    // False when another run took the file for a leftover before the lock was there. Where files
    // cannot be locked nothing is ever taken for one.
    bool Hold() const {
        while (::flock(m_file.Get(), LOCK_EX) != 0)
            if (errno != EINTR)
                return true;
        struct stat status {};
        return ::fstat(m_file.Get(), &status) != 0 || status.st_nlink > 0;
    }

    fs::path m_path;
    Descriptor m_file, m_lock;
    int m_error = 0;
    bool m_exists = false;
};

int WriteBeside(const fs::path& place, std::span<const std::uint8_t> bytes, Existing existing,
                std::optional<mode_t> mode, Flush flush) {
    TemporaryFile temporary(place);
    int error = temporary.Error();
    if (error == 0)
        error = temporary.Fill(bytes, mode, flush);
    return error != 0 ? error : temporary.MoveTo(place, existing);
}

int WriteStraight(const fs::path& place, std::span<const std::uint8_t> bytes) {
    Descriptor out(::open(place.c_str(), O_WRONLY | O_CLOEXEC));
    if (out.Get() < 0)
        return errno;
    const int error = WriteAll(out.Get(), bytes);
    const int closed = out.Close();
    return error != 0 ? error : closed;
}

} // namespace

OutputResult WriteWhole(const fs::path& file, std::span<const std::uint8_t> bytes,
                        Existing existing, std::string& why, Flush flush) {
    // Whoever may write a file must not be able to make it run with the rights of its owner.
    constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
    fs::path place = file;
    struct stat status {};
    const bool exists = ::stat(file.c_str(), &status) == 0;
    const bool regular = !exists || S_ISREG(status.st_mode);
    int error = exists && existing != Existing::kOverwrite && regular ? EEXIST : 0;
    if (error == 0 && exists && S_ISDIR(status.st_mode))
        error = EISDIR;
    if (error == 0 && exists && regular) {
        std::error_code unresolved;
        place = fs::canonical(file, unresolved);
        error = unresolved.value();
    }
    if (error == 0)
        error = regular ? WriteBeside(place, bytes, existing,
                                      exists ? std::optional(status.st_mode & kPermissions)
                                             : std::nullopt,
                                      flush)
                        : WriteStraight(file, bytes);
    if (error == 0)
        return OutputResult::kWritten;
    if (error == EEXIST && existing == Existing::kSkip)
        return OutputResult::kSkipped;
    why = Printable(file.native()) + ": " +
          (error == EEXIST ? "exists already" : "cannot be written: " + ErrorText(error));
    return OutputResult::kFailed;
}

bool FlushFolder(const fs::path& folder, std::string& why) {
    const Descriptor opened(::open(OrCurrent(folder), O_RDONLY | O_CLOEXEC));
    if (opened.Get() < 0)
        ::sync(); // a folder that may be written and not read
    else if (::syncfs(opened.Get()) != 0)
        why = Printable(OrCurrent(folder)) +
              ": what was written cannot be put on the disk: " + ErrorText(errno);
    return why.empty();
}

void RemoveLeftovers(const fs::path& folder) {
    std::error_code error;
    fs::directory_iterator at(OrCurrent(folder), error);
    for (; !error && at != fs::directory_iterator(); at.increment(error)) {
        const std::string name = at->path().filename().native();
        if (!name.starts_with(kNameStart) || !name.ends_with(kNameEnd))
            continue;
        const Descriptor left(
            ::open(at->path().c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
        if (left.Get() >= 0 && ::flock(left.Get(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(at->path().c_str());
    }
}

} // namespace host
