// SPDX-License-Identifier: BSD-3-Clause
// Measures what an event costs on its way along a chain of handlers, and counts what it allocates.
//   dispatch/handlers/<n>   a chain of n, each of which lets the event go on
//   dispatch/objects/<n>    the same with objects of the toolkit, each with its three phases
//   dispatch/unwanted/<n>   a chain of n, none of which asked for the event
//   dispatch/command        a command that no handler of a control, its window and the application
//                           takes: three targets
//   dispatch/made           an event made, given a parameter, sent along three handlers and released
// "items_per_second" are events; "allocations" are calls of the allocator for each event.
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include <benchmark/benchmark.h>

#include "huxCommon/huxGUI/HuxCarbonEventHandler.h"
#include "platform/Commands.h"
#include "platform/Events.h"

namespace {

std::atomic<std::int64_t> g_allocations { 0 };

void* Allocate(std::size_t size) {
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* const memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// Those of the libraries too: the loader binds them to the program's.
void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using namespace platform;

constexpr EventTypeSpec kWanted { 0x77696E64, 1 };
constexpr EventTypeSpec kUnwanted { 0x77696E64, 2 };

OSStatus LetPass(EventHandlerCallRef /*call*/, EventRef /*event*/, void* userData) {
    ++*static_cast<std::int64_t*>(userData);
    return kEventNotHandledErr;
}

// A target that ends with its measurement.
class Target {
public:
    explicit Target(EventTargetRef parent = nullptr) : m_target(CreateEventTarget(parent)) {}
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;
    ~Target() { DisposeEventTarget(m_target); }

    EventTargetRef Get() const { return m_target; }
    void AddHandlers(std::int64_t count, const EventTypeSpec& type) {
        for (; count > 0; --count)
            InstallEventHandler(m_target, LetPass, 1, &type, &m_calls, nullptr);
    }

private:
    EventTargetRef m_target;
    std::int64_t m_calls = 0;
};

class OwnedEvent {
public:
    explicit OwnedEvent(const EventTypeSpec& type) {
        CreateEvent(type.eventClass, type.eventKind, &m_event);
    }
    OwnedEvent(const OwnedEvent&) = delete;
    OwnedEvent& operator=(const OwnedEvent&) = delete;
    ~OwnedEvent() { ReleaseEvent(m_event); }

    EventRef Get() const { return m_event; }

private:
    EventRef m_event = nullptr;
};

class Object : public HuxCarbonEventHandler {
public:
    OSStatus InstallSelf(EventTargetRef target) override {
        return InstallCarbonEventHandler(target, 1, &kWanted);
    }
};

template <class Send>
void Measure(benchmark::State& state, Send send) {
    send(); // what is kept for the next event is made by the first
    const std::int64_t before = g_allocations;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(send());
    const auto events = static_cast<double>(state.iterations());
    state.counters["allocations"] = static_cast<double>(g_allocations - before) / events;
    state.SetItemsProcessed(state.iterations());
}

void Handlers(benchmark::State& state) {
    Target target;
    target.AddHandlers(state.range(0), kWanted);
    const OwnedEvent event(kWanted);
    Measure(state, [&] { return SendEventToEventTarget(event.Get(), target.Get()); });
}

void Objects(benchmark::State& state) {
    const Target target;
    std::vector<std::unique_ptr<Object>> objects;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        objects.push_back(std::make_unique<Object>());
        objects.back()->Install(target.Get());
    }
    const OwnedEvent event(kWanted);
    Measure(state, [&] { return SendEventToEventTarget(event.Get(), target.Get()); });
}

void Unwanted(benchmark::State& state) {
    Target target;
    target.AddHandlers(state.range(0), kWanted);
    const OwnedEvent event(kUnwanted);
    Measure(state, [&] { return SendEventToEventTarget(event.Get(), target.Get()); });
}

void Command(benchmark::State& state) {
    Target window(GetApplicationEventTarget());
    Target control(window.Get());
    window.AddHandlers(1, kWanted);
    control.AddHandlers(1, kWanted);
    const OwnedEvent event({ kEventClassCommand, kEventCommandProcess });
    Measure(state, [&] { return SendEventToEventTarget(event.Get(), control.Get()); });
}

void Made(benchmark::State& state) {
    Target target;
    target.AddHandlers(3, kWanted);
    Measure(state, [&] {
        const OwnedEvent event(kWanted);
        SetEventParameter(event.Get(), kEventParamDirectObject, kTypeUInt32,
                          sizeof kWanted.eventKind, &kWanted.eventKind);
        return SendEventToEventTarget(event.Get(), target.Get());
    });
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RegisterBenchmark("dispatch/handlers", Handlers)->Arg(1)->Arg(3)->Arg(10);
    benchmark::RegisterBenchmark("dispatch/objects", Objects)->Arg(1)->Arg(3);
    benchmark::RegisterBenchmark("dispatch/unwanted", Unwanted)->Arg(3);
    benchmark::RegisterBenchmark("dispatch/command", Command);
    benchmark::RegisterBenchmark("dispatch/made", Made);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
