// SPDX-License-Identifier: BSD-3-Clause
// What a run of frames tells while it goes on, and what became of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

struct FrameFailure {
    std::optional<std::int64_t> frame; // nothing when a stream broke off before the frame
    std::string what;                  // names the file and the reason
};

struct RunResult {
    static constexpr std::size_t kFailuresKept = 1000;

    std::int64_t written = 0;
    std::int64_t skipped = 0;           // there already
    std::int64_t failed = 0;            // the frames that failed, each told to the listener
    std::int64_t unreadable = 0;        // of those, the ones that could not be read
    std::vector<FrameFailure> failures; // in the order in which they failed, kFailuresKept at most

    // Why the run was given up before its end; empty and false when it was not. Frames that are
    // written are whole in any case.
    std::string writeError;
    std::string fontViolation;
    bool cancelled = false;
    // The run was cancelled while a thread waited for a stream, and it still does: the process must
    // end without leaving the block of the pump's owner. Nothing is being written any more. Never
    // for files.
    bool readerWaits = false;
};

// Called from the threads of a run, several at once but for Started and Finished.
class RunListener {
public:
    virtual ~RunListener() = default;

    // total: frames in all; 0 when only the end will tell.
    virtual void Started(std::int64_t /*total*/) {}
    // output: the path that was written, or the frame of a stream.
    virtual void FrameWritten(std::int64_t /*frame*/, const std::string& /*output*/) {}
    virtual void FrameSkipped(std::int64_t /*frame*/, const std::string& /*output*/) {}
    // A frame of a stream is written nevertheless, without the text.
    virtual void FrameFailed(const FrameFailure& /*failure*/) {}
    // On the thread that called Run, before that returns.
    virtual void Finished(const RunResult& /*result*/) {}
};

} // namespace host
