// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/StreamSink.h"

namespace host {

OutputResult StreamSink::Put(const Ticket&, const Frame& frame, const PixelRect& touched,
                             PngWriter&, std::string& why) {
    return m_writer.Write(frame, touched, why) ? OutputResult::kWritten : OutputResult::kFailed;
}

std::string StreamSink::NameOf(const Ticket& ticket) const {
    return "frame " + std::to_string(ticket.values.frame);
}

} // namespace host
