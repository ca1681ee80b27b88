// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxCarbonEventHandler.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>

#include "huxCommon/HostErrors.h"
#include "huxCommon/huxGUI/HuxCarbonEventPatcherT.h"
#include "platform/events/Event.h"

using namespace platform;

namespace {

constexpr EventTypeSpec kType { 0x74657374, 5 };
constexpr EventTypeSpec kOtherType { 0x74657374, 6 };

// Notes the phases it runs and does in each what the test says.
class Subject : public HuxCarbonEventHandler {
public:
    using Phase = std::function<OSStatus()>;

    explicit Subject(std::string& log) : m_log(log) {}
    ~Subject() override { m_log += "~"; }

    OSStatus InstallSelf(EventTargetRef target) override {
        return InstallCarbonEventHandler(target, 1, &kType);
    }
    OSStatus HandleEventBeginSelf(EventHandlerCallRef, EventRef) override {
        return Run("b", begin);
    }
    OSStatus HandleEventCurrentSelf(EventHandlerCallRef, EventRef) override {
        return Run("c", current);
    }
    OSStatus HandleEventEndSelf(EventHandlerCallRef, EventRef) override { return Run("e", end); }

    Phase begin, current, end;

private:
    OSStatus Run(const char* name, const Phase& phase) {
        m_log += name;
        const Phase copy = phase; // which may end this object
        return copy ? copy() : kEventNotHandledErr;
    }

    std::string& m_log;
};

class HuxCarbonEventHandlerTest : public testing::Test {
protected:
    HuxCarbonEventHandlerTest() { m_subject->Install(m_target); }
    ~HuxCarbonEventHandlerTest() override {
        EXPECT_EQ(HuxCarbonEventHandler::GetCurrentObject(), nullptr);
        DisposeEventTarget(m_target);
    }

    OSStatus Send(EventTypeSpec type = kType) {
        EventRef event = nullptr;
        CreateEvent(type.eventClass, type.eventKind, &event);
        const OSStatus status = SendEventToEventTarget(event, m_target);
        ReleaseEvent(event);
        return status;
    }

    EventTargetRef m_target = CreateEventTarget(nullptr);
    test::HostErrors m_errors;
    std::string m_log;
    std::unique_ptr<Subject> m_subject = std::make_unique<Subject>(m_log);
};

TEST_F(HuxCarbonEventHandlerTest, RunsThePhasesInOrderAndTheEndNeverDecides) {
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
        m_log.clear();
        m_subject->begin = [&row] { return row.begin; };
        m_subject->current = [&row] { return row.current; };
        m_subject->end = [&row] { return row.end; };
        EXPECT_EQ(Send(), row.result) << row.name;
        EXPECT_EQ(m_log, row.phases) << row.name;
    }
}

TEST_F(HuxCarbonEventHandlerTest, AnExceptionBecomesAnErrorEventAndTheStatusBeforeItStays) {
    struct Row {
        const char* name;
        std::function<OSStatus()> thrown;
        std::int32_t code;
    };
    for (const Row& row : {
             Row { "status",
                   [] {
                       huxThrowError(-43, __FILE__, __LINE__);
                       return 0;
                   },
                   -43 },
             Row { "memory", []() -> OSStatus { throw std::bad_alloc(); }, -108 },
             Row { "other", []() -> OSStatus { throw std::runtime_error("x"); }, 0 },
         }) {
        m_subject->current = row.thrown;
        EXPECT_EQ(Send(), kEventNotHandledErr) << row.name;
        const auto posted = m_errors.TakeAll();
        ASSERT_EQ(posted.size(), 1u) << row.name;
        EXPECT_EQ(posted[0].nErrorCode, row.code) << row.name;
        EXPECT_EQ(posted[0].uEventClass, kType.eventClass) << row.name;
        EXPECT_EQ(posted[0].uEventKind, kType.eventKind) << row.name;
        EXPECT_EQ(std::string(posted[0].strError, sizeof posted[0].strError),
                  std::string(256, '\0'));
    }
}

