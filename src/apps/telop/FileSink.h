// SPDX-License-Identifier: BSD-3-Clause
// Picture files as the place where frames go.
#pragma once

#include <filesystem>
#include <functional>

#include "apps/telop/FrameSink.h"

namespace telop {

class FileSink : public FrameSink {
public:
    using PathOf = std::function<std::filesystem::path(const Ticket&)>;
    // pathOf is called on any thread.
    FileSink(PathOf pathOf, host::Existing existing);

    bool IsOrdered() const override { return false; }
    bool Wants(const Ticket& ticket) const override;
    host::OutputResult Put(const Ticket& ticket, const host::Frame& frame,
                           const host::PixelRect& touched, host::PngWriter& writer,
                           std::string& why) override;
    std::string NameOf(const Ticket& ticket) const override { return m_pathOf(ticket).string(); }

private:
    PathOf m_pathOf;
    host::Existing m_existing;
};

} // namespace telop
