// SPDX-License-Identifier: BSD-3-Clause
// The picture files of a sequence as a source of frames.
#pragma once

#include <atomic>
#include <vector>

#include "apps/telop/FrameSource.h"
#include "host/frames/Sequence.h"

namespace telop {

class FileSource : public FrameSource {
public:
    explicit FileSource(std::vector<host::FrameFile> files);

    Taken Take(Ticket& ticket, host::Frame& frame, std::string& why) override;
    bool Load(const Ticket& ticket, host::PngReader& reader, host::Frame& frame,
              std::string& why) override;
    std::int64_t Count() const override { return static_cast<std::int64_t>(m_files.size()); }
    bool MayWait() const override { return false; }

private:
    std::vector<host::FrameFile> m_files;
    std::size_t m_next = 0;
};

} // namespace telop
