// SPDX-License-Identifier: BSD-3-Clause
// The picture files of a sequence as a source of frames.
#pragma once

#include <atomic>
#include <vector>

#include "host/frames/Sequence.h"
#include "host/jobs/FrameSource.h"

namespace host {

class FileSource : public FrameSource {
public:
    explicit FileSource(std::vector<FrameFile> files);

    Taken Take(Ticket& ticket, Frame& frame, std::string& why) override;
    bool Load(const Ticket& ticket, PngReader& reader, Frame& frame, std::string& why) override;
    std::int64_t Count() const override { return static_cast<std::int64_t>(m_files.size()); }
    bool MayWait() const override { return false; }

private:
    std::vector<FrameFile> m_files;
    std::size_t m_next = 0;
};

} // namespace host
