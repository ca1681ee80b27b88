// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "platform/events/Event.h"

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

TEST(HuxCarbonEvent, ACommandLeavesOutWhatIsZero) {
    int datum = 0;
    OSType type = 0;
    HuxCarbonEvent event;
    event.CreateEventCommand(7, 0, nullptr);
    EXPECT_EQ(event.GetParameterType(kHuxEventParamValue, &type), kEventParameterNotFoundErr);
    EXPECT_EQ(event.GetParameterType(kHuxEventParamUserData, &type), kEventParameterNotFoundErr);
    SetCurrentEventKeyModifiers(0x300);
    event.CreateEventCommand(7, -3, &datum);
    SetCurrentEventKeyModifiers(0);
    std::uint32_t modifiers = 0;
    event.GetParameter(kEventParamKeyModifiers, kTypeUInt32, sizeof modifiers, &modifiers);
    EXPECT_EQ(modifiers, 0x300u);
    EXPECT_EQ(event.GetParameterType(kHuxEventParamValue, &type), kNoErr);
    EXPECT_EQ(type, kTypeSInt32);
    EXPECT_EQ(event.GetParameterType(kHuxEventParamUserData, &type), kNoErr);
    EXPECT_EQ(type, kTypeUInt32);

    std::uint32_t commandID = 0;
    long value = 0;
    void* data = nullptr;
    EXPECT_EQ(event.GetCommandParameter(&commandID, &value, nullptr, &data), kNoErr);
    EXPECT_EQ(commandID, 7u);
    EXPECT_EQ(value, -3);
    EXPECT_EQ(data, &datum);
}

TEST(HuxCarbonEvent, AnEventWithoutACommandReadsAsZeros) {
    const HuxCarbonEvent event(kHuxEventClassWindow, 1);
    std::uint32_t commandID = 1;
    long value = 1;
    void* data = &value;
    HICommandExtended command { 1, 1, {} };
    EXPECT_EQ(event.GetCommandParameter(&commandID, &value, &command, &data),
              kEventParameterNotFoundErr);
    EXPECT_EQ(commandID, 0u);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(command.attributes, 0u);
    EXPECT_EQ(data, nullptr);
}

TEST(HuxCarbonEvent, OwnsOneReference) {
    EventRef event = nullptr;
    ASSERT_EQ(CreateEvent(kHuxEventClassWindow, 1, &event), kNoErr);
    {
        const HuxCarbonEvent shared(event, true);
        EXPECT_EQ(event->count, 2u);
    }
    RetainEvent(event);
    {
        HuxCarbonEvent adopted(event, false);
        EXPECT_EQ(event->count, 2u);
        adopted.CreateEventCommand(1, 0, nullptr);
        EXPECT_EQ(event->count, 1u);
    }
    ReleaseEvent(event);
}

// Receivers ------------------------------------------------------------------------------------

struct Receiver {
    std::string name;
    std::string* log;
    OSStatus answer = kNoErr;

    static OSStatus Receive(EventHandlerCallRef, EventRef event, void* self) {
        const auto& receiver = *static_cast<Receiver*>(self);
        std::uint32_t commandID = 0;
        HuxCarbonEvent(event, true).GetCommandParameter(&commandID, nullptr, nullptr, nullptr);
        *receiver.log += receiver.name + std::to_string(commandID) + ' ';
        return receiver.answer;
    }
};

class HuxCommandTest : public testing::Test {
protected:
    HuxCommandTest() {
        const EventTypeSpec type { kEventClassCommand, kEventCommandProcess };
        InstallEventHandler(m_target, Receiver::Receive, 1, &type, &m_own, nullptr);
        InstallEventHandler(GetApplicationEventTarget(), Receiver::Receive, 1, &type,
                            &m_application, &m_handler);
    }
    ~HuxCommandTest() override {
        DisposeEventTarget(m_target);
        RemoveEventHandler(m_handler);
    }

    static void Drain() {
        while (DeliverNextEvent()) {
        }
    }

    std::string m_log;
    Receiver m_own { "own", &m_log };
    Receiver m_application { "app", &m_log };
    EventTargetRef m_target = CreateEventTarget(nullptr);
    EventHandlerRef m_handler = nullptr;
};

TEST_F(HuxCommandTest, PostedCommandsReachTheirTargetInTheOrderOfTheQueue) {
    EXPECT_EQ(HuxCarbonEvent::PostEventCommand(m_target, 1, 0), kNoErr);
    EXPECT_EQ(HuxCarbonEvent::PostEventCommand(EventTargetRef {}, 2, 0), kNoErr);
    HuxCarbonEvent urgent;
    urgent.CreateEventCommand(3, 0, nullptr);
    EXPECT_EQ(urgent.PostToQueue(m_target, nullptr, EventPriority::kHigh), kNoErr);
    EXPECT_EQ(urgent.PostToQueue(m_target), kEventAlreadyPostedErr);
    EXPECT_EQ(m_log, "");
    Drain();
    EXPECT_EQ(m_log, "own3 own1 app2 ");
}

TEST_F(HuxCommandTest, ACommandForATargetThatIsGoneReachesNobody) {
    const EventTargetRef gone = CreateEventTarget(nullptr);
    DisposeEventTarget(gone);
    EXPECT_EQ(HuxCarbonEvent::PostEventCommand(gone, 1, 0), kParamErr);
    EXPECT_EQ(HuxCarbonEvent::SendEventCommand(gone, 1, 0, nullptr), kParamErr);
    Drain();
    EXPECT_EQ(m_log, "");
}

TEST_F(HuxCommandTest, ASentCommandGivesWhatBecameOfIt) {
    const EventTargetRef child = CreateEventTarget(m_target);
    m_own.answer = -43;
    EXPECT_EQ(HuxCarbonEvent::SendEventCommand(child, 4, 0, nullptr), -43);
    m_own.answer = kEventNotHandledErr;
    m_application.answer = kNoErr;
    EXPECT_EQ(HuxCarbonEvent::SendEventCommand(child, Reference<ControlRef>(8), 5, 0, nullptr),
              kEventNotHandledErr);
    EXPECT_EQ(m_log, "own4 own5 ");
    DisposeEventTarget(child);
}

} // namespace
