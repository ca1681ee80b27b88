// SPDX-License-Identifier: BSD-3-Clause
// A stream of uncompressed pictures as the place where frames go.
#pragma once

#include "apps/telop/FrameSink.h"
#include "host/frames/PamStream.h"

namespace telop {

class StreamSink : public FrameSink {
public:
    explicit StreamSink(int descriptor) : m_writer(descriptor) {}

    bool IsOrdered() const override { return true; }
    bool Wants(const Ticket&) const override { return true; }
    host::OutputResult Put(const Ticket& ticket, const host::Frame& frame,
                           const host::PixelRect& touched, host::PngWriter& writer,
                           std::string& why) override;
    std::string NameOf(const Ticket& ticket) const override;

private:
    host::PamWriter m_writer;
};

} // namespace telop
