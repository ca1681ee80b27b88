// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxControlImpl.h"

#include <functional>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "huxCommon/ToolkitForms.h"
#include "huxCommon/huxGUI/HuxAttachedControls.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "support/WindowRefs.h"

using namespace platform;

namespace {

constexpr EventTypeSpec kProbe { 0x70726F62, 1 };
constexpr ControlID kID { kHuxPropertyCreator, 77 };

// Notes its phases, and does in each what the test says.
class Wrapper : public HuxControlImpl {
public:
    using Act = std::function<void()>;

    explicit Wrapper(std::string& log) : m_log(log) {}
    ~Wrapper() override { m_log += "~"; }

    OSStatus InstallSelf(EventTargetRef target) override {
        return InstallCarbonEventHandler(target, 1, &kProbe);
    }
    OSStatus HandleEventBeginSelf(EventHandlerCallRef, EventRef event) override {
        return Run("b", event, begin);
    }
    OSStatus HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) override {
        return Run("c", event, current);
    }
    OSStatus HandleEventEndSelf(EventHandlerCallRef, EventRef event) override {
        return Run("e", event, end);
    }
    bool CheckControlValue() override {
        if (check)
            check();
        return accepts;
    }

    Act begin, current, end, check;
    bool accepts = true;

private:
    // The disposed event is noted in capitals.
    OSStatus Run(const char* phase, EventRef event, const Act& act) {
        const bool probe = GetEventClass(event) == kProbe.eventClass;
        m_log += probe ? phase[0] : static_cast<char>(phase[0] - 'a' + 'A');
        Act const copy = act; // which may end this object
        if (probe && copy)
            copy();
        return kEventNotHandledErr;
    }

    std::string& m_log;
};

class HuxControlImplTest : public testing::Test {
protected:
    HuxControlImplTest() {
        EXPECT_TRUE(m_window = Window::Create({ 0, 0, 200, 300 }));
        m_control = NewButton();
        Control::Find(m_control)->id = kID;
    }
    ~HuxControlImplTest() override {
        test::Dispose(m_window);
        EXPECT_EQ(HuxCarbonEventHandler::GetCurrentObject(), nullptr);
    }

    ControlRef NewButton() const {
        return Control::Create(m_window, "QPushButton", { 10, 10, 40, 90 })->Ref();
    }

    static OSStatus Send(ControlRef control) {
        HuxCarbonEvent const event(kProbe.eventClass, kProbe.eventKind);
        return SendEventToEventTarget(event.GetEventRef(), Control::Find(control)->Target());
    }

    WindowRef m_window = nullptr;
    ControlRef m_control = nullptr;
    std::string m_log; // outlives the wrappers, which end with the window
    test::HostErrors m_errors;
};

TEST_F(HuxControlImplTest, AttachingGivesAControlWithoutACommandItsIdForOne) {
    struct Row {
        const char* name;
        std::uint32_t before, after;
    };
    for (Row const& row : { Row { "none", 0, 77 }, Row { "four blanks", 0x20202020, 77 },
                            Row { "its own", 5, 5 } }) {
        HuxControlImpl wrapper;
        Control::Find(m_control)->commandID = row.before;
        EXPECT_EQ(wrapper.Attach(m_control), kNoErr) << row.name;
        EXPECT_EQ(wrapper.GetCommandID(), row.after) << row.name;
    }
    HuxControlImpl nameless;
    nameless.Attach(NewButton());
    EXPECT_EQ(nameless.GetCommandID(), 0u);
}

TEST_F(HuxControlImplTest, TheControlLeadsToItsWrapperAsLongAsThatIsAttached) {
    auto first = std::make_unique<HuxControlImpl>();
    HuxControlImpl second;
    EXPECT_EQ(HuxControlImpl::FromControl(m_control), nullptr);
    first->Attach(m_control);
    EXPECT_EQ(HuxControlImpl::FromControl(m_control), first.get());
    second.Attach(m_control);
    first.reset();
    EXPECT_EQ(HuxControlImpl::FromControl(m_control), &second);
    second.Detach();
    EXPECT_EQ(HuxControlImpl::FromControl(m_control), nullptr);
    EXPECT_FALSE(second.IsValid());
}

TEST_F(HuxControlImplTest, WithoutAControlEverythingAnswers) {
    HuxControlImpl wrapper;
    EXPECT_EQ(wrapper.Attach(nullptr), kNoErr);
    EXPECT_FALSE(wrapper.IsInstalled());
    EXPECT_NE(wrapper.Enable(), kNoErr);
    EXPECT_NE(wrapper.SendCommand(1, nullptr), kNoErr);
    EXPECT_NE(wrapper.PostCommand(1), kNoErr);
    EXPECT_NE(wrapper.Draw(true), kNoErr);
    EXPECT_EQ(wrapper.FlushPortBuffer(), kNoErr);
    EXPECT_EQ(wrapper.CountSub(), 0);
    EXPECT_EQ(wrapper.GetIndexedSub(1), nullptr);
    EXPECT_EQ(wrapper.GetSuper(), nullptr);
    EXPECT_EQ(wrapper.GetValue(), 0);
    EXPECT_TRUE(wrapper.GetTitle().IsEmpty());
    EXPECT_TRUE(wrapper.CheckControlValue());
}

