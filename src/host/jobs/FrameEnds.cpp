// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FrameEnds.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "host/Message.h"

namespace host {

namespace {

namespace fs = std::filesystem;

// What is wrong with a file as the frame of its input; empty: nothing.
std::string WrongWith(const fs::path& file, const fs::path& input) {
    const auto there = LookAtPng(file);
    if (!there)
        return "is no PNG file";
    if (!there->isWhole)
        return "is cut off";
    const auto wanted = input.empty() ? std::nullopt : LookAtPng(input);
    const bool fits = !wanted || (wanted->width == there->width && wanted->height == there->height);
    return fits ? "" : "has another size than its input";
}

} // namespace

FrameSource::Taken FileSource::Take(Ticket& ticket, Frame&, const Room& room, std::string& why) {
    if (m_next == m_files.size())
        return Taken::kEnd;
    const auto& file = m_files[m_next++];
    ticket.values = { file.number, file.path.stem().string(), m_run };
    ticket.input = file.path;
    ticket.name = Printable(file.path.native());
    const auto outline = LookAtPng(file.path);
    if (!outline || room(outline->memory, why))
        return Taken::kFrame;
    why = ticket.name + ": " + why;
    return Taken::kLost;
}

bool FileSource::Load(const Ticket& ticket, PngReader& reader, Frame& frame, std::string& why) {
    return reader.Read(ticket.input, frame, why);
}

StreamSource::StreamSource(int descriptor, std::shared_ptr<const RunValues> run, FrameRanges wanted)
    : m_reader(descriptor), m_run(std::move(run)), m_number(m_run->first),
      m_wanted(std::move(wanted)) {
    for (const auto& range : m_wanted.Ranges())
        m_last = std::max(m_last, range.last);
}

FrameSource::Taken StreamSource::Take(Ticket& ticket, Frame& frame, const Room& room,
                                      std::string& why) {
    while (m_number <= m_last) {
        const auto result = m_reader.Next(frame, why, room);
        if (result != StreamResult::kFrame)
            return result == StreamResult::kEnd ? Taken::kEnd : Taken::kFailed;
        const auto number = m_number++;
        if (!m_wanted.Contains(number))
            continue;
        ticket.values = { number, {}, m_run };
        ticket.name = "frame " + std::to_string(number) + " of the input stream";
        return Taken::kFrame;
    }
    return Taken::kEnd;
}

FileSink::FileSink(PathOf pathOf, fs::path folder, Existing existing)
    : m_pathOf(std::move(pathOf)), m_folder(std::move(folder)), m_existing(existing) {
    std::error_code ignored;
    m_mayWait = fs::is_fifo(m_pathOf({}), ignored);
}

// A frame may have been cut off by a full disk or a power cut since another program wrote it.
bool FileSink::Wants(const Ticket& ticket, std::string& broken) const {
    std::error_code ignored;
    const auto file = m_pathOf(ticket);
    if (m_existing != Existing::kSkip || !fs::is_regular_file(file, ignored))
        return true;
    broken = WrongWith(file, ticket.input);
    return !broken.empty();
}

OutputResult FileSink::Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                           PngWriter& writer, std::string& why) {
    const auto file = m_pathOf(ticket);
    std::error_code ignored;
    const bool replaces = m_existing == Existing::kSkip && fs::is_regular_file(file, ignored) &&
                          !WrongWith(file, ticket.input).empty();
    return writer.Write(file, frame, touched, replaces ? Existing::kOverwrite : m_existing, why);
}

std::string FileSink::NameOf(const Ticket& ticket) const {
    return Printable(m_pathOf(ticket).native());
}

OutputResult StreamSink::Put(const Ticket&, const Frame& frame, const PixelRect& touched,
                             PngWriter&, std::string& why) {
    return m_writer.Write(frame, touched, why) ? OutputResult::kWritten : OutputResult::kFailed;
}

std::string StreamSink::NameOf(const Ticket& ticket) const {
    return "frame " + std::to_string(ticket.values.frame);
}

} // namespace host
