// SPDX-License-Identifier: BSD-3-Clause
// A stream of uncompressed pictures as the place where frames go.
#pragma once

#include "host/frames/PamStream.h"
#include "host/jobs/FrameSink.h"

namespace host {

class StreamSink : public FrameSink {
public:
    explicit StreamSink(int descriptor) : m_writer(descriptor) {}

    bool IsOrdered() const override { return true; }
    bool Wants(const Ticket&) const override { return true; }
    OutputResult Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                     PngWriter& writer, std::string& why) override;
    std::string NameOf(const Ticket& ticket) const override;

private:
    PamWriter m_writer;
};

} // namespace host
