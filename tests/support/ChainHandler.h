// SPDX-License-Identifier: BSD-3-Clause
// A handler in a target's chain that ends with the test, and what an event carries.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Events.h"

namespace test {

// Calls act for each event of the types at the target, until this ends. Act takes the event, after the
// call of the rest of the chain if it wants that.
class ChainHandler {
public:
    using Act =
        std::function<platform::OSStatus(platform::EventHandlerCallRef, platform::EventRef)>;

    template <class Given>
    ChainHandler(platform::EventTargetRef target, const std::vector<platform::EventTypeSpec>& types,
                 Given given) {
        if constexpr (std::is_invocable_v<Given, platform::EventRef>)
            m_act = std::make_shared<Act>([given](auto, auto event) { return given(event); });
        else
            m_act = std::make_shared<Act>(std::move(given));
        const auto run = [](platform::EventHandlerCallRef call, platform::EventRef event,
                            void* data) {
            const std::shared_ptr<Act> kept = static_cast<ChainHandler*>(data)->m_act;
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

// The parameter, or what is given for none.
template <class Value>
Value ParameterOf(platform::EventRef event, platform::OSType name, platform::OSType type,
                  Value value = {}) {
    platform::GetEventParameter(event, name, type, nullptr, sizeof value, nullptr, &value);
    return value;
}

} // namespace test
