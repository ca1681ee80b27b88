// SPDX-License-Identifier: BSD-3-Clause
// Moves frames from a source through the renderer to a sink, on several threads. Each thread holds one
// frame, so that memory is bounded by their number.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>

#include "apps/telop/FrameRenderer.h"
#include "apps/telop/FrameSink.h"
#include "apps/telop/FrameSource.h"
#include "apps/telop/Progress.h"

namespace telop {

// What became of a run.
struct PumpResult {
    std::int64_t written = 0;
    std::int64_t skipped = 0;    // there already
    std::int64_t failed = 0;     // named on the console as they did
    std::int64_t unreadable = 0; // of those, the ones that could not be read
    // Why the run was given up; both empty when it was not.
    std::string writeError;
    std::string fontViolation;
    // The user interrupted the run while a thread waited for a stream, and it still does: the process
    // must end without leaving the frame of the pump's owner. Nothing is being written any more.
    bool readerWaits = false;
};

class FramePump {
public:
    // The references must outlive the pump. jobs is 1 or more.
    FramePump(FrameSource& source, const FrameRenderer& renderer, FrameSink& sink,
              Progress& progress, int jobs, int compression);

    // Until the source ends, the run is given up or the user interrupts it. Once.
    PumpResult Run();

private:
    struct Workspace;
    void Work();
    bool TakeNext(Workspace& work);
    void Process(Workspace& work);
    bool Load(Workspace& work);
    bool Render(Workspace& work);
    void Write(Workspace& work);
    bool BeginWrite(const Ticket& ticket);
    void EndWrite();
    void Settle(const Ticket& ticket, host::OutputResult result, const std::string& why);
    void Fail(const std::string& what, std::int64_t PumpResult::*also = nullptr);
    void PassTurn(std::int64_t order);
    bool AwaitWorkers(std::unique_lock<std::mutex>& lock);

    FrameSource& m_source;
    const FrameRenderer& m_renderer;
    FrameSink& m_sink;
    Progress& m_progress;
    int m_jobs;
    int m_compression;

    std::mutex m_sourceMutex; // guards the source, m_taken and m_sourceEnded
    std::int64_t m_taken = 0;
    bool m_sourceEnded = false;

    std::mutex m_mutex; // guards everything below
    std::condition_variable m_changed;
    std::int64_t m_turn = 0; // the order that may be written next, where order matters
    int m_working = 0;       // threads
    int m_writing = 0;       // threads between BeginWrite and EndWrite
    bool m_stop = false;     // nothing more is taken or written
    PumpResult m_result;
};

} // namespace telop
