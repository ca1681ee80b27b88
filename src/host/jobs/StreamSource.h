// SPDX-License-Identifier: BSD-3-Clause
// A stream of uncompressed pictures as a source of frames.
#pragma once

#include "host/frames/FrameRanges.h"
#include "host/frames/PamStream.h"
#include "host/jobs/FrameSource.h"

namespace host {

class StreamSource : public FrameSource {
public:
    // first is the number of the stream's first frame; frames outside wanted are read and dropped,
    // and nothing is read past the last of them.
    StreamSource(int descriptor, std::int64_t first, FrameRanges wanted);

    Taken Take(Ticket& ticket, Frame& frame, std::string& why) override;
    bool Load(const Ticket&, PngReader&, Frame&, std::string&) override { return true; }
    std::int64_t Count() const override { return 0; }
    bool MayWait() const override { return true; }

private:
    PamReader m_reader;
    std::int64_t m_number;
    std::int64_t m_last = 0; // of the frames that are wanted
    FrameRanges m_wanted;
};

} // namespace host
