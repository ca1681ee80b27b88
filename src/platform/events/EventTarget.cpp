// SPDX-License-Identifier: BSD-3-Clause
// Targets and their chains of handlers: who is asked about an event, in which order, and what happens
// when handlers and targets go while they are being asked.
#include <algorithm>
#include <memory>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/events/Event.h"

namespace platform {

namespace {

constexpr OSType kEventClassCommand = 0x636D6473; // "cmds"

struct Handler {
    EventTargetRef target;
    EventHandlerProc proc;
    void* userData;
    std::vector<EventTypeSpec> types;
    bool removed = false;

    bool Wants(EventRef event) const { return Wants({ event->eventClass, event->kind }); }
    bool Wants(const EventTypeSpec& type) const {
        return !removed && std::ranges::find(types, type) != types.end();
    }
};

// Newest first. Never changed once it is there: an event on its way keeps the chain that it met, so
// that sending one costs a count and no copy.
using Chain = std::vector<std::shared_ptr<Handler>>;

struct Target {
    EventTargetRef parent;
    std::shared_ptr<const Chain> chain = std::make_shared<const Chain>();
};

struct Registry {
    std::unordered_map<EventTargetRef, Target> targets;
    std::unordered_map<EventHandlerRef, std::shared_ptr<Handler>> handlers;
    std::uintptr_t lastReference = 0;

    // References count up, so that one which is gone never means another.
    template <class Ref>
    Ref NewReference() {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a number, which nobody looks behind.
        return reinterpret_cast<Ref>(++lastReference);
    }
    Handler* Find(EventHandlerRef handler) const {
        const auto found = handlers.find(handler);
        return found == handlers.end() ? nullptr : found->second.get();
    }
};

Registry& TheRegistry() {
    // Never destroyed: handlers of static objects are removed while the process ends.
    static Registry& registry = *new Registry;
    return registry;
}

void AddTypes(Handler& handler, std::span<const EventTypeSpec> types) {
    for (const EventTypeSpec& type : types)
        if (std::ranges::find(handler.types, type) == handler.types.end())
            handler.types.push_back(type);
}

} // namespace

// An event on its way along a chain, which outlives its target.
struct EventHandlerCall {
    const Chain& chain;
    std::size_t next; // whom CallNextEventHandler asks first
    EventTargetRef parent;
    bool passedOn = false;
};

namespace {

OSStatus AskParent(EventRef event, EventTargetRef parent) {
    const bool goesUp = event->eventClass == kEventClassCommand && IsValidEventTarget(parent);
    return goesUp ? SendEventToEventTarget(event, parent) : kEventNotHandledErr;
}

OSStatus AskFrom(const Chain& chain, std::size_t first, EventTargetRef parent, EventRef event) {
    for (std::size_t i = first; i < chain.size(); ++i) {
        const Handler& handler = *chain[i];
        if (!handler.Wants(event))
            continue;
        EventHandlerCall call { chain, i + 1, parent };
        const OSStatus status = handler.proc(&call, event, handler.userData);
        // A handler that passed the event on has had the rest asked already.
        if (status != kEventNotHandledErr || call.passedOn)
            return status;
    }
    return AskParent(event, parent);
}

} // namespace

EventTargetRef CreateEventTarget(EventTargetRef parent) {
    Registry& registry = TheRegistry();
    const auto target = registry.NewReference<EventTargetRef>();
    registry.targets.emplace(target, Target { parent });
    return target;
}

void DisposeEventTarget(EventTargetRef target) {
    Registry& registry = TheRegistry();
    const auto node = registry.targets.extract(target);
    if (node.empty())
        return;
    for (const std::shared_ptr<Handler>& handler : *node.mapped().chain)
        handler->removed = true;
    std::erase_if(registry.handlers, [](const auto& entry) { return entry.second->removed; });
}

bool IsValidEventTarget(EventTargetRef target) {
    return TheRegistry().targets.contains(target);
}

EventTargetRef GetApplicationEventTarget() {
    static const EventTargetRef application = CreateEventTarget(nullptr);
    return application;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP proc, std::uint32_t count,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* handler) {
    Registry& registry = TheRegistry();
    const auto found = registry.targets.find(target);
    if (found == registry.targets.end() || !proc || (count > 0 && !types))
        return kParamErr;
    const auto added = std::make_shared<Handler>(Handler { target, proc, userData, {} });
    AddTypes(*added, { types, count });
    const auto reference = registry.NewReference<EventHandlerRef>();
    registry.handlers.emplace(reference, added);
    auto chain = std::make_shared<Chain>(Chain { added });
    chain->insert(chain->end(), found->second.chain->begin(), found->second.chain->end());
    found->second.chain = std::move(chain);
    if (handler)
        *handler = reference;
    return kNoErr;
}

OSStatus RemoveEventHandler(EventHandlerRef handler) {
    Registry& registry = TheRegistry();
    const auto node = registry.handlers.extract(handler);
    if (node.empty())
        return kParamErr;
    node.mapped()->removed = true;
    Target& target = registry.targets.at(node.mapped()->target);
    auto chain = std::make_shared<Chain>(*target.chain);
    std::erase(*chain, node.mapped());
    target.chain = std::move(chain);
    return kNoErr;
}

OSStatus AddEventTypesToHandler(EventHandlerRef handler, std::uint32_t count,
                                const EventTypeSpec* types) {
    Handler* const found = TheRegistry().Find(handler);
    if (!found || (count > 0 && !types))
        return kParamErr;
    AddTypes(*found, { types, count });
    return kNoErr;
}

OSStatus RemoveEventTypesFromHandler(EventHandlerRef handler, std::uint32_t count,
                                     const EventTypeSpec* types) {
    Handler* const found = TheRegistry().Find(handler);
    if (!found || (count > 0 && !types))
        return kParamErr;
    for (const EventTypeSpec& type : std::span(types, count))
        std::erase(found->types, type);
    return kNoErr;
}

std::uint32_t CountEventHandlers(EventTargetRef target, const EventTypeSpec& type) {
    const auto& targets = TheRegistry().targets;
    const auto found = targets.find(target);
    if (found == targets.end())
        return 0;
    const auto count = std::ranges::count_if(
        *found->second.chain,
        [&type](const std::shared_ptr<Handler>& handler) { return handler->Wants(type); });
    return static_cast<std::uint32_t>(count);
}

OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target) {
    Registry& registry = TheRegistry();
    const auto found = registry.targets.find(target);
    if (!event || found == registry.targets.end())
        return kParamErr;
    const HeldEvent held(event);
    const std::shared_ptr<const Chain> chain = found->second.chain;
    return AskFrom(*chain, 0, found->second.parent, event);
}

OSStatus CallNextEventHandler(EventHandlerCallRef call, EventRef event) {
    if (!call || !event)
        return kParamErr;
    call->passedOn = true;
    return AskFrom(call->chain, call->next, call->parent, event);
}

} // namespace platform
