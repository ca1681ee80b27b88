// SPDX-License-Identifier: BSD-3-Clause
#include "host/WholeFile.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace host {

namespace {

std::string SystemText(int error) {
    return std::generic_category().message(error);
}

// Closes a file descriptor.
class File {
public:
    explicit File(int descriptor) : m_descriptor(descriptor) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }

    bool IsOpen() const { return m_descriptor >= 0; }
    int Descriptor() const { return m_descriptor; }
    // A full disk may show only now.
    bool Close() { return close(std::exchange(m_descriptor, -1)) == 0; }

private:
    int m_descriptor;
};

bool ReadAll(int descriptor, std::size_t maxSize, std::vector<std::uint8_t>& bytes) {
    constexpr std::size_t kChunk = 65536;
    while (bytes.size() <= maxSize) {
        auto const used = bytes.size();
        bytes.resize(used + kChunk);
        auto const got = read(descriptor, bytes.data() + used, kChunk);
        bytes.resize(used + static_cast<std::size_t>(got > 0 ? got : 0));
        if (got == 0)
            return true;
        if (got < 0 && errno != EINTR)
            return false;
    }
    errno = EFBIG;
    return false;
}

bool WriteAll(int descriptor, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        auto const put = write(descriptor, bytes.data(), bytes.size());
        if (put < 0 && errno != EINTR)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(put > 0 ? put : 0));
    }
    return true;
}

std::filesystem::path TemporaryBeside(const std::filesystem::path& file) {
    static std::atomic<unsigned> count { 0 };
    // The name itself is left out: with it the temporary one could be too long.
    return file.parent_path() /
           (".telop-" + std::to_string(getpid()) + "-" + std::to_string(count++) + ".tmp");
}

// Where the bytes belong: the file that a link points at.
std::filesystem::path Target(const std::filesystem::path& file) {
    std::error_code error;
    auto const target = std::filesystem::weakly_canonical(file, error);
    return error ? file : target;
}

bool WriteTemporary(const std::filesystem::path& temporary, const std::filesystem::path& target,
                    std::span<const std::uint8_t> bytes) {
    File out(open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!out.IsOpen())
        return false;
    struct stat old;
    if (stat(target.c_str(), &old) == 0 && fchmod(out.Descriptor(), old.st_mode & 07777) != 0)
        return false;
    return WriteAll(out.Descriptor(), bytes) && out.Close();
}

bool Replace(const std::filesystem::path& target, std::span<const std::uint8_t> bytes) {
    auto const temporary = TemporaryBeside(target);
    if (WriteTemporary(temporary, target, bytes) && rename(temporary.c_str(), target.c_str()) == 0)
        return true;
    auto const error = errno;
    unlink(temporary.c_str());
    errno = error;
    return false;
}

// A pipe or a device takes the bytes itself: renaming would put a plain file in its place.
bool IsSpecial(const std::filesystem::path& target) {
    struct stat status;
    return stat(target.c_str(), &status) == 0 && !S_ISREG(status.st_mode) &&
           !S_ISDIR(status.st_mode);
}

bool WriteInto(const std::filesystem::path& target, std::span<const std::uint8_t> bytes) {
    File out(open(target.c_str(), O_WRONLY | O_CLOEXEC));
    return out.IsOpen() && WriteAll(out.Descriptor(), bytes) && out.Close();
}

} // namespace

std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& file,
                                                       std::size_t maxSize, std::string& why) {
    File const in(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    std::vector<std::uint8_t> bytes;
    if (in.IsOpen() && ReadAll(in.Descriptor(), maxSize, bytes))
        return bytes;
    why = file.string() + ": cannot be read: " +
          (errno == EFBIG ? "more than " + std::to_string(maxSize) + " bytes" : SystemText(errno));
    return std::nullopt;
}

bool WriteWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                    std::string& why) {
    auto const target = Target(file);
    if (IsSpecial(file) ? WriteInto(file, bytes) : Replace(target, bytes))
        return true;
    why = file.string() + ": cannot be written: " + SystemText(errno);
    return false;
}

} // namespace host
