// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/FileSink.h"

#include <system_error>
#include <utility>

namespace telop {

FileSink::FileSink(PathOf pathOf, host::Existing existing)
    : m_pathOf(std::move(pathOf)), m_existing(existing) {}

bool FileSink::Wants(const Ticket& ticket) const {
    std::error_code ignored;
    return m_existing != host::Existing::kSkip ||
           !std::filesystem::exists(m_pathOf(ticket), ignored);
}

host::OutputResult FileSink::Put(const Ticket& ticket, const host::Frame& frame,
                                 const host::PixelRect& touched, host::PngWriter& writer,
                                 std::string& why) {
    return writer.Write(m_pathOf(ticket), frame, touched, m_existing, why);
}

} // namespace telop
