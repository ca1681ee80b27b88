// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxControlImpl.h"

#include "huxCommon/HostErrors.h"
#include "huxCommon/huxGUI/HuxAttachedControls.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "platform/ui/UIFixture.h"

using namespace platform;

namespace {

constexpr EventTypeSpec kProbe { 0x70726F62, 1 };
constexpr ControlID kID { kHuxPropertyCreator, 77 };

// Notes its phases, and does in each what the test says.
class Wrapper : public HuxControlImpl {
public:
    using Act = std::function<OSStatus()>;

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

    Act begin, current, end;
    std::function<void()> check;
    bool accepts = true;

private:
    // The disposed event is noted in capitals.
    OSStatus Run(const char* phase, EventRef event, const Act& act) {
        const bool probe = GetEventClass(event) == kProbe.eventClass;
        m_log += probe ? phase[0] : static_cast<char>(phase[0] - 'a' + 'A');
        const Act copy = act; // which may end this object
        return probe && copy ? copy() : kEventNotHandledErr;
    }

    std::string& m_log;
};

class HuxControlImplTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        button = Make<QPushButton>();
        On(button).id = kID;
    }
    void TearDown() override {
        UIFixture::TearDown();
        EXPECT_EQ(HuxCarbonEventHandler::GetCurrentObject(), nullptr);
    }

    Wrapper* NewWrapper(ControlRef control) {
        auto* const wrapper = new Wrapper(log); // ends with its control
        EXPECT_EQ(wrapper->Attach(control), kNoErr);
        return wrapper;
    }
    static OSStatus Send(ControlRef control) {
        const HuxCarbonEvent event(kProbe.eventClass, kProbe.eventKind);
        return SendEventToEventTarget(event.GetEventRef(), On(control).Target());
    }

    ControlRef button = nullptr;
    test::HostErrors errors;
};

TEST_F(HuxControlImplTest, TheControlLeadsToItsWrapperAsLongAsThatIsAttached) {
    auto first = std::make_unique<HuxControlImpl>();
    HuxControlImpl second;
    EXPECT_EQ(HuxControlImpl::FromControl(button), nullptr);
    first->Attach(button);
    EXPECT_EQ(HuxControlImpl::FromControl(button), first.get());
    second.Attach(button);
    first.reset();
    EXPECT_EQ(HuxControlImpl::FromControl(button), &second);
    second.Detach();
    EXPECT_EQ(HuxControlImpl::FromControl(button), nullptr);
    EXPECT_FALSE(second.IsValid());
}

TEST_F(HuxControlImplTest, RunsThePhasesInOrderAndTheEndNeverDecides) {
    Wrapper& wrapper = *NewWrapper(button);
    struct Row {
        const char* name;
        OSStatus begin, current, end, result;
        const char* phases;
    };
    for (const Row& row : {
             Row { "nobody handles", -9874, -9874, -9874, -9874, "bce" },
             Row { "begin handles", 0, -1, -1, 0, "be" },
             Row { "begin fails", -43, 0, 0, -43, "be" },
             Row { "current handles", -9874, 0, -1, 0, "bce" },
             Row { "only the end handles", -9874, -9874, 0, -9874, "bce" },
         }) {
        log.clear();
        wrapper.begin = [&row] { return row.begin; };
        wrapper.current = [&row] { return row.current; };
        wrapper.end = [&row] { return row.end; };
        EXPECT_EQ(Send(button), row.result) << row.name;
        EXPECT_EQ(log, row.phases) << row.name;
    }
}

TEST_F(HuxControlImplTest, AnExceptionBecomesAnErrorEventAndTheStatusBeforeItStays) {
    Wrapper& wrapper = *NewWrapper(button);
    for (const auto& [thrown, code] :
         { std::pair<Wrapper::Act, std::int32_t> {
               []() -> OSStatus { throw HuxException(__FILE__, __LINE__, -43); }, -43 },
           { []() -> OSStatus { throw std::bad_alloc(); }, -108 },
           { []() -> OSStatus { throw std::runtime_error("x"); }, 0 } }) {
        wrapper.current = thrown;
        EXPECT_EQ(Send(button), kEventNotHandledErr) << code;
        const auto posted = errors.TakeAll();
        ASSERT_EQ(posted.size(), 1u) << code;
        EXPECT_EQ(posted[0].nErrorCode, code);
        EXPECT_EQ(posted[0].uEventClass, kProbe.eventClass) << code;
        EXPECT_EQ(posted[0].uEventKind, kProbe.eventKind) << code;
        EXPECT_EQ(std::string(posted[0].strError, sizeof posted[0].strError),
                  std::string(256, '\0'));
    }
}

