// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

using namespace platform;

namespace {

template <class Ref>
Ref Reference(std::uintptr_t number) {
    return reinterpret_cast<Ref>(number);
}

// A command as its bytes are laid out: attributes, id, then what it comes from.
std::vector<std::uint8_t> CommandBytes(const HuxCarbonEvent& event) {
    std::uint32_t size = 0;
    EXPECT_EQ(event.GetParameterSize(kEventParamDirectObject, &size), kNoErr);
    std::vector<std::uint8_t> bytes(size);
    EXPECT_EQ(event.GetParameter(kEventParamDirectObject, kTypeHICommand, size, bytes.data()),
              kNoErr);
    return bytes;
}

template <class T>
void Add(std::vector<std::uint8_t>& bytes, T value) {
    auto const* first = reinterpret_cast<const std::uint8_t*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof value);
}

TEST(HuxCarbonEvent, ACommandSaysWhereItComesFromAndIsZeroElsewhere) {
    auto const window = Reference<WindowRef>(71);
    auto const control = Reference<ControlRef>(72);
    auto const menu = Reference<MenuRef>(73);
    using Source = std::vector<std::uint8_t>;
    Source ofWindow, ofControl, ofMenu;
    Add(ofWindow, window);
    Add(ofControl, control);
    Add(ofMenu, menu);
    Add(ofMenu, MenuItemIndex { 9 });
    struct Row {
        const char* name;
        std::function<void(HuxCarbonEvent&)> create;
        std::uint32_t attributes;
        Source source;
    };
    for (Row const& row : {
             Row { "plain", [](auto& e) { e.CreateEventCommand(5, 0, nullptr); }, 0, {} },
             Row { "window", [&](auto& e) { e.CreateEventCommand(window, 5, 0, nullptr); }, 4,
                   ofWindow },
             Row { "control", [&](auto& e) { e.CreateEventCommand(control, 5, 0, nullptr); }, 2,
                   ofControl },
             Row { "menu", [&](auto& e) { e.CreateEventCommand(menu, 9, 5, 0, nullptr); }, 1,
                   ofMenu },
         }) {
        HuxCarbonEvent event;
        row.create(event);
        EXPECT_TRUE(event.Is(kEventClassCommand, kEventCommandProcess)) << row.name;
        Source expected;
        Add(expected, row.attributes);
        Add(expected, std::uint32_t { 5 });
        expected.insert(expected.end(), row.source.begin(), row.source.end());
        expected.resize(10 + sizeof(void*));
        EXPECT_EQ(CommandBytes(event), expected) << row.name;
    }
}

TEST(HuxCarbonEvent, ACommandLeavesOutWhatIsZero) {
    int datum = 0;
    OSType type = 0;
    HuxCarbonEvent event;
    event.CreateEventCommand(7, 0, nullptr);
    EXPECT_EQ(event.GetParameterType(kHuxEventParamValue, &type), kEventParameterNotFoundErr);
    EXPECT_EQ(event.GetParameterType(kHuxEventParamUserData, &type), kEventParameterNotFoundErr);
    event.CreateEventCommand(7, -3, &datum);
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

TEST(HuxCarbonEvent, ACommandCarriesTheModifiers) {
    SetCurrentEventKeyModifiers(0x300);
    HuxCarbonEvent event;
    event.CreateEventCommand(7, 0, nullptr);
    SetCurrentEventKeyModifiers(0);
    std::uint32_t modifiers = 0;
    EXPECT_EQ(
        event.GetParameter(kEventParamKeyModifiers, kTypeUInt32, sizeof modifiers, &modifiers),
        kNoErr);
    EXPECT_EQ(modifiers, 0x300u);
}

TEST(HuxCarbonEvent, AnEventWithoutACommandReadsAsZeros) {
    HuxCarbonEvent const event(kHuxEventClassWindow, 1);
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
    ASSERT_EQ(CreateEvent(kHuxEventClassWindow, 1, 0, &event), kNoErr);
    {
        HuxCarbonEvent const shared(event, true);
        EXPECT_EQ(GetEventRetainCount(event), 2u);
    }
    RetainEvent(event);
    {
        HuxCarbonEvent adopted(event, false);
        EXPECT_EQ(GetEventRetainCount(event), 2u);
        adopted.CreateEventCommand(1, 0, nullptr);
        EXPECT_EQ(GetEventRetainCount(event), 1u);
    }
    ReleaseEvent(event);
}

TEST(HuxCarbonEvent, AnEmptyOneHasNoParametersAndCannotBePosted) {
    HuxCarbonEvent event;
    std::uint32_t size = 0;
    EXPECT_NE(event.SetParameter(1, 1, sizeof size, &size), kNoErr);
    EXPECT_NE(event.GetParameterSize(1, &size), kNoErr);
    EXPECT_NE(event.PostToQueue(), kNoErr);
    EXPECT_FALSE(DeliverNextEvent());
}

// Receivers ------------------------------------------------------------------------------------

struct Receiver {
    std::string name;
    std::string* log;
    OSStatus answer = kNoErr;

    static OSStatus Receive(EventHandlerCallRef, EventRef event, void* self) {
        auto const& receiver = *static_cast<Receiver*>(self);
        std::uint32_t commandID = 0;
        HuxCarbonEvent(event, true).GetCommandParameter(&commandID, nullptr, nullptr, nullptr);
        *receiver.log += receiver.name + std::to_string(commandID) + ' ';
        return receiver.answer;
    }
};

class HuxCommandTest : public testing::Test {
protected:
    HuxCommandTest() {
        EventTypeSpec const type { kEventClassCommand, kEventCommandProcess };
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
    EventTargetRef const gone = CreateEventTarget(nullptr);
    DisposeEventTarget(gone);
    EXPECT_EQ(HuxCarbonEvent::PostEventCommand(gone, 1, 0), kParamErr);
    EXPECT_EQ(HuxCarbonEvent::SendEventCommand(gone, 1, 0, nullptr), kParamErr);
    Drain();
    EXPECT_EQ(m_log, "");
}

TEST_F(HuxCommandTest, ASentCommandGivesWhatBecameOfIt) {
    EventTargetRef const child = CreateEventTarget(m_target);
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
