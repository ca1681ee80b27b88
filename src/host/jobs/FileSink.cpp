// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FileSink.h"

#include <system_error>
#include <utility>

namespace host {

FileSink::FileSink(PathOf pathOf, Existing existing)
    : m_pathOf(std::move(pathOf)), m_existing(existing) {}

bool FileSink::Wants(const Ticket& ticket) const {
    std::error_code ignored;
    return m_existing != Existing::kSkip || !std::filesystem::exists(m_pathOf(ticket), ignored);
}

OutputResult FileSink::Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                           PngWriter& writer, std::string& why) {
    return writer.Write(m_pathOf(ticket), frame, touched, m_existing, why);
}

} // namespace host
