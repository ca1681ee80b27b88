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
    OwnedEvent() { CreateEvent(kName, 7, 1.5, &event); }
    OwnedEvent(const OwnedEvent&) = delete;
    OwnedEvent& operator=(const OwnedEvent&) = delete;
    ~OwnedEvent() { ReleaseEvent(event); }
};

TEST(Event, SaysWhatItWasMadeAs) {
    OwnedEvent const made;
    EXPECT_EQ(GetEventClass(made.event), kName);
    EXPECT_EQ(GetEventKind(made.event), 7U);
    EXPECT_EQ(GetEventTime(made.event), 1.5);
    EXPECT_EQ(CreateEvent(kName, 1, 0, nullptr), kParamErr);
}

TEST(Event, LivesUntilItsLastCountEnds) {
    OwnedEvent const made;
    RetainEvent(made.event);
    EXPECT_EQ(GetEventRetainCount(made.event), 2U);
    ReleaseEvent(made.event);
    EXPECT_EQ(GetEventRetainCount(made.event), 1U);
    EXPECT_EQ(GetEventKind(made.event), 7U);
}

TEST(Event, KeepsParametersOfAnySizeByNameAndType) {
    OwnedEvent const made;
    std::string const large(100000, 'x');
    std::int32_t const number = -43;
    ASSERT_EQ(SetEventParameter(made.event, kName, kText, large.size(), large.data()), kNoErr);
    ASSERT_EQ(SetEventParameter(made.event, kOtherName, kLong, sizeof number, &number), kNoErr);

    std::string read(large.size(), ' ');
    std::uint32_t size = 0;
    OSType type = 0;
    EXPECT_EQ(
        GetEventParameter(made.event, kName, kTypeWildCard, &type, read.size(), &size, read.data()),
        kNoErr);
    EXPECT_EQ(read, large);
    EXPECT_EQ(type, kText);
    EXPECT_EQ(size, large.size());

    std::int32_t back = 0;
    EXPECT_EQ(
        GetEventParameter(made.event, kOtherName, kLong, nullptr, sizeof back, nullptr, &back),
        kNoErr);
    EXPECT_EQ(back, -43);
}

TEST(Event, ReadsNoMoreThanTheBufferHoldsAndTellsTheWholeSize) {
    OwnedEvent const made;
    SetEventParameter(made.event, kName, kText, 5, "abcde");
    std::array<char, 4> buffer { '.', '.', '.', '.' };
    std::uint32_t size = 0;
    EXPECT_EQ(GetEventParameter(made.event, kName, kText, nullptr, 3, &size, buffer.data()),
              kNoErr);
    EXPECT_EQ(std::string(buffer.data(), 4), "abc.");
    EXPECT_EQ(size, 5U);
}

TEST(Event, RefusesAMissingParameterAndAnotherType) {
    OwnedEvent const made;
    SetEventParameter(made.event, kName, kText, 1, "a");
    char byte = '.';
    EXPECT_EQ(GetEventParameter(made.event, kOtherName, kText, nullptr, 1, nullptr, &byte),
              kEventParameterNotFoundErr);
    EXPECT_EQ(GetEventParameter(made.event, kName, kLong, nullptr, 1, nullptr, &byte),
              kEventParameterNotFoundErr);
    EXPECT_EQ(byte, '.');
    EXPECT_EQ(SetEventParameter(made.event, kName, kText, 1, nullptr), kParamErr);
}

TEST(Event, AParameterThatIsSetAgainReplacesTheOldOne) {
    OwnedEvent const made;
    SetEventParameter(made.event, kName, kText, 5, "abcde");
    SetEventParameter(made.event, kName, kLong, 0, nullptr);
    std::uint32_t size = 9;
    OSType type = 0;
    EXPECT_EQ(GetEventParameter(made.event, kName, kTypeWildCard, &type, 0, &size, nullptr),
              kNoErr);
    EXPECT_EQ(type, kLong);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(made.event->parameters.size(), 1U);
}

} // namespace
} // namespace platform
