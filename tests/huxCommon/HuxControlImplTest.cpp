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
        const Act copy = act; // which may end this object
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
        const HuxCarbonEvent event(kProbe.eventClass, kProbe.eventKind);
        return SendEventToEventTarget(event.GetEventRef(), Control::Find(control)->Target());
    }

    WindowRef m_window = nullptr;
    ControlRef m_control = nullptr;
    std::string m_log; // outlives the wrappers, which end with the window
    test::HostErrors m_errors;
};

TEST_F(HuxControlImplTest, AttachingGivesAControlWithoutACommandItsIdForOne) {
    // None, four blanks, its own.
    for (const auto& [before, after] :
         { std::pair { 0U, 77U }, { 0x20202020U, 77U }, { 5U, 5U } }) {
        HuxControlImpl wrapper;
        Control::Find(m_control)->commandID = before;
        EXPECT_EQ(wrapper.Attach(m_control), kNoErr);
        EXPECT_EQ(wrapper.GetCommandID(), after);
    }
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

TEST_F(HuxControlImplTest, MayEndItsControlInEachOfItsPhases) {
    struct Row {
        const char* name;
        Wrapper::Act Wrapper::*phase;
        const char* log;
    };
    for (const bool throws : { false, true }) {
        for (const Row& row : { Row { "begin", &Wrapper::begin, "bBCE~" },
                                Row { "current", &Wrapper::current, "bcBCE~" },
                                Row { "end", &Wrapper::end, "bceBCE~" } }) {
            const ControlRef control = NewButton();
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

TEST_F(HuxControlImplTest, AListAsksItsControlsUntilOneRefusesOrEndsTheRest) {
    HuxAttachedControls list;
    Wrapper first(m_log), second(m_log);
    for (Wrapper* const wrapper : { &first, &second }) {
        wrapper->Attach(NewButton());
        list.Add(*wrapper);
        wrapper->check = [this] { m_log += "?"; };
    }
    EXPECT_TRUE(list.CheckControlValues());
    first.accepts = false;
    EXPECT_FALSE(list.CheckControlValues());
    EXPECT_EQ(m_log, "???");
    first.accepts = true;
    first.check = [&list] { list.DetachAll(); };
    EXPECT_TRUE(list.CheckControlValues());
    EXPECT_EQ(m_log, "???");
}

TEST_F(HuxControlImplTest, ItsCommandReachesTheWindowWithTheControlAndTheValue) {
    std::vector<long> values;
    const test::ChainHandler receive(
        UIObject::TargetOf(m_window), { { kEventClassCommand, kEventCommandProcess } },
        [&](EventRef event) {
            std::uint32_t id = 0;
            long value = 0;
            HICommandExtended command {};
            void* data = nullptr;
            HuxCarbonEvent(event, true).GetCommandParameter(&id, &value, &command, &data);
            EXPECT_EQ(id, 77u);
            EXPECT_EQ(command.source.control, m_control);
            EXPECT_EQ(data, value == 9 ? &values : nullptr);
            values.push_back(value);
            if (value == 9)
                Control::Find(m_control)->Dispose();
            return kNoErr;
        });
    auto* const wrapper = new Wrapper(m_log);
    wrapper->Attach(m_control);
    EXPECT_EQ(wrapper->PostCommand(1), kNoErr);
    EXPECT_THAT(values, testing::IsEmpty());
    test::Drain();
    EXPECT_EQ(wrapper->SendCommand(9, &values), kNoErr);
    EXPECT_THAT(values, testing::ElementsAre(1, 9));
    EXPECT_EQ(m_log, "BCE~");
}

} // namespace