TEST_F(HuxControlImplTest, EndsWithItsControlAfterThePhasesOfTheLastEvent) {
    (new Wrapper(m_log))->Attach(m_control);
    EXPECT_EQ(Send(m_control), kEventNotHandledErr);
    Control::Find(m_control)->Dispose();
    EXPECT_EQ(m_log, "bceBCE~");
}

TEST_F(HuxControlImplTest, MayEndItsControlInEachOfItsPhases) {
    struct Row {
        const char* name;
        Wrapper::Act Wrapper::*phase;
        const char* log;
    };
    for (bool const throws : { false, true }) {
        for (Row const& row : { Row { "begin", &Wrapper::begin, "bBCE~" },
                                Row { "current", &Wrapper::current, "bcBCE~" },
                                Row { "end", &Wrapper::end, "bceBCE~" } }) {
            ControlRef const control = NewButton();
            auto* const wrapper = new Wrapper(m_log);
            wrapper->Attach(control);
            wrapper->*row.phase = [control, throws] {
                Control::Find(control)->Dispose();
                if (throws)
                    throw HuxException("file", 1, -1);
            };
            m_log.clear();
            EXPECT_EQ(Send(control), kEventNotHandledErr) << row.name;
            EXPECT_EQ(m_log, row.log) << row.name;
            EXPECT_THAT(m_errors.TakeAll(), testing::IsEmpty()) << row.name;
        }
    }
}

TEST_F(HuxControlImplTest, MayBeDetachedInItsOwnPhase) {
    Wrapper wrapper(m_log);
    wrapper.Attach(m_control);
    wrapper.begin = [&wrapper] { wrapper.Detach(); };
    Send(m_control);
    EXPECT_EQ(m_log, "b");
    Send(m_control);
    EXPECT_EQ(m_log, "b");
    Control::Find(m_control)->Dispose();
    EXPECT_EQ(m_log, "b");
}

TEST_F(HuxControlImplTest, AMemberOfAWindowsObjectIsOnlyDetachedByItsControlsEnd) {
    HuxAttachedControls list;
    Wrapper wrapper(m_log);
    list.Add(wrapper);
    wrapper.Attach(m_control);
    wrapper.current = [this] { Control::Find(m_control)->Dispose(); };
    Send(m_control);
    EXPECT_EQ(m_log, "bcBCE");
    EXPECT_FALSE(wrapper.IsValid());
    EXPECT_EQ(wrapper.GetControlRef(), nullptr);
    EXPECT_EQ(wrapper.Attach(NewButton()), kNoErr);
    EXPECT_TRUE(wrapper.IsValid());
}

TEST_F(HuxControlImplTest, AListLetsGoOfItsWrappersAndTheyOfIt) {
    auto list = std::make_unique<HuxAttachedControls>();
    Wrapper wrapper(m_log);
    wrapper.Attach(m_control);
    list->Add(wrapper);
    {
        HuxControlImpl shorter;
        shorter.Attach(NewButton());
        list->Add(shorter);
    }
    EXPECT_TRUE(wrapper.IsValid());
    list.reset();
    EXPECT_EQ(wrapper.GetControlRef(), nullptr);
    EXPECT_TRUE(Control::Find(m_control));
}

TEST_F(HuxControlImplTest, AListAsksItsControlsUntilOneRefuses) {
    HuxAttachedControls list;
    Wrapper first(m_log), second(m_log), third(m_log);
    for (Wrapper* const wrapper : { &first, &second, &third }) {
        wrapper->Attach(NewButton());
        list.Add(*wrapper);
        wrapper->check = [this] { m_log += "?"; };
    }
    EXPECT_TRUE(list.CheckControlValues());
    second.accepts = false;
    EXPECT_FALSE(list.CheckControlValues());
    EXPECT_EQ(m_log, "?????");
    // A check may end what would be checked next.
    second.accepts = true;
    first.check = [&list] { list.DetachAll(); };
    EXPECT_TRUE(list.CheckControlValues());
    EXPECT_EQ(m_log, "?????");
}

TEST_F(HuxControlImplTest, ItsCommandReachesTheWindowWithTheControlAndTheValue) {
    struct Received {
        ControlRef control;
        std::uint32_t id;
        long value;
        void* data;
    };
    std::vector<Received> received;
    EventTypeSpec const type { kEventClassCommand, kEventCommandProcess };
    auto const receive = [](EventHandlerCallRef, EventRef event, void* all) {
        Received one {};
        HICommandExtended command {};
        HuxCarbonEvent(event, true).GetCommandParameter(&one.id, &one.value, &command, &one.data);
        one.control = command.source.control;
        static_cast<std::vector<Received>*>(all)->push_back(one);
        if (one.value == 9)
            Control::Find(one.control)->Dispose();
        return kNoErr;
    };
    InstallEventHandler(UIObject::TargetOf(m_window), receive, 1, &type, &received, nullptr);
    auto* const wrapper = new Wrapper(m_log);
    wrapper->Attach(m_control);
    EXPECT_EQ(wrapper->PostCommand(1), kNoErr);
    EXPECT_EQ(received.size(), 0u);
    test::Drain();
    EXPECT_EQ(wrapper->SendCommand(9, &received), kNoErr);
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].value, 1);
    EXPECT_EQ(received[0].data, nullptr);
    EXPECT_EQ(received[1].control, m_control);
    EXPECT_EQ(received[1].id, 77u);
    EXPECT_EQ(received[1].data, &received);
    EXPECT_EQ(m_log, "BCE~");
}

} // namespace
