// SPDX-License-Identifier: BSD-3-Clause
// What a run of frames tells while it goes on, what became of it, and the wish to stop it.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

// Made by one side and looked at by the other. Cancel may be called on any thread and in a signal
// handler.
class CancelToken {
public:
    void Cancel() noexcept { m_cancelled.store(true, std::memory_order_relaxed); }
    bool IsCancelled() const noexcept { return m_cancelled.load(std::memory_order_relaxed); }

private:
    std::atomic<bool> m_cancelled { false };
    static_assert(std::atomic<bool>::is_always_lock_free,
                  "a signal handler may not wait for a lock");
};

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
    // The run was cancelled while a thread waited for another program, to read what it gives or to
    // write what it takes, and it still does: the process must end without leaving the block of the
    // pump's owner. Never for files.
    bool isStuck = false;
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
    // What makes the run slower than it was asked to be, or was found wrong and is made good.
    virtual void Warned(const std::string& /*what*/) {}
    // On the thread that called Run, before that returns.
    virtual void Finished(const RunResult& /*result*/) {}
};

} // namespace host