TEST_F(HuxControlImplTest, MayEndItsControlInEachOfItsPhases) {
    struct Row {
        Wrapper::Act Wrapper::*phase;
        const char* log;
        OSStatus result;
    };
    for (const bool throws : { false, true }) {
        for (const Row& row : { Row { &Wrapper::begin, "bBCE~", kNoErr },
                                Row { &Wrapper::current, "bcBCE~", kNoErr },
                                Row { &Wrapper::end, "bceBCE~", kEventNotHandledErr } }) {
            const ControlRef control = Make<QPushButton>();
            NewWrapper(control)->*row.phase = [control, throws] {
                On(control).Dispose();
                if (throws)
                    throw HuxException("file", 1, -1);
                return kNoErr;
            };
            log.clear();
            EXPECT_EQ(Send(control), throws ? kEventNotHandledErr : row.result) << row.log;
            EXPECT_EQ(log, row.log);
            EXPECT_THAT(errors.TakeAll(), testing::IsEmpty()) << row.log;
        }
    }
}

TEST_F(HuxControlImplTest, AMemberOfAWindowsObjectIsOnlyDetachedByItsControlsOrItsListsEnd) {
    auto list = std::make_unique<HuxAttachedControls>();
    Wrapper wrapper(log);
    list->Add(wrapper);
    wrapper.Attach(button);
    wrapper.current = [this] {
        On(button).Dispose();
        return kNoErr;
    };
    Send(button);
    EXPECT_EQ(log, "bcBCE");
    EXPECT_FALSE(wrapper.IsValid());
    EXPECT_EQ(wrapper.GetControlRef(), nullptr);
    const ControlRef another = Make<QPushButton>();
    EXPECT_EQ(wrapper.Attach(another), kNoErr);
    {
        HuxControlImpl shorter;
        shorter.Attach(Make<QPushButton>());
        list->Add(shorter);
    }
    EXPECT_TRUE(wrapper.IsValid());
    list.reset();
    EXPECT_EQ(wrapper.GetControlRef(), nullptr);
    EXPECT_TRUE(Control::Find(another));
}

TEST_F(HuxControlImplTest, AListAsksItsControlsUntilOneRefusesOrEndsTheRest) {
    HuxAttachedControls list;
    Wrapper first(log), second(log);
    for (Wrapper* const wrapper : { &first, &second }) {
        wrapper->Attach(Make<QPushButton>());
        list.Add(*wrapper);
        wrapper->check = [this] { log += "?"; };
    }
    EXPECT_TRUE(list.CheckControlValues());
    first.accepts = false;
    EXPECT_FALSE(list.CheckControlValues());
    EXPECT_EQ(log, "???");
    first.accepts = true;
    first.check = [&list] { list.DetachAll(); };
    EXPECT_TRUE(list.CheckControlValues());
    EXPECT_EQ(log, "???");
}

TEST_F(HuxControlImplTest, ItsCommandReachesTheWindowWithTheControlAndTheValue) {
    const test::ChainHandler receive(
        test::At(window).Target(), { test::kCommand }, [&](EventRef event) {
            std::uint32_t id = 0;
            long value = 0;
            HICommandExtended command {};
            void* data = nullptr;
            HuxCarbonEvent(event, true).GetCommandParameter(&id, &value, &command, &data);
            EXPECT_EQ(id, 77u);
            EXPECT_EQ(command.source.control, button);
            EXPECT_EQ(data, value == 9 ? this : nullptr);
            log += std::to_string(value);
            if (value == 9)
                On(button).Dispose();
            return kNoErr;
        });
    Wrapper* const wrapper = NewWrapper(button);
    EXPECT_EQ(wrapper->PostCommand(1), kNoErr);
    EXPECT_EQ(log, "");
    test::Drain();
    EXPECT_EQ(wrapper->SendCommand(9, this), kNoErr);
    EXPECT_EQ(log, "19BCE~");
}

} // namespace
