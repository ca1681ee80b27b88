// SPDX-License-Identifier: BSD-3-Clause
// Picture files as the place where frames go.
#pragma once

#include <filesystem>
#include <functional>

#include "host/jobs/FrameSink.h"

namespace host {

class FileSink : public FrameSink {
public:
    using PathOf = std::function<std::filesystem::path(const Ticket&)>;
    // pathOf is called on any thread.
    FileSink(PathOf pathOf, Existing existing);

    bool IsOrdered() const override { return false; }
    bool Wants(const Ticket& ticket) const override;
    OutputResult Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                     PngWriter& writer, std::string& why) override;
    std::string NameOf(const Ticket& ticket) const override { return m_pathOf(ticket).string(); }

private:
    PathOf m_pathOf;
    Existing m_existing;
};

} // namespace host
