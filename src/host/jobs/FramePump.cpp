// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FramePump.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>
#include <thread>
#include <utility>
#include <vector>

#include "host/jobs/Memory.h"

namespace host {

namespace {

// A token is looked at so often: it cannot wake anybody, for it is set in signal handlers too.
constexpr std::chrono::milliseconds kCancelInterval { 50 };
// What another program gets after a cancellation to give the next frame or to take this one.
constexpr int kGraceIntervals = 10;

// What is wished, or as many as the machine has cores; no more than the source has frames.
int ThreadsFor(int jobs, const FrameSource& source) {
    const std::int64_t wanted =
        jobs > 0 ? jobs : std::max<std::int64_t>(1, std::thread::hardware_concurrency());
    return static_cast<int>(source.Count() > 0 ? std::min(wanted, source.Count()) : wanted);
}

std::string Mebibytes(std::uint64_t bytes) {
    return std::to_string((bytes >> 20) + ((bytes & 0xFFFFF) != 0 ? 1 : 0)) + " MiB";
}

} // namespace

struct FramePump::Workspace {
    explicit Workspace(int compression) : writer(compression) {}

    Ticket ticket;
    Frame frame;
    PixelRect touched;
    PngReader reader;
    PngWriter writer;
    std::uint64_t memory = 0; // reserved; frame, reader and writer keep it for the next one
};

// The rest of what is free is for the texts' pictures, and for others.
FramePump::FramePump(FrameSource& source, const FrameRenderer& renderer, FrameSink& sink,
                     RunListener& listener, const CancelToken& cancel, const PumpOptions& options)
    : m_source(source), m_renderer(renderer), m_sink(sink), m_listener(listener), m_cancel(cancel),
      m_compression(options.compression),
      m_memory(options.memory > 0 ? options.memory : FreeMemory() / 4 * 3),
      m_jobs(ThreadsFor(options.jobs, source)) {}

FramePump::~FramePump() = default;

RunResult FramePump::Run() {
    m_listener.Started(m_source.Count());
    std::vector<std::thread> threads;
    StartThreads(threads);
    std::unique_lock lock(m_mutex);
    m_result.isStuck = !AwaitWorkers(lock);
    m_result.cancelled = m_cancel.IsCancelled();
    auto result = m_result;
    lock.unlock();
    for (auto& thread : threads)
        result.isStuck ? thread.detach() : thread.join();
    std::string why;
    if (result.written > 0 && !result.isStuck && !m_sink.Finish(why) && result.writeError.empty())
        result.writeError = why;
    m_listener.Finished(result);
    return result;
}

// As many as the system gives; without any the work is done here.
void FramePump::StartThreads(std::vector<std::thread>& threads) {
    const int wanted = m_jobs;
    int started = 0;
    std::string why;
    {
        const std::lock_guard lock(m_mutex);
        try {
            threads.reserve(static_cast<std::size_t>(wanted));
            for (; started < wanted; ++started)
                threads.emplace_back([this] { Work(); });
        } catch (const std::exception& error) {
            why = error.what();
            started = std::max(started, 1);
        }
        m_jobs = m_working = started;
    }
    if (!why.empty())
        m_listener.Warned("only " + std::to_string(started) + " of " + std::to_string(wanted) +
                          " jobs run, no more could be started: " + why);
    if (threads.empty())
        Work();
}

// False when another program keeps a thread waiting after a cancellation: a read or a write that waits
// for it cannot be called back. What is being written to files is waited for.
bool FramePump::AwaitWorkers(std::unique_lock<std::mutex>& lock) {
    int patience = kGraceIntervals;
    while (m_working > 0) {
        m_changed.wait_for(lock, kCancelInterval);
        if (!m_cancel.IsCancelled())
            continue;
        m_stop = true;
        m_changed.notify_all();
        const bool mayWait = m_sink.MayWait() || (m_source.MayWait() && m_writing == 0);
        if (mayWait && m_working > 0 && --patience < 0)
            return false;
    }
    return true;
}

void FramePump::Work() {
    try {
        while (WorkOnNext()) {
        }
    } catch (const std::exception& error) {
        GiveUp(&RunResult::writeError, error.what());
    }
    const std::lock_guard lock(m_mutex);
    --m_working;
    m_changed.notify_all();
}

bool FramePump::WorkOnNext() {
    auto work = TakeNext();
    if (!work)
        return false;
    try {
        Process(*work);
    } catch (const std::exception& error) {
        Fail({ work->ticket.values.frame, work->ticket.name + ": " + error.what() });
    }
    PassTurn(work->ticket.order);
    GiveBack(std::move(work));
    return true;
}

std::unique_ptr<FramePump::Workspace> FramePump::TakeNext() {
    using Taken = FrameSource::Taken;
    const std::lock_guard sourceLock(m_sourceMutex);
    while (!m_sourceEnded) {
        auto work = TakeWorkspace();
        if (!work)
            return nullptr;
        std::string why;
        auto taken = Taken::kFailed;
        const auto room = [&](std::uint64_t bytes, std::string& reason) {
            return Reserve(*work, bytes, reason);
        };
        try {
            taken = m_source.Take(work->ticket, work->frame, room, why);
        } catch (const std::exception& error) {
            why = error.what();
        }
        const bool stopped = IsStopped();
        m_sourceEnded = taken == Taken::kEnd || taken == Taken::kFailed || stopped;
        if (taken == Taken::kFrame && !stopped) {
            work->ticket.order = m_taken++;
            return work;
        }
        if (taken == Taken::kLost && !stopped)
            Fail({ work->ticket.values.frame, why });
        else if (taken == Taken::kFailed && !stopped)
            Fail({ {}, why }, &RunResult::unreadable);
        GiveBack(std::move(work));
    }
    return nullptr;
}

bool FramePump::IsStopped() {
    const std::lock_guard lock(m_mutex);
    m_stop = m_stop || m_cancel.IsCancelled();
    return m_stop;
}

// Null when the run stops, and when there is no memory for one more: the other threads go on.
std::unique_ptr<FramePump::Workspace> FramePump::TakeWorkspace() {
    if (IsStopped())
        return nullptr;
    std::unique_lock lock(m_mutex);
    if (!m_idle.empty()) {
        auto work = std::move(m_idle.back());
        m_idle.pop_back();
        return work;
    }
    try {
        return std::make_unique<Workspace>(m_compression);
    } catch (const std::bad_alloc&) {
        if (m_jobs == 1)
            throw;
        --m_jobs;
    }
    lock.unlock();
    m_listener.Warned("there is no memory for one of the jobs; the others go on");
    return nullptr;
}

void FramePump::GiveBack(std::unique_ptr<Workspace> work) {
    const std::lock_guard lock(m_mutex);
    m_idle.push_back(std::move(work));
    m_changed.notify_all();
}

// Waits until the others have given back enough. Frames come here in their order, so that none waits for
// one behind it.
bool FramePump::Reserve(Workspace& work, std::uint64_t bytes, std::string& why) {
    if (bytes > m_memory) {
        why = "needs " + Mebibytes(bytes) + " of memory, and there are " + Mebibytes(m_memory) +
              " for frames";
        return false;
    }
    std::unique_lock lock(m_mutex);
    const auto jobs = static_cast<unsigned>(m_jobs);
    if (bytes > m_memory / jobs && !std::exchange(m_toldOfMemory, true)) {
        lock.unlock();
        m_listener.Warned("memory for frames is " + Mebibytes(m_memory) + ", which is enough for " +
                          std::to_string(m_memory / bytes) + " of them at once instead of " +
                          std::to_string(jobs));
        lock.lock();
    }
    const std::uint64_t more = bytes - std::min(bytes, work.memory);
    while (m_reserved + more > m_memory && !m_stop) {
        if (m_idle.empty()) {
            m_changed.wait_for(lock, kCancelInterval);
            m_stop = m_stop || m_cancel.IsCancelled();
        } else {
            m_reserved -= m_idle.back()->memory;
            m_idle.pop_back();
        }
    }
    m_reserved += more;
    work.memory += more;
    return !m_stop;
}

void FramePump::Process(Workspace& work) {
    std::string broken;
    if (!m_sink.Wants(work.ticket, broken)) {
        Settle(work.ticket, OutputResult::kSkipped, {});
        return;
    }
    if (!broken.empty())
        m_listener.Warned(m_sink.NameOf(work.ticket) + ": " + broken + " and is made again");
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
    const auto result = m_renderer.Render(work.frame, work.ticket.values, work.touched, why);
    if (result == RenderResult::kDone)
        return true;
    if (result == RenderResult::kFailed) {
        // A stream that lost a frame would be out of step with its sound from there on.
        const bool goesOn = m_sink.IsOrdered();
        Fail({ work.ticket.values.frame,
               work.ticket.name + ": " + why + (goesOn ? "; it goes on without the text" : "") });
        return goesOn;
    }
    GiveUp(&RunResult::fontViolation, work.ticket.name + ": " + why);
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
    const std::lock_guard lock(m_mutex);
    --m_writing;
}

void FramePump::Settle(const Ticket& ticket, OutputResult result, const std::string& why) {
    if (result == OutputResult::kFailed)
        return GiveUp(&RunResult::writeError, why);
    const bool written = result == OutputResult::kWritten;
    {
        const std::lock_guard lock(m_mutex);
        ++(written ? m_result.written : m_result.skipped);
    }
    const auto tell = written ? &RunListener::FrameWritten : &RunListener::FrameSkipped;
    (m_listener.*tell)(ticket.values.frame, m_sink.NameOf(ticket));
}

void FramePump::Fail(FrameFailure failure, std::int64_t RunResult::*also) {
    m_listener.FrameFailed(failure);
    const std::lock_guard lock(m_mutex);
    ++m_result.failed;
    if (also)
        ++(m_result.*also);
    if (m_result.failures.size() < RunResult::kFailuresKept)
        m_result.failures.push_back(std::move(failure));
}

void FramePump::GiveUp(std::string RunResult::*reason, const std::string& why) {
    const std::lock_guard lock(m_mutex);
    m_stop = true;
    m_result.*reason = why;
    m_changed.notify_all();
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