TEST_F(HuxCarbonEventHandlerTest, AnObjectThatEndsInAPhaseIsLeftAlone) {
    struct Row {
        const char* name;
        Subject::Phase Subject::*phase;
        const char* log;
        OSStatus result;
    };
    for (const bool throws : { false, true }) {
        for (const Row& row : {
                 Row { "begin", &Subject::begin, "b~", 0 },
                 Row { "current", &Subject::current, "bc~", 0 },
                 Row { "end", &Subject::end, "bce~", kEventNotHandledErr },
             }) {
            m_log.clear();
            m_subject = std::make_unique<Subject>(m_log);
            m_log.clear();
            m_subject->Install(m_target);
            (*m_subject).*row.phase = [this, throws] {
                m_subject.reset();
                if (throws)
                    throw HuxException("file", 1, -1);
                return kNoErr;
            };
            EXPECT_EQ(Send(), throws ? kEventNotHandledErr : row.result) << row.name;
            EXPECT_EQ(m_log, row.log) << row.name;
            EXPECT_THAT(m_errors.TakeAll(), testing::IsEmpty()) << row.name;
        }
    }
}

TEST_F(HuxCarbonEventHandlerTest, AnObjectThatEndsInANestedDispatchIsLeftAloneByTheOuterOne) {
    std::string innerLog;
    Subject inner(innerLog);
    inner.InstallCarbonEventHandler(m_target, 1, &kOtherType);
    inner.current = [this] {
        m_subject.reset();
        return kNoErr;
    };
    m_subject->begin = [this] {
        EXPECT_EQ(Send(kOtherType), kNoErr);
        return kEventNotHandledErr;
    };
    EXPECT_EQ(Send(), kEventNotHandledErr);
    EXPECT_EQ(m_log, "b~");
    EXPECT_EQ(innerLog, "bce");
    EXPECT_EQ(inner.GetEventRef(), nullptr);
}

TEST_F(HuxCarbonEventHandlerTest, InstallingAgainAddsTheTypes) {
    EXPECT_EQ(m_subject->InstallCarbonEventHandler(m_target, 1, &kOtherType), kNoErr);
    Send(kOtherType);
    Send(kType);
    EXPECT_EQ(m_log, "bcebce");
    m_subject->RemoveEventTypes(1, &kType);
    Send(kType);
    EXPECT_EQ(m_log, "bcebce");
    m_subject->Remove();
    Send(kOtherType);
    EXPECT_EQ(m_log, "bcebce");
}

TEST_F(HuxCarbonEventHandlerTest, CallNextRunsTheHandlerInstalledBefore) {
    std::string laterLog;
    Subject later(laterLog);
    later.Install(m_target);
    m_subject->current = [] { return -3; };
    later.current = [this, &later] {
        EXPECT_EQ(later.CallNext(), -3);
        EXPECT_EQ(m_log, "bce");
        return kNoErr;
    };
    EXPECT_EQ(Send(), kNoErr);
    EXPECT_EQ(m_log, "bce");
}

struct Owner {
    int calls = 0;
    static OSStatus Handle(EventHandlerCallRef, EventRef event, void* self) {
        EXPECT_EQ(GetEventKind(event), kType.eventKind);
        return ++static_cast<Owner*>(self)->calls;
    }
};

TEST_F(HuxCarbonEventHandlerTest, APatcherRoutesOnlyThePhasesThatHaveAFunction) {
    Owner owner;
    HuxCarbonEventPatcherT<Owner> patcher;
    patcher.InstallCarbonEventHandler(m_target, 1, &kType);
    EXPECT_EQ(Send(), kEventNotHandledErr);
    patcher.SetHandler(&owner, Owner::Handle);
    EXPECT_EQ(Send(), 1);
    patcher.SetHandler(&owner, nullptr, Owner::Handle, Owner::Handle);
    EXPECT_EQ(Send(), 2);
    EXPECT_EQ(owner.calls, 3);
    patcher.SetHandler(nullptr, Owner::Handle);
    EXPECT_EQ(Send(), kEventNotHandledErr);
}

TEST(HuxException, IsCopiedWithWhatFitsOfItsFile) {
    HuxException copy;
    copy = HuxException(std::string(2000, 'f').c_str(), 12, -9874);
    EXPECT_EQ(std::string(copy.GetFile()), std::string(1023, 'f'));
    EXPECT_EQ(copy.GetLine(), 12);
    EXPECT_EQ(static_cast<long>(copy), -9874);
}

} // namespace
