// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxDialogImpl.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "huxCommon/ToolkitForms.h"
#include "support/WindowRefs.h"

using namespace platform;
using test::Click;
using test::Later;

namespace {

constexpr std::int32_t kButton = 20;

class RefusingControl : public HuxControlImpl {
public:
    bool CheckControlValue() override { return accepts; }
    bool accepts = true;
};

// Does at each step what the test says and notes the steps.
class TestDialog : public HuxDialogImpl {
public:
    explicit TestDialog(const test::ToolkitBundle& bundle) { SetBundle(bundle.Get()); }

    const char* GetWindowName() override { return "Dialog"; }
    const char* GetNibName() override { return nib; }
    void _AttachControls() override {
        AttachControl(field, 10);
        AttachControl(button, kButton);
    }
    bool OnInitDialog() override { return Run("init ", onInit); }
    bool OnOK() override { return Run("ok ", onOK); }
    bool OnCancel() override { return Run("cancel ", onCancel); }
    void EndDialog(long code) override {
        log += "end" + std::to_string(code) + " ";
        HuxDialogImpl::EndDialog(code);
    }
    OSStatus HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) override {
        std::uint32_t commandID = 0;
        HuxCarbonEvent(event, true).GetCommandParameter(&commandID, nullptr, nullptr, nullptr);
        if (commandID != kButton || !onButton)
            return kEventNotHandledErr;
        onButton();
        return kNoErr;
    }

    const char* nib = "Toolkit";
    RefusingControl field;
    HuxControlImpl button;
    std::function<bool()> onInit, onOK, onCancel;
    std::function<void()> onButton;
    std::string log;

private:
    bool Run(const char* step, const std::function<bool()>& answer) {
        log += step;
        const std::function<bool()> copy = answer; // which may end this object
        return !copy || copy();
    }
};

class HuxDialogTest : public testing::Test {
protected:
    HuxDialogTest() {
        m_bundle.AddForm("Dialog", { { "QCheckBox", 10 }, { "QPushButton", kButton } });
    }
    ~HuxDialogTest() override { EXPECT_EQ(HuxCarbonEventHandler::GetCurrentObject(), nullptr); }

    OSStatus Command(std::uint32_t commandID) {
        return HuxCarbonEvent::SendEventCommand(m_dialog.GetEventTarget(), commandID, 0, nullptr);
    }
    WindowRef Ref() const { return m_dialog.GetWindowRef(); }

    test::ToolkitBundle m_bundle;
    test::HostErrors m_errors;
    TestDialog m_dialog { m_bundle };
};

TEST_F(HuxDialogTest, AModalRunGivesTheCodeOfWhatEndedIt) {
    struct Row {
        const char* name;
        std::function<void()> act;
        long code;
        const char* log;
    };
    for (const Row& row : {
             Row { "OK button", [this] { Click(Ref(), "w1"); }, 1, "init ok end1 " },
             Row { "cancel button", [this] { Click(Ref(), "w2"); }, 2, "init cancel end2 " },
             Row { "Escape key",
                   [this] { QTest::keyClick(&test::At(Ref()).Widget(), Qt::Key_Escape); }, 2,
                   "init cancel end2 " },
             Row { "close box", [this] { test::At(Ref()).Widget().close(); }, 2,
                   "init cancel end2 " },
             Row { "the window's end", [this] { test::Dispose(Ref()); }, 2, "init " },
             Row { "a command of its own", [this] { m_dialog.EndDialog(7); }, 7, "init end7 " },
         }) {
        m_dialog.log.clear();
        Later(row.act);
        EXPECT_EQ(m_dialog.DoModal(nullptr), row.code) << row.name;
        EXPECT_EQ(m_dialog.log, row.log) << row.name;
        EXPECT_EQ(Ref(), nullptr) << row.name;
    }
}

TEST_F(HuxDialogTest, StaysOpenUntilControlsAndDialogAgree) {
    m_dialog.field.accepts = false;
    m_dialog.onCancel = [] { return false; };
    Later([this] {
        EXPECT_EQ(Command(kHICommandOK), kNoErr);
        EXPECT_EQ(m_dialog.log, "init ") << "a control refuses";
        m_dialog.field.accepts = true;
        m_dialog.onOK = [] { return false; };
        EXPECT_EQ(Command(kHICommandOK), kNoErr);
        EXPECT_EQ(Command(kHICommandCancel), kNoErr);
        EXPECT_EQ(m_dialog.log, "init ok cancel ");
        EXPECT_TRUE(test::At(Ref()).IsVisible());
        m_dialog.onOK = nullptr;
        Command(kHICommandOK);
        EXPECT_EQ(Command(kHICommandCancel), kNoErr) << "it has ended";
    });
    EXPECT_EQ(m_dialog.DoModal(nullptr), kHuxDialogOK);
    EXPECT_EQ(m_dialog.log, "init ok cancel ok end1 ");
}

TEST_F(HuxDialogTest, ADialogThatCannotBeMadeIsCancelled) {
    m_dialog.nib = "NoNib";
    EXPECT_EQ(m_dialog.DoModal(nullptr), kHuxDialogCancel);
    EXPECT_EQ(m_dialog.BeginHalfModal(nullptr), kParamErr);
    EXPECT_EQ(m_dialog.log, "");
}

