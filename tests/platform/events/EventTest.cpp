// SPDX-License-Identifier: BSD-3-Clause
#include <array>
#include <cstring>
#include <string>

#include <gmock/gmock.h>

#include "platform/events/Event.h"

namespace platform {
namespace {

constexpr OSType kName = 0x6E616D65;
constexpr OSType kOtherName = 0x6F746865;
constexpr OSType kLong = 0x6C6F6E67;
constexpr OSType kText = 0x74657874;

struct OwnedEvent {
    EventRef event = nullptr;
    OwnedEvent() { CreateEvent(kName, 7, &event); }
    OwnedEvent(const OwnedEvent&) = delete;
    OwnedEvent& operator=(const OwnedEvent&) = delete;
    ~OwnedEvent() { ReleaseEvent(event); }
};

TEST(Event, LivesUntilItsLastCountEnds) {
    const OwnedEvent made;
    RetainEvent(made.event);
    EXPECT_EQ(made.event->count, 2U);
    ReleaseEvent(made.event);
    EXPECT_EQ(made.event->count, 1U);
    EXPECT_EQ(GetEventKind(made.event), 7U);
}

TEST(Event, ReadsNoMoreThanTheBufferHoldsAndTellsTheWholeSize) {
    const OwnedEvent made;
    SetEventParameter(made.event, kName, kLong, 2, "yz");
    SetEventParameter(made.event, kName, kText, 5, "abcde"); // in the place of the other
    std::array<char, 4> buffer { '.', '.', '.', '.' };
    std::uint32_t size = 0;
    EXPECT_EQ(GetEventParameter(made.event, kName, kText, nullptr, 3, &size, buffer.data()),
              kNoErr);
    EXPECT_EQ(std::string(buffer.data(), 4), "abc.");
    EXPECT_EQ(size, 5U);
}

TEST(Event, RefusesAMissingParameterAndAnotherType) {
    const OwnedEvent made;
    SetEventParameter(made.event, kName, kText, 1, "a");
    char byte = '.';
    EXPECT_EQ(GetEventParameter(made.event, kOtherName, kText, nullptr, 1, nullptr, &byte),
              kEventParameterNotFoundErr);
    EXPECT_EQ(GetEventParameter(made.event, kName, kLong, nullptr, 1, nullptr, &byte),
              kEventParameterNotFoundErr);
    EXPECT_EQ(byte, '.');
    EXPECT_EQ(SetEventParameter(made.event, kName, kText, 1, nullptr), kParamErr);
}

} // namespace
} // namespace platform
