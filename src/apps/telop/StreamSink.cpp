// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/StreamSink.h"

namespace telop {

host::OutputResult StreamSink::Put(const Ticket&, const host::Frame& frame,
                                   const host::PixelRect& touched, host::PngWriter&,
                                   std::string& why) {
    return m_writer.Write(frame, touched, why) ? host::OutputResult::kWritten
                                               : host::OutputResult::kFailed;
}

std::string StreamSink::NameOf(const Ticket& ticket) const {
    return "frame " + std::to_string(ticket.values.frame);
}

} // namespace telop
