// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxWindowImplT.h"

#include <functional>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "huxCommon/ToolkitForms.h"
#include "support/WindowRefs.h"

using namespace platform;

namespace {

class TestWindow : public HuxWindowImplT<HuxWindowBase> {
public:
    ~TestWindow() override { m_log += "~"; }

    const char* GetWindowName() override { return "Main"; }
    const char* GetNibName() override { return "Toolkit"; }
    void _AttachControls() override {
        m_log += "attach ";
        AttachControl(check, 10);
        AttachControl(missing, 999);
    }
    bool HandleInitWindow() override {
        m_log += check.IsValid() ? "init " : "unattached ";
        const bool answer = usable;
        const std::function<void()> copy = init; // which may end this object
        if (copy)
            copy();
        return answer;
    }
    OSStatus HandleEventEndSelf(EventHandlerCallRef, EventRef event) override {
        if (GetEventClass(event) == kHuxEventClassWindow)
            m_log += std::to_string(GetEventKind(event)) + " ";
        return kEventNotHandledErr;
    }
    OSStatus Create() { return CreateNibWindow(GetWindowName(), GetNibName(), GetBundle()); }

    HuxControlImpl check, missing;
    bool usable = true;
    std::function<void()> init;
    std::string& m_log;

    explicit TestWindow(std::string& log, CFBundleRef bundle) : m_log(log) { SetBundle(bundle); }
};

class HuxWindowImplTest : public testing::Test {
protected:
    HuxWindowImplTest() { m_bundle.AddForm("Main", { { "QCheckBox", 10 } }); }

    std::string m_log;
    test::ToolkitBundle m_bundle;
    std::unique_ptr<TestWindow> m_window = std::make_unique<TestWindow>(m_log, m_bundle.Get());
    test::HostErrors m_errors;
};

TEST_F(HuxWindowImplTest, TheObjectStaysWhenTheWindowEndsAndNotTheOtherWay) {
    ASSERT_EQ(m_window->Create(), kNoErr);
    EXPECT_EQ(m_log, "attach init 1 ");
    EXPECT_FALSE(m_window->missing.IsValid());
    WindowRef window = m_window->GetWindowRef();
    EXPECT_EQ(HuxWindowBase::FromWindow(window), m_window.get());
    EXPECT_EQ(HuxControlImpl::FromControl(m_window->FindControl({ kHuxPropertyCreator, 10 })),
              &m_window->check);
    EXPECT_EQ(m_window->Create(), kParamErr) << "it has a window";
    test::Dispose(window);
    EXPECT_EQ(m_window->GetWindowRef(), nullptr);
    EXPECT_EQ(m_window->check.GetControlRef(), nullptr);
    EXPECT_FALSE(m_window->IsInstalled());
    EXPECT_EQ(m_window->Create(), kNoErr);
    EXPECT_TRUE(m_window->check.IsValid());
    window = m_window->GetWindowRef();
    m_window.reset();
    EXPECT_FALSE(test::IsThere(window));
}

TEST_F(HuxWindowImplTest, ARefusedInitializationTellsAndLeavesNoWindow) {
    m_window->usable = false;
    EXPECT_EQ(m_window->Create(), kParamErr);
    EXPECT_EQ(m_log, "attach init 2 1 ");
    EXPECT_EQ(m_window->GetWindowRef(), nullptr);
    EXPECT_EQ(m_window->check.GetControlRef(), nullptr);
    m_window->usable = true;
    EXPECT_EQ(m_window->Create(), kNoErr) << "the object may try again";
}

TEST_F(HuxWindowImplTest, ObjectOrWindowMayEndWhileTheyInitialize) {
    m_window->init = [this] { m_window->Dispose(); };
    EXPECT_EQ(m_window->Create(), kParamErr);
    EXPECT_EQ(m_window->GetWindowRef(), nullptr);
    TestWindow* const window = m_window.get();
    m_window->init = [this] { m_window.reset(); };
    m_log.clear();
    EXPECT_EQ(window->Create(), kParamErr);
    EXPECT_EQ(m_log, "attach init ~");
}

} // namespace
