// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FileSource.h"

#include <utility>

namespace host {

FileSource::FileSource(std::vector<FrameFile> files) : m_files(std::move(files)) {}

FrameSource::Taken FileSource::Take(Ticket& ticket, Frame&, std::string&) {
    if (m_next == m_files.size())
        return Taken::kEnd;
    auto const& file = m_files[m_next++];
    ticket.values = { file.number, file.path.stem().string() };
    ticket.input = file.path;
    ticket.name = file.path.string();
    return Taken::kFrame;
}

bool FileSource::Load(const Ticket& ticket, PngReader& reader, Frame& frame, std::string& why) {
    return reader.Read(ticket.input, frame, why);
}

} // namespace host
