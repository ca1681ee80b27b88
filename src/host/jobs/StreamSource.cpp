// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/StreamSource.h"

#include <algorithm>
#include <utility>

namespace host {

StreamSource::StreamSource(int descriptor, std::int64_t first, FrameRanges wanted)
    : m_reader(descriptor), m_number(first), m_wanted(std::move(wanted)) {
    for (auto const& range : m_wanted.Ranges())
        m_last = std::max(m_last, range.last);
}

FrameSource::Taken StreamSource::Take(Ticket& ticket, Frame& frame, std::string& why) {
    while (m_number <= m_last) {
        auto const result = m_reader.Next(frame, why);
        if (result != StreamResult::kFrame)
            return result == StreamResult::kEnd ? Taken::kEnd : Taken::kFailed;
        auto const number = m_number++;
        if (!m_wanted.Contains(number))
            continue;
        ticket.values = { number, {} };
        ticket.name = "frame " + std::to_string(number) + " of the input stream";
        return Taken::kFrame;
    }
    return Taken::kEnd;
}

} // namespace host
