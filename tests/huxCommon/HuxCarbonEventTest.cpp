// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

#include <array>
#include <cstring>

#include <gmock/gmock.h>

using namespace platform;

namespace {

template <class Ref>
Ref Reference(std::uintptr_t number) {
    return reinterpret_cast<Ref>(number);
}

TEST(HuxCarbonEvent, ACommandSaysWhereItComesFromAndIsZeroElsewhere) {
    const auto window = Reference<WindowRef>(71);
    const auto control = Reference<ControlRef>(72);
    const auto menu = Reference<MenuRef>(73);
    struct Row {
        HuxCommandSource from;
        HICommandExtended expected;
    };
    for (const Row& row :
         { Row { {}, { 0, 5, {} } }, Row { window, { 4, 5, { .window = window } } },
           Row { control, { 2, 5, { .control = control } } },
           Row { { menu, 9 }, { 1, 5, { .menu = { menu, 9 } } } } }) {
        HuxCarbonEvent event;
        event.CreateEventCommand(row.from, 5, 0, nullptr);
        EXPECT_TRUE(event.Is(kEventClassCommand, kEventCommandProcess));
        std::array<std::uint8_t, sizeof(HICommandExtended)> bytes {};
        std::uint32_t size = 0;
        event.GetParameterSize(kEventParamDirectObject, &size);
        event.GetParameter(kEventParamDirectObject, kTypeHICommand, size, bytes.data());
        EXPECT_EQ(size, 10 + sizeof(void*));
        const std::size_t known = 8 + (row.expected.attributes == 1 ? 2 : 0) + sizeof(void*);
        EXPECT_EQ(std::memcmp(bytes.data(), &row.expected, known), 0) << row.expected.attributes;
    }
}

TEST(HuxCarbonEvent, ACommandLeavesOutWhatIsZeroAndReadsItAsZero) {
    int datum = 0;
    for (void* const given : { static_cast<void*>(nullptr), static_cast<void*>(&datum) }) {
        HuxCarbonEvent event;
        SetCurrentEventKeyModifiers(0x300);
        event.CreateEventCommand(7, given ? -3 : 0, given);
        SetCurrentEventKeyModifiers(0);
        OSType type = 0;
        EXPECT_EQ(event.GetParameterType(kHuxEventParamValue, &type) == kNoErr, given != nullptr);
        EXPECT_EQ(type, given ? kTypeSInt32 : 0);
        EXPECT_EQ(event.GetParameterType(kHuxEventParamUserData, &type) == kNoErr,
                  given != nullptr);
        std::uint32_t modifiers = 0, commandID = 0;
        event.GetParameter(kEventParamKeyModifiers, kTypeUInt32, sizeof modifiers, &modifiers);
        EXPECT_EQ(modifiers, 0x300u);
        long value = 1;
        void* data = &value;
        EXPECT_EQ(event.GetCommandParameter(&commandID, &value, nullptr, &data), kNoErr);
        EXPECT_EQ(commandID, 7u);
        EXPECT_EQ(value, given ? -3 : 0);
        EXPECT_EQ(data, given);
    }
    const HuxCarbonEvent other(kHuxEventClassWindow, 1);
    std::uint32_t commandID = 1;
    EXPECT_EQ(other.GetCommandParameter(&commandID, nullptr, nullptr, nullptr),
              kEventParameterNotFoundErr);
    EXPECT_EQ(commandID, 0u);
}

} // namespace
