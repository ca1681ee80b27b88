// SPDX-License-Identifier: BSD-3-Clause
// Window objects with a form and wrapped controls, and their runs.
#include "huxCommon/huxGUI/HuxDialog.h"

#include "huxCommon/HostErrors.h"
#include "platform/ui/UIFixture.h"
#include "support/TemporaryFolder.h"

using namespace platform;

namespace {

constexpr const char* kForm = R"(<?xml version="1.0" encoding="UTF-8"?><ui version="4.0">
<class>Dialog</class><widget class="QWidget" name="Dialog"><layout class="QVBoxLayout" name="column">
<item><widget class="QCheckBox" name="field">
 <property name="controlID" stdset="0"><number>10</number></property></widget></item>
<item><widget class="QPushButton" name="ok">
 <property name="commandID" stdset="0"><string>ok  </string></property>
 <property name="controlID" stdset="0"><number>1</number></property></widget></item>
<item><widget class="QPushButton" name="cancel">
 <property name="commandID" stdset="0"><string>not!</string></property>
 <property name="controlID" stdset="0"><number>2</number></property></widget></item>
</layout></widget></ui>)";

// Does at each step what the test says and notes the steps.
class TestDialog : public HuxDialogImpl {
public:
    using Step = std::function<bool()>;

    TestDialog(CFBundleRef bundle, std::string& log) : m_log(log) { SetBundle(bundle); }
    ~TestDialog() override { m_log += "~"; }

    const char* GetWindowName() override { return "Dialog"; }
    const char* GetNibName() override { return nib; }
    void _AttachControls() override {
        AttachControl(field, 10);
        AttachControl(missing, 999);
    }
    bool OnInitDialog() override { return Run("init ", onInit); }
    bool OnOK() override { return Run("ok ", onOK); }
    bool OnCancel() override { return Run("cancel ", nullptr); }
    void EndDialog(long code) override {
        m_log += "end" + std::to_string(code) + " ";
        HuxDialogImpl::EndDialog(code);
    }

    const char* nib = "Toolkit";
    HuxControlImpl field, missing;
    Step onInit, onOK;

private:
    bool Run(const char* name, const Step& answer) {
        m_log += name;
        const Step copy = answer; // which may end this object
        return !copy || copy();
    }

    std::string& m_log;
};

class HuxDialogTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        m_folder.Write("T.bundle/Contents/Info.json",
                       R"({"identifier":"org.telop.test.toolkit","name":"T","version":"1"})");
        m_folder.Write("T.bundle/Contents/Resources/Toolkit.nib/Dialog.ui", kForm);
        m_bundle = CFBundleCreate(m_folder.Path() / "T.bundle");
        dialog = NewDialog();
    }
    void TearDown() override {
        dialog.reset();
        CFRelease(m_bundle);
        EXPECT_EQ(HuxCarbonEventHandler::GetCurrentObject(), nullptr);
        UIFixture::TearDown();
    }

    std::unique_ptr<TestDialog> NewDialog() { return std::make_unique<TestDialog>(m_bundle, log); }
    static void Click(const TestDialog& in, const char* name) {
        auto* const button = test::At(in.GetWindowRef()).Widget().findChild<QWidget*>(name);
        ASSERT_NE(button, nullptr) << name;
        UIFixture::Click(*button);
    }
    OSStatus Command(std::uint32_t commandID) const {
        return HuxCarbonEvent::SendEventCommand(dialog->GetEventTarget(), commandID, 0, nullptr);
    }
    WindowRef Ref() const { return dialog->GetWindowRef(); }

    std::unique_ptr<TestDialog> dialog;
    test::HostErrors errors;

private:
    TemporaryFolder m_folder;
    CFBundleRef m_bundle = nullptr;
};

TEST_F(HuxDialogTest, TheObjectStaysWhenTheWindowEndsAndNotTheOtherWay) {
    ASSERT_EQ(dialog->CreateDialog(), kNoErr);
    EXPECT_FALSE(dialog->missing.IsValid());
    EXPECT_EQ(HuxWindowBase::FromWindow(Ref()), dialog.get());
    EXPECT_EQ(HuxControlImpl::FromControl(dialog->FindControl({ kHuxPropertyCreator, 10 })),
              &dialog->field);
    EXPECT_EQ(dialog->CreateDialog(), kParamErr) << "it has a window";
    test::Dispose(Ref());
    EXPECT_EQ(Ref(), nullptr);
    EXPECT_EQ(dialog->field.GetControlRef(), nullptr);
    EXPECT_FALSE(dialog->IsInstalled());
    EXPECT_EQ(dialog->CreateDialog(), kNoErr);
    EXPECT_TRUE(dialog->field.IsValid());
    const WindowRef made = Ref();
    dialog.reset();
    EXPECT_FALSE(test::IsThere(made));
}

TEST_F(HuxDialogTest, AModalRunGivesTheCodeOfWhatEndedIt) {
    struct Row {
        const char* name;
        std::function<void()> act;
        long code;
        const char* log;
    };
    for (const Row& row : {
             Row { "OK button", [this] { Click(*dialog, "ok"); }, 1, "init ok end1 " },
             Row { "close box", [this] { test::At(Ref()).Widget().close(); }, 2,
                   "init cancel end2 " },
             Row { "the window's end", [this] { test::Dispose(Ref()); }, 2, "init " },
             Row { "a command of its own", [this] { dialog->EndDialog(7); }, 7, "init end7 " },
         }) {
        log.clear();
        Later(row.act);
        EXPECT_EQ(dialog->DoModal(nullptr), row.code) << row.name;
        EXPECT_EQ(log, row.log) << row.name;
        EXPECT_EQ(Ref(), nullptr) << row.name;
    }
}

