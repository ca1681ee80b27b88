// SPDX-License-Identifier: BSD-3-Clause
// A handler in a target's chain that ends with the test.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Events.h"

namespace test {

// Calls act for each event of the types at the target, until this ends.
class ChainHandler {
public:
    using Act =
        std::function<platform::OSStatus(platform::EventHandlerCallRef, platform::EventRef)>;

    ChainHandler(platform::EventTargetRef target, const std::vector<platform::EventTypeSpec>& types,
                 Act act)
        : m_act(std::make_shared<Act>(std::move(act))) {
        const auto run = [](platform::EventHandlerCallRef call, platform::EventRef event,
                            void* data) {
            std::shared_ptr<Act> const kept = static_cast<ChainHandler*>(data)->m_act;
            return (*kept)(call, event); // it may end this handler
        };
        EXPECT_EQ(platform::InstallEventHandler(target, run,
                                                static_cast<std::uint32_t>(types.size()),
                                                types.data(), this, &m_handler),
                  platform::kNoErr);
    }
    ChainHandler(const ChainHandler&) = delete;
    ChainHandler& operator=(const ChainHandler&) = delete;
    ~ChainHandler() { platform::RemoveEventHandler(m_handler); }

private:
    std::shared_ptr<Act> m_act;
    platform::EventHandlerRef m_handler = nullptr;
};

// The same for tests that do not call the rest of the chain.
class Handler : public ChainHandler {
public:
    using Act = std::function<platform::OSStatus(platform::EventRef)>;

    Handler(platform::EventTargetRef target, const std::vector<platform::EventTypeSpec>& types,
            Act act)
        : ChainHandler(target, types,
                       [act = std::move(act)](platform::EventHandlerCallRef,
                                              platform::EventRef event) { return act(event); }) {}
};

} // namespace test
