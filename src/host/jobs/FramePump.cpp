// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FramePump.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>
#include <utility>
#include <vector>

namespace host {

namespace {

// A token is looked at so often: it cannot wake anybody, for it is set in signal handlers too.
constexpr std::chrono::milliseconds kCancelInterval { 50 };
// What a stream gets for its next frame to come after a cancellation.
constexpr int kGraceIntervals = 4;

} // namespace

struct FramePump::Workspace {
    explicit Workspace(int compression) : writer(compression) {}

    Ticket ticket;
    Frame frame;
    PixelRect touched;
    PngReader reader;
    PngWriter writer;
};

int ThreadsFor(int jobs, const FrameSource& source) {
    int const wanted =
        jobs > 0 ? jobs : static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    return source.Count() > 0 ? static_cast<int>(std::min<std::int64_t>(wanted, source.Count()))
                              : wanted;
}

FramePump::FramePump(FrameSource& source, const FrameRenderer& renderer, FrameSink& sink,
                     RunListener& listener, const CancelToken& cancel, int jobs, int compression)
    : m_source(source), m_renderer(renderer), m_sink(sink), m_listener(listener), m_cancel(cancel),
      m_jobs(jobs), m_compression(compression) {}

RunResult FramePump::Run() {
    m_listener.Started(m_source.Count());
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(m_jobs));
    std::unique_lock lock(m_mutex);
    m_working = m_jobs;
    for (int i = 0; i < m_jobs; ++i)
        threads.emplace_back([this] { Work(); });
    m_result.readerWaits = !AwaitWorkers(lock);
    m_result.cancelled = m_cancel.IsCancelled();
    auto result = m_result;
    lock.unlock();
    for (auto& thread : threads)
        result.readerWaits ? thread.detach() : thread.join();
    m_listener.Finished(result);
    return result;
}

// False when a stream keeps a thread waiting after a cancellation: a read that waits for another
// program cannot be called back.
bool FramePump::AwaitWorkers(std::unique_lock<std::mutex>& lock) {
    int patience = kGraceIntervals;
    while (m_working > 0) {
        m_changed.wait_for(lock, kCancelInterval);
        if (!m_cancel.IsCancelled())
            continue;
        m_stop = true;
        m_changed.notify_all();
        if (m_source.MayWait() && m_writing == 0 && m_working > 0 && --patience < 0)
            return false;
    }
    return true;
}

void FramePump::Work() {
    Workspace work(m_compression);
    while (TakeNext(work)) {
        try {
            Process(work);
        } catch (const std::exception& error) {
            Fail({ work.ticket.values.frame, work.ticket.name + ": " + error.what() });
        }
        PassTurn(work.ticket.order);
    }
    std::lock_guard const lock(m_mutex);
    --m_working;
    m_changed.notify_all();
}

bool FramePump::TakeNext(Workspace& work) {
    std::lock_guard const sourceLock(m_sourceMutex);
    {
        std::lock_guard const lock(m_mutex);
        m_stop = m_stop || m_cancel.IsCancelled();
        if (m_stop || m_sourceEnded)
            return false;
    }
    std::string why;
    auto taken = FrameSource::Taken::kFailed;
    try {
        taken = m_source.Take(work.ticket, work.frame, why);
    } catch (const std::exception& error) {
        why = error.what();
    }
    if (taken == FrameSource::Taken::kFailed)
        Fail({ {}, why }, &RunResult::unreadable);
    m_sourceEnded = taken != FrameSource::Taken::kFrame;
    if (!m_sourceEnded)
        work.ticket.order = m_taken++;
    return !m_sourceEnded;
}

void FramePump::Process(Workspace& work) {
    if (!m_sink.Wants(work.ticket)) {
        Settle(work.ticket, OutputResult::kSkipped, {});
        return;
    }
    if (Load(work) && Render(work))
        Write(work);
}

bool FramePump::Load(Workspace& work) {
    std::string why;
    if (m_source.Load(work.ticket, work.reader, work.frame, why))
        return true;
    Fail({ work.ticket.values.frame, why }, &RunResult::unreadable);
    return false;
}

bool FramePump::Render(Workspace& work) {
    std::string why;
    auto const result = m_renderer.Render(work.frame, work.ticket.values, work.touched, why);
    if (result == RenderResult::kDone)
        return true;
    if (result == RenderResult::kFailed) {
        // A stream that lost a frame would be out of step with its sound from there on.
        bool const goesOn = m_sink.IsOrdered();
        Fail({ work.ticket.values.frame,
               work.ticket.name + ": " + why + (goesOn ? "; it goes on without the text" : "") });
        return goesOn;
    }
    std::lock_guard const lock(m_mutex);
    m_stop = true;
    m_result.fontViolation = work.ticket.name + ": " + why;
    m_changed.notify_all();
    return false;
}

void FramePump::Write(Workspace& work) {
    if (!BeginWrite(work.ticket))
        return;
    std::string why;
    auto result = OutputResult::kFailed;
    try {
        result = m_sink.Put(work.ticket, work.frame, work.touched, work.writer, why);
    } catch (const std::exception& error) {
        why = m_sink.NameOf(work.ticket) + ": " + error.what();
    }
    EndWrite();
    Settle(work.ticket, result, why);
}

bool FramePump::BeginWrite(const Ticket& ticket) {
    std::unique_lock lock(m_mutex);
    if (m_sink.IsOrdered())
        m_changed.wait(lock, [&] { return m_stop || m_turn == ticket.order; });
    m_writing += m_stop ? 0 : 1;
    return !m_stop;
}

void FramePump::EndWrite() {
    std::lock_guard const lock(m_mutex);
    --m_writing;
}

void FramePump::Settle(const Ticket& ticket, OutputResult result, const std::string& why) {
    if (result == OutputResult::kFailed) {
        std::lock_guard const lock(m_mutex);
        m_stop = true;
        m_result.writeError = why;
        m_changed.notify_all();
        return;
    }
    bool const written = result == OutputResult::kWritten;
    {
        std::lock_guard const lock(m_mutex);
        ++(written ? m_result.written : m_result.skipped);
    }
    auto const tell = written ? &RunListener::FrameWritten : &RunListener::FrameSkipped;
    (m_listener.*tell)(ticket.values.frame, m_sink.NameOf(ticket));
}

void FramePump::Fail(FrameFailure failure, std::int64_t RunResult::*also) {
    m_listener.FrameFailed(failure);
    std::lock_guard const lock(m_mutex);
    ++m_result.failed;
    if (also)
        ++(m_result.*also);
    if (m_result.failures.size() < RunResult::kFailuresKept)
        m_result.failures.push_back(std::move(failure));
}

// Also frames that failed take their turn, or those behind them would wait for ever.
void FramePump::PassTurn(std::int64_t order) {
    if (!m_sink.IsOrdered())
        return;
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_stop || m_turn == order; });
    ++m_turn;
    m_changed.notify_all();
}

} // namespace host
