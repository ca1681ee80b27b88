// SPDX-License-Identifier: BSD-3-Clause
#include "host/Archive.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "host/Ledger.h"
#include "host/WholeFile.h"
#include "host/frames/Descriptor.h"
#include "host/frames/OutputFile.h"

namespace host {

namespace {

// Lengths and counts of bytes are signed 32-bit at the boundary.
constexpr std::size_t kMaxArchive = std::numeric_limits<std::int32_t>::max();

// Why no file can be put there; 0 when nothing speaks against it.
int PlaceError(const std::filesystem::path& file) {
    std::error_code unknown;
    const auto status = std::filesystem::status(file, unknown);
    if (std::filesystem::is_directory(status))
        return EISDIR;
    // What is no regular file, a device, is written straight; a file is replaced through its folder.
    const bool straight =
        std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
    const auto folder = std::filesystem::weakly_canonical(file, unknown).parent_path() / ".";
    const auto reached =
        straight ? ::access(file.c_str(), W_OK) : ::access(folder.c_str(), W_OK | X_OK);
    return reached == 0 ? 0 : errno;
}

void RecordMisuse(const char* what) {
    Ledger::Get().RecordMisuse(what);
}

} // namespace

Archive::Archive() {
    Ledger::Get().Lend(Lent::kArchive);
}

Archive::~Archive() {
    if (IsOpen())
        Close();
    Ledger::Get().Return(Lent::kArchive);
}

void Archive::Reset(Mode mode) {
    m_mode = mode;
    m_bytes.clear();
    m_position = 0;
    m_file.clear();
    m_refused = false;
    m_unflushed = false;
    m_broken = false;
    m_error.clear();
}

void Archive::OpenForReading(std::span<const std::uint8_t> bytes) {
    Reset(Mode::kRead);
    m_bytes.assign(bytes.begin(), bytes.end());
}

void Archive::OpenForWriting() {
    Reset(Mode::kWrite);
}

bool Archive::Open(const std::filesystem::path& file, std::int32_t mode, std::string& why) {
    Reset(Mode::kClosed);
    if (mode == epiArchiveRead) {
        auto bytes = ReadWholeFile(file, kMaxArchive, m_error);
        if (bytes) {
            m_bytes = std::move(*bytes);
            m_mode = Mode::kRead;
        }
    } else if (mode == epiArchiveWrite) {
        if (const int error = PlaceError(file))
            m_error = Printable(file.native()) + ": cannot be written: " + ErrorText(error);
        else
            m_mode = Mode::kWrite; // An empty file is a whole one, so this much may be flushed.
    } else {
        m_error = Printable(file.native()) + ": cannot be opened in mode " + std::to_string(mode);
    }
    m_file = file;
    why = m_error;
    m_refused = !IsOpen();
    return IsOpen();
}

void Archive::Close() {
    if (!IsOpen() && !m_refused)
        RecordMisuse("an archive was closed that is not open");
    else if (m_unflushed && !m_broken)
        RecordMisuse("an archive of a file was closed after a write without a flush");
    m_mode = Mode::kClosed;
    m_refused = false;
    m_unflushed = false;
}

std::int32_t Archive::Length() const {
    return static_cast<std::int32_t>(m_bytes.size());
}

std::int32_t Archive::Read(void* buffer, std::int32_t length) {
    if (m_mode != Mode::kRead || length < 0 || (!buffer && length > 0)) {
        RecordMisuse(m_mode != Mode::kRead ? "an archive was read that is not open for reading"
                                           : "an archive was read into no buffer");
        return 0;
    }
    const auto count = std::min(static_cast<std::size_t>(length), m_bytes.size() - m_position);
    std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(m_position), count,
                static_cast<std::uint8_t*>(buffer));
    m_position += count;
    return static_cast<std::int32_t>(count);
}

std::int32_t Archive::Write(const void* buffer, std::int32_t length) {
    if (m_mode != Mode::kWrite) {
        RecordMisuse("an archive was written that is not open for writing");
        return 0;
    }
    m_unflushed = !m_file.empty();
    if (length < 0 || (!buffer && length > 0)) {
        RecordMisuse("an archive was written from no buffer");
        m_broken = true;
        return 0;
    }
    if (static_cast<std::size_t>(length) > kMaxArchive - m_bytes.size()) {
        m_broken = true;
        m_error = Printable(m_file.native()) + ": stays as it was: it was to take more than " +
                  std::to_string(kMaxArchive) + " bytes";
        return 0;
    }
    const auto* bytes = static_cast<const std::uint8_t*>(buffer);
    m_bytes.insert(m_bytes.end(), bytes, bytes + length);
    return length;
}

bool Archive::Flush() {
    if (m_mode != Mode::kWrite) {
        RecordMisuse("an archive was flushed that is not open for writing");
        return false;
    }
    m_unflushed = false;
    if (m_broken) {
        if (m_error.empty())
            m_error = Printable(m_file.native()) + ": stays as it was, since a write before failed";
        return false;
    }
    if (m_file.empty() ||
        WriteWhole(m_file, m_bytes, Existing::kOverwrite, m_error) == OutputResult::kWritten)
        m_error.clear();
    return m_error.empty();
}

} // namespace host
