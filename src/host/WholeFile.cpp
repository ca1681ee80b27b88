// SPDX-License-Identifier: BSD-3-Clause
#include "host/WholeFile.h"

#include <cerrno>
#include <fcntl.h>

#include "host/frames/Descriptor.h"

namespace host {

namespace {

// 0, or the errno that stopped it.
int ReadAll(int descriptor, std::size_t maxSize, std::vector<std::uint8_t>& bytes) {
    constexpr std::size_t kChunk = 65536;
    while (bytes.size() <= maxSize) {
        const auto used = bytes.size();
        bytes.resize(used + kChunk);
        const auto got = ::read(descriptor, bytes.data() + used, kChunk);
        bytes.resize(used + static_cast<std::size_t>(got > 0 ? got : 0));
        if (got == 0)
            return 0;
        if (got < 0 && errno != EINTR)
            return errno;
    }
    return EFBIG;
}

} // namespace

std::optional<std::vector<std::uint8_t>> ReadWhole(int descriptor, std::string_view name,
                                                   std::size_t maxSize, std::string& why) {
    std::vector<std::uint8_t> bytes;
    const int error = descriptor < 0 ? errno : ReadAll(descriptor, maxSize, bytes);
    if (error == 0)
        return bytes;
    why = Printable(name) + ": cannot be read: " +
          (error == EFBIG ? "more than " + std::to_string(maxSize) + " bytes" : ErrorText(error));
    return std::nullopt;
}

std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& file,
                                                       std::size_t maxSize, std::string& why) {
    const Descriptor in(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    return ReadWhole(in.Get(), file.native(), maxSize, why);
}

} // namespace host
