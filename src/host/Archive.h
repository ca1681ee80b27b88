// SPDX-License-Identifier: BSD-3-Clause
// A stretch of bytes that a plug-in reads or writes: in memory, or a file that changes all at once.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <epi/epi.h>

#include "host/Reference.h"

namespace host {

// What is written gathers in memory. A file is replaced by Flush, and only when every write before
// it went well: an archive that is closed without a flush leaves the file as it was, and so does a
// full disk. Used by one thread at a time.
class Archive : public Referenced<Archive, EPIArchiveRef, RefKind::kArchive> {
public:
    Archive(); // closed
    ~Archive();

    void OpenForReading(std::span<const std::uint8_t> bytes);
    void OpenForWriting();
    // mode is epiArchiveRead or epiArchiveWrite. False with the reason, which names the file. Nothing
    // is written yet: what can be told beforehand about a place that takes no file is.
    bool Open(const std::filesystem::path& file, std::int32_t mode, std::string& why);
    bool IsOpen() const { return m_mode != Mode::kClosed; }
    // May follow an Open that failed, too.
    void Close();

    bool IsLoading() const { return m_mode == Mode::kRead; }
    std::int32_t Length() const;
    // The number of bytes, which is less than length at the end of the archive.
    std::int32_t Read(void* buffer, std::int32_t length);
    // The number of bytes: length, or 0 when nothing could be written.
    std::int32_t Write(const void* buffer, std::int32_t length);
    // False, with the reason in Error(), when the file could not be replaced.
    bool Flush();

    std::span<const std::uint8_t> Bytes() const { return m_bytes; }
    // Why the last Open, Write or Flush failed; empty when it did not.
    const std::string& Error() const { return m_error; }

private:
    enum class Mode { kClosed, kRead, kWrite };
    void Reset(Mode mode);

    Mode m_mode = Mode::kClosed;
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_position = 0;
    std::filesystem::path m_file; // empty: memory only
    bool m_refused = false;       // the last Open failed, and was not closed yet
    bool m_unflushed = false;     // written to a file and not flushed
    bool m_broken = false;        // a write failed, so the file stays as it was
    std::string m_error;
};

} // namespace host
