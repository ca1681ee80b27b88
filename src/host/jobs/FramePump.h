// SPDX-License-Identifier: BSD-3-Clause
// Moves frames from a source through the renderer to a sink, on several threads. Each thread holds one
// frame, so that memory is bounded by their number.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>

#include "host/jobs/CancelToken.h"
#include "host/jobs/FrameRenderer.h"
#include "host/jobs/FrameSink.h"
#include "host/jobs/FrameSource.h"
#include "host/jobs/RunListener.h"

namespace host {

// What is wished, or as many as the machine has cores; no more than the source has frames.
int ThreadsFor(int jobs, const FrameSource& source);

class FramePump {
public:
    // The references must outlive the pump. jobs is 1 or more.
    FramePump(FrameSource& source, const FrameRenderer& renderer, FrameSink& sink,
              RunListener& listener, const CancelToken& cancel, int jobs, int compression);

    // Until the source ends, the run is given up or cancelled. Once, on any thread.
    RunResult Run();

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
    void Settle(const Ticket& ticket, OutputResult result, const std::string& why);
    void Fail(FrameFailure failure, std::int64_t RunResult::*also = nullptr);
    void PassTurn(std::int64_t order);
    bool AwaitWorkers(std::unique_lock<std::mutex>& lock);

    FrameSource& m_source;
    const FrameRenderer& m_renderer;
    FrameSink& m_sink;
    RunListener& m_listener;
    const CancelToken& m_cancel;
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
    RunResult m_result;
};

} // namespace host
