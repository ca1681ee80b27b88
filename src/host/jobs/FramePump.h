// SPDX-License-Identifier: BSD-3-Clause
// Moves frames from a source through the renderer to a sink, on several threads. Each thread holds one
// frame, so that memory is bounded by their number, and by what they may take together.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host/jobs/FrameEnds.h"
#include "host/jobs/FrameRenderer.h"
#include "host/jobs/RunListener.h"

namespace host {

struct PumpOptions {
    int jobs = 0; // frames made at once; 0: as many as cores
    int compression = kPngLevelDefault;
    std::uint64_t memory = 0; // bytes for all of them; 0: most of what is free
};

class FramePump {
public:
    // The references must outlive the pump.
    FramePump(FrameSource& source, const FrameRenderer& renderer, FrameSink& sink,
              RunListener& listener, const CancelToken& cancel, const PumpOptions& options);
    ~FramePump();

    // Until the source ends, the run is given up or cancelled. Once, on any thread.
    RunResult Run();

private:
    struct Workspace;
    void StartThreads(std::vector<std::thread>& threads);
    void Work();
    bool WorkOnNext();
    std::unique_ptr<Workspace> TakeNext();
    std::unique_ptr<Workspace> TakeWorkspace();
    bool IsStopped();
    void GiveBack(std::unique_ptr<Workspace> work);
    bool Reserve(Workspace& work, std::uint64_t bytes, std::string& why);
    void Process(Workspace& work);
    bool Load(Workspace& work);
    bool Render(Workspace& work);
    void Write(Workspace& work);
    bool BeginWrite(const Ticket& ticket);
    void EndWrite();
    void Settle(const Ticket& ticket, OutputResult result, const std::string& why);
    void Fail(FrameFailure failure, std::int64_t RunResult::*also = nullptr);
    void GiveUp(std::string RunResult::*reason, const std::string& why);
    void PassTurn(std::int64_t order);
    bool AwaitWorkers(std::unique_lock<std::mutex>& lock);

    FrameSource& m_source;
    const FrameRenderer& m_renderer;
    FrameSink& m_sink;
    RunListener& m_listener;
    const CancelToken& m_cancel;
    int m_compression;
    std::uint64_t m_memory;

    std::mutex m_sourceMutex; // guards the source and these
    std::int64_t m_taken = 0;
    bool m_sourceEnded = false;
    bool m_toldOfMemory = false;

    std::mutex m_mutex; // guards everything below
    std::condition_variable m_changed;
    int m_jobs; // threads that go on
    std::vector<std::unique_ptr<Workspace>> m_idle;
    std::uint64_t m_reserved = 0; // by all workspaces, those that are idle too
    std::int64_t m_turn = 0;      // the order that may be written next, where order matters
    int m_working = 0;            // threads
    int m_writing = 0;            // threads between BeginWrite and EndWrite
    bool m_stop = false;          // nothing more is taken or written
    RunResult m_result;
};

} // namespace host
