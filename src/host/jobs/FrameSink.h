// SPDX-License-Identifier: BSD-3-Clause
// Where the frames of a run go.
#pragma once

#include <string>

#include "host/frames/Frame.h"
#include "host/frames/OutputFile.h"
#include "host/frames/PngWriter.h"
#include "host/jobs/FrameSource.h"

namespace host {

class FrameSink {
public:
    virtual ~FrameSink() = default;

    // Whether frames must come one after the other in their order. The pump sees to that.
    virtual bool IsOrdered() const = 0;
    // False: the frame is there already and need not be made. Any thread.
    virtual bool Wants(const Ticket& ticket) const = 0;
    // Any thread, unless IsOrdered. kFailed with the reason.
    virtual OutputResult Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                             PngWriter& writer, std::string& why) = 0;
    // Where the frame goes, for messages.
    virtual std::string NameOf(const Ticket& ticket) const = 0;
};

} // namespace host