TEST_F(HuxDialogTest, WhatEndsInTheBeginningEndsWithoutARun) {
    struct Row {
        const char* name;
        std::function<bool()> init;
        long code;
        const char* log;
        OSStatus halfModal;
        std::vector<std::int32_t> errors; // of both runs
    };
    for (const Row& row : { Row { "refusal",
                                  [] { return false; },
                                  kHuxDialogInitFailed,
                                  "init end-1 ",
                                  kParamErr,
                                  {} },
                            Row { "throw",
                                  [] {
                                      huxThrowError(-43, __FILE__, __LINE__);
                                      return true;
                                  },
                                  kHuxDialogInitFailed,
                                  "init end-1 ",
                                  kParamErr,
                                  { -43, -43 } },
                            Row { "its own end",
                                  [this] {
                                      m_dialog.EndDialog(5);
                                      return true;
                                  },
                                  5,
                                  "init end5 ",
                                  kNoErr,
                                  {} } }) {
        m_dialog.onInit = row.init;
        m_dialog.log.clear();
        EXPECT_EQ(m_dialog.DoModal(nullptr), row.code) << row.name;
        EXPECT_EQ(m_dialog.log, row.log) << row.name;
        EXPECT_EQ(m_dialog.BeginHalfModal(nullptr), row.halfModal) << row.name;
        EXPECT_FALSE(m_dialog.IsHalfModal()) << row.name;
        EXPECT_EQ(Ref(), nullptr) << row.name;
        std::vector<std::int32_t> codes;
        for (const _HUX_ERROR& error : m_errors.TakeAll())
            codes.push_back(error.nErrorCode);
        EXPECT_EQ(codes, row.errors) << row.name;
    }
}

TEST_F(HuxDialogTest, RunsNestAndTheOuterOneReturnsLast) {
    for (const bool outerEndsFirst : { false, true }) {
        TestDialog inner(m_bundle);
        long innerCode = 0;
        m_dialog.onButton = [&] {
            Later([&] {
                EXPECT_EQ(m_dialog.DoModal(nullptr), kHuxDialogCancel) << "it runs already";
                if (outerEndsFirst)
                    m_dialog.EndDialog(2);
                Click(inner.GetWindowRef(), "w1");
            });
            innerCode = inner.DoModal(nullptr);
            if (!outerEndsFirst)
                Later([this] { Click(Ref(), "w2"); });
        };
        Later([this] { Click(Ref(), "w20"); });
        EXPECT_EQ(m_dialog.DoModal(nullptr), kHuxDialogCancel);
        EXPECT_EQ(innerCode, kHuxDialogOK);
    }
}

TEST_F(HuxDialogTest, MayEndWhileItRuns) {
    auto dialog = std::make_unique<TestDialog>(m_bundle);
    dialog->onOK = [&dialog] {
        dialog.reset();
        return true;
    };
    Later([&dialog] { Click(dialog->GetWindowRef(), "w1"); });
    EXPECT_EQ(dialog->DoModal(nullptr), kHuxDialogCancel);
    EXPECT_EQ(dialog, nullptr);
}

// Half-modal -------------------------------------------------------------------------------------

class HuxHalfModalTest : public HuxDialogTest {
protected:
    HuxHalfModalTest() {
        m_parent = Window::Create({ 0, 0, 100, 100 });
        test::At(m_parent).ChangeAttributes(kBoxes, 0);
        test::At(m_parent).Show();
    }
    ~HuxHalfModalTest() override { test::Dispose(m_parent); }

    std::uint32_t ParentBoxes() const { return test::At(m_parent).Attributes() & kBoxes; }

    static constexpr std::uint32_t kBoxes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
    WindowRef m_parent = nullptr;
};

TEST_F(HuxHalfModalTest, TakesTheParentsBoxesUntilItEnds) {
    struct Row {
        const char* name;
        std::function<void(TestDialog&)> end;
    };
    for (const Row& row : {
             Row { "OK", [](auto& dialog) { Click(dialog.GetWindowRef(), "w1"); } },
             Row { "the window's end", [](auto& dialog) { test::Dispose(dialog.GetWindowRef()); } },
             Row { "call", [](auto& dialog) { dialog.EndHalfModal(); } },
         }) {
        TestDialog dialog(m_bundle);
        ASSERT_EQ(dialog.BeginHalfModal(m_parent), kNoErr) << row.name;
        EXPECT_TRUE(dialog.IsHalfModal());
        EXPECT_TRUE(test::At(dialog.GetWindowRef()).IsVisible()) << row.name;
        EXPECT_EQ(ParentBoxes(), 0u) << row.name;
        EXPECT_EQ(dialog.BeginHalfModal(m_parent), kParamErr) << row.name;
        row.end(dialog);
        EXPECT_FALSE(dialog.IsHalfModal()) << row.name;
        EXPECT_EQ(dialog.GetWindowRef(), nullptr) << row.name;
        EXPECT_EQ(ParentBoxes(), kBoxes) << row.name;
    }
}

TEST_F(HuxHalfModalTest, TheParentMayEndFirst) {
    ASSERT_EQ(m_dialog.BeginHalfModal(m_parent), kNoErr);
    test::Dispose(m_parent);
    Command(kHICommandOK);
    EXPECT_EQ(m_dialog.GetReturnCode(), kHuxDialogOK);
    EXPECT_FALSE(m_dialog.IsHalfModal());
}

} // namespace