TEST_F(HuxDialogTest, WhatEndsInTheBeginningEndsWithoutARun) {
    dialog->nib = "NoNib";
    EXPECT_EQ(dialog->DoModal(nullptr), kHuxDialogCancel);
    EXPECT_EQ(dialog->BeginHalfModal(nullptr), kParamErr);
    EXPECT_EQ(log, "");
    dialog->nib = "Toolkit";
    const auto throws = []() -> bool { throw HuxException("file", 1, -43); };
    const auto ends = [this] {
        dialog->EndDialog(5);
        return true;
    };
    struct Row {
        const char* name;
        TestDialog::Step init;
        long code;
        const char* log;
        OSStatus halfModal;
        std::vector<std::int32_t> errors; // of both runs
    };
    for (const Row& row :
         { Row { "refusal", [] { return false; }, -1, "init end-1 ", kParamErr, {} },
           Row { "throw", throws, -1, "init end-1 ", kParamErr, { -43, -43 } },
           Row { "its own end", ends, 5, "init end5 ", kNoErr, {} } }) {
        dialog->onInit = row.init;
        log.clear();
        EXPECT_EQ(dialog->DoModal(nullptr), row.code) << row.name;
        EXPECT_EQ(log, row.log) << row.name;
        EXPECT_EQ(dialog->BeginHalfModal(nullptr), row.halfModal) << row.name;
        EXPECT_FALSE(dialog->IsHalfModal()) << row.name;
        EXPECT_EQ(Ref(), nullptr) << row.name;
        std::vector<std::int32_t> codes;
        for (const _HUX_ERROR& error : errors.TakeAll())
            codes.push_back(error.nErrorCode);
        EXPECT_EQ(codes, row.errors) << row.name;
    }
}

TEST_F(HuxDialogTest, RunsNestAndTheOuterOneReturnsLast) {
    for (const bool outerEndsFirst : { false, true }) {
        const auto inner = NewDialog();
        long innerCode = 0;
        Later([&] {
            Later([&] {
                EXPECT_EQ(dialog->DoModal(nullptr), kHuxDialogCancel) << "it runs already";
                if (outerEndsFirst)
                    dialog->EndDialog(2);
                Click(*inner, "ok");
            });
            innerCode = inner->DoModal(nullptr);
            if (!outerEndsFirst)
                Click(*dialog, "cancel");
        });
        EXPECT_EQ(dialog->DoModal(nullptr), kHuxDialogCancel);
        EXPECT_EQ(innerCode, kHuxDialogOK);
    }
}

TEST_F(HuxDialogTest, MayEndWhileItBeginsOrRuns) {
    const std::function<void()> object = [this] { dialog.reset(); };
    const std::function<void()> itsWindow = [this] { dialog->Dispose(); };
    struct Row {
        TestDialog::Step TestDialog::*step;
        const std::function<void()>& end;
        const char* log;
    };
    for (const Row& row : { Row { &TestDialog::onInit, object, "init ~" },
                            Row { &TestDialog::onInit, itsWindow, "init " },
                            Row { &TestDialog::onOK, object, "init ok ~" } }) {
        dialog = NewDialog();
        log.clear();
        TestDialog& running = *dialog;
        running.*row.step = [&row] {
            row.end();
            return true;
        };
        if (row.step == &TestDialog::onOK)
            Later([this] { Click(*dialog, "ok"); });
        EXPECT_EQ(running.DoModal(nullptr), kHuxDialogCancel) << row.log;
        EXPECT_EQ(log, row.log);
    }
}

// Half-modal -------------------------------------------------------------------------------------

class HuxHalfModalTest : public HuxDialogTest {
protected:
    void SetUp() override {
        HuxDialogTest::SetUp();
        test::At(window).ChangeAttributes(kBoxes, 0);
        test::At(window).Show();
    }
    std::uint32_t ParentBoxes() const { return test::At(window).Attributes() & kBoxes; }

    static constexpr std::uint32_t kBoxes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
};

TEST_F(HuxHalfModalTest, TakesTheParentsBoxesUntilItEnds) {
    const std::function<void()> ends[] = { [this] { Click(*dialog, "ok"); },
                                           [this] { test::Dispose(Ref()); },
                                           [this] { dialog->EndHalfModal(); } };
    for (const auto& end : ends) {
        ASSERT_EQ(dialog->BeginHalfModal(window), kNoErr);
        EXPECT_TRUE(dialog->IsHalfModal());
        EXPECT_TRUE(test::At(Ref()).IsVisible());
        EXPECT_EQ(ParentBoxes(), 0u);
        EXPECT_EQ(dialog->BeginHalfModal(window), kParamErr);
        end();
        EXPECT_FALSE(dialog->IsHalfModal()) << &end - ends;
        EXPECT_EQ(Ref(), nullptr) << &end - ends;
        EXPECT_EQ(ParentBoxes(), kBoxes) << &end - ends;
    }
}

TEST_F(HuxHalfModalTest, TheParentMayEndFirst) {
    ASSERT_EQ(dialog->BeginHalfModal(window), kNoErr);
    test::Dispose(window);
    Command(kHICommandOK);
    EXPECT_EQ(dialog->GetReturnCode(), kHuxDialogOK);
    EXPECT_FALSE(dialog->IsHalfModal());
}

} // namespace
