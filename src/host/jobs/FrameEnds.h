// SPDX-License-Identifier: BSD-3-Clause
// The two ends of a run: where its frames come from and where they go, files or a stream of pictures.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/frames/Frame.h"
#include "host/frames/FrameRanges.h"
#include "host/frames/OutputFile.h"
#include "host/frames/PamStream.h"
#include "host/frames/PngReader.h"
#include "host/frames/PngWriter.h"
#include "host/frames/Sequence.h"
#include "host/text/TokenText.h"

namespace host {

// One frame on its way through a run.
struct Ticket {
    std::int64_t order = 0; // 0, 1, 2, ... as taken
    TokenValues values;
    std::filesystem::path input; // empty for a stream
    std::string name;            // for messages
};

class FrameSource {
public:
    enum class Taken {
        kFrame,
        kEnd,
        kLost,   // this frame, and the next may do well
        kFailed, // the source is at its end too
    };
    virtual ~FrameSource() = default;

    // The next frame, after the room was asked for its memory; a stream reads its pixels here. One
    // thread at a time. order is the caller's.
    virtual Taken Take(Ticket& ticket, Frame& frame, const Room& room, std::string& why) = 0;
    // The pixels, where they can be read beside others. Any thread; false with the reason.
    virtual bool Load(const Ticket& ticket, PngReader& reader, Frame& frame, std::string& why) = 0;
    // Frames in all; 0 when only the end will tell.
    virtual std::int64_t Count() const = 0;
    // Whether Take may wait for another program without an end.
    virtual bool MayWait() const = 0;
};

class FrameSink {
public:
    virtual ~FrameSink() = default;

    // Whether frames must come one after the other in their order. The pump sees to that.
    virtual bool IsOrdered() const = 0;
    // Whether Put may wait for another program without an end.
    virtual bool MayWait() const = 0;
    // False: the frame is there already and need not be made. broken says what is wrong with one that
    // is there and will be replaced. Any thread.
    virtual bool Wants(const Ticket& ticket, std::string& broken) const = 0;
    // Any thread, unless IsOrdered. kFailed with the reason.
    virtual OutputResult Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                             PngWriter& writer, std::string& why) = 0;
    // After the last frame; false with the reason when they are not safe from a power cut.
    virtual bool Finish(std::string& why) = 0;
    // Where the frame goes, for messages.
    virtual std::string NameOf(const Ticket& ticket) const = 0;
};

class FileSource : public FrameSource {
public:
    FileSource(std::vector<FrameFile> files, std::shared_ptr<const RunValues> run)
        : m_files(std::move(files)), m_run(std::move(run)) {}

    Taken Take(Ticket& ticket, Frame& frame, const Room& room, std::string& why) override;
    bool Load(const Ticket& ticket, PngReader& reader, Frame& frame, std::string& why) override;
    std::int64_t Count() const override { return static_cast<std::int64_t>(m_files.size()); }
    bool MayWait() const override { return false; }

private:
    std::vector<FrameFile> m_files;
    std::shared_ptr<const RunValues> m_run;
    std::size_t m_next = 0;
};

class StreamSource : public FrameSource {
public:
    // The run's first frame is the stream's; frames outside wanted are read and dropped, and nothing
    // is read past the last of them.
    StreamSource(int descriptor, std::shared_ptr<const RunValues> run, FrameRanges wanted);

    Taken Take(Ticket& ticket, Frame& frame, const Room& room, std::string& why) override;
    bool Load(const Ticket&, PngReader&, Frame&, std::string&) override { return true; }
    std::int64_t Count() const override { return 0; }
    bool MayWait() const override { return true; }

private:
    PamReader m_reader;
    std::shared_ptr<const RunValues> m_run;
    std::int64_t m_number;
    std::int64_t m_last = kFrameMin; // of the frames that are wanted
    FrameRanges m_wanted;
};

class FileSink : public FrameSink {
public:
    using PathOf = std::function<std::filesystem::path(const Ticket&)>;
    // pathOf is called on any thread. folder holds all the files.
    FileSink(PathOf pathOf, std::filesystem::path folder, Existing existing);

    bool IsOrdered() const override { return false; }
    bool MayWait() const override { return m_mayWait; }
    bool Wants(const Ticket& ticket, std::string& broken) const override;
    OutputResult Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                     PngWriter& writer, std::string& why) override;
    bool Finish(std::string& why) override { return FlushFolder(m_folder, why); }
    std::string NameOf(const Ticket& ticket) const override;

private:
    PathOf m_pathOf;
    std::filesystem::path m_folder;
    Existing m_existing;
    bool m_mayWait;
};

class StreamSink : public FrameSink {
public:
    explicit StreamSink(int descriptor) : m_writer(descriptor) {}

    bool IsOrdered() const override { return true; }
    bool MayWait() const override { return true; }
    bool Wants(const Ticket&, std::string&) const override { return true; }
    OutputResult Put(const Ticket& ticket, const Frame& frame, const PixelRect& touched,
                     PngWriter& writer, std::string& why) override;
    bool Finish(std::string&) override { return true; }
    std::string NameOf(const Ticket& ticket) const override;

private:
    PamWriter m_writer;
};

} // namespace host
