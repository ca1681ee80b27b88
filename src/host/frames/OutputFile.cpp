// SPDX-License-Identifier: BSD-3-Clause
// The system calls behind a file that appears at once.

#include "host/frames/OutputFile.h"

#include <cerrno>
#include <cstdio>
#include <optional>
#include <random>

#include <fcntl.h>
#include <sys/stat.h>

#include "host/frames/Descriptor.h"

namespace host {
namespace {

// A new file beside another, gone again unless it takes the other's place.
class TemporaryFile {
public:
    // In the same folder, for only there a rename is one step. The name is short, so that
    // it is good wherever the file's own is.
    explicit TemporaryFile(const std::filesystem::path& beside) {
        std::random_device random;
        do {
            m_path = beside.parent_path() / (".telop-" + std::to_string(random()) + ".part");
            m_descriptor = ::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                  S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
        } while (m_descriptor < 0 && errno == EEXIST);
        m_error = m_descriptor < 0 ? errno : 0;
        m_exists = m_descriptor >= 0;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        if (m_exists)
            ::unlink(m_path.c_str());
    }

    // Each gives 0 or an errno.
    int Error() const { return m_error; }
    int Fill(std::span<const std::uint8_t> bytes, std::optional<mode_t> mode) {
        // Permissions that cannot be had, as on foreign file systems, are no reason to lose a frame.
        if (mode && ::fchmod(m_descriptor, *mode) != 0)
            errno = 0;
        const int error = WriteAll(m_descriptor, bytes);
        // Closing is where some file systems report that the disk is full.
        const int closed = ::close(m_descriptor) == 0 ? 0 : errno;
        m_descriptor = -1;
        return error != 0 ? error : closed;
    }
    int MoveTo(const std::filesystem::path& place, Existing existing) {
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
    std::filesystem::path m_path;
    int m_descriptor = -1;
    int m_error = 0;
    bool m_exists = false;
};

int WriteBeside(const std::filesystem::path& place, std::span<const std::uint8_t> bytes,
                Existing existing, std::optional<mode_t> mode) {
    TemporaryFile temporary(place);
    int error = temporary.Error();
    if (error == 0)
        error = temporary.Fill(bytes, mode);
    return error != 0 ? error : temporary.MoveTo(place, existing);
}

int WriteStraight(const std::filesystem::path& place, std::span<const std::uint8_t> bytes) {
    Descriptor out(::open(place.c_str(), O_WRONLY | O_CLOEXEC));
    if (out.Get() < 0)
        return errno;
    const int error = WriteAll(out.Get(), bytes);
    const int closed = out.Close() ? 0 : errno;
    return error != 0 ? error : closed;
}

} // namespace

OutputResult WriteWhole(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                        Existing existing, std::string& why) {
    std::filesystem::path place = file;
    struct stat status {};
    const bool exists = ::stat(file.c_str(), &status) == 0;
    const bool regular = !exists || S_ISREG(status.st_mode);
    int error = exists && existing != Existing::kOverwrite && regular ? EEXIST : 0;
    if (error == 0 && exists && S_ISDIR(status.st_mode))
        error = EISDIR;
    if (error == 0 && exists && regular) {
        std::error_code unresolved;
        place = std::filesystem::canonical(file, unresolved);
        error = unresolved.value();
    }
    if (error == 0)
        error = regular
                    ? WriteBeside(place, bytes, existing,
                                  exists ? std::optional(status.st_mode & 07777U) : std::nullopt)
                    : WriteStraight(file, bytes);
    if (error == 0)
        return OutputResult::kWritten;
    if (error == EEXIST && existing == Existing::kSkip)
        return OutputResult::kSkipped;
    why = file.native() + ": " +
          (error == EEXIST ? "exists already" : "cannot be written: " + ErrorText(error));
    return OutputResult::kFailed;
}

} // namespace host
