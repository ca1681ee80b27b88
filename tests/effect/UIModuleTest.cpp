// SPDX-License-Identifier: BSD-3-Clause
// The dialog selectors of the real module, with and without a module of dialogs beside it.
#include "effect/UIModule.h"

#include <cstring>
#include <vector>

#include <gmock/gmock.h>

#include "platform/TextContext.h"
#include "support/LoadedBundle.h"

namespace {

class UIModuleTest : public testing::Test {
protected:
    // The copy of the bundle starts without the dialogs that the build has put into it.
    UIModuleTest() : m_bundle(TELOP_BUNDLE, TELOP_MODULE) {
        std::filesystem::remove(m_bundle.ModuleFolder() / kUIModuleFileName);
    }

    void PutBeside(const char* module) {
        std::filesystem::copy_file(module, m_bundle.ModuleFolder() / kUIModuleFileName);
    }

    // Each selector twice, as a host does that opens its dialog again; what was reported then.
    std::vector<platform::Report> ExpectNoDialogs() {
        for (int round = 0; round < 2; ++round) {
            _EPIRECORD record {};
            record.hDialogWindow = reinterpret_cast<EPIWindowRef>(&record);
            record.pDialogHolder = &record;
            _EPIRECORD expected = record;
            EXPECT_EQ(m_bundle.Call(epiDialogNotify, &record), 0);
            EXPECT_EQ(m_bundle.Call(epiDestroySettingDialog, &record), 0);
            EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
            expected.hDialogWindow = nullptr;
            expected.pDialogHolder = nullptr;
            EXPECT_EQ(m_bundle.Call(epiCreateSettingDialog, &record), 0);
            EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
        }
        return m_met.Reports();
    }

    LoadedBundle m_bundle;
    platform::TextContext m_met;
    platform::TextScope m_scope { m_met };
};

TEST_F(UIModuleTest, GetsTheDialogSelectorsAlsoAfterTheHostHasLeftTheFolder) {
    PutBeside(TELOP_FAKE_UI);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(m_bundle.ModuleFolder());
    m_bundle.Load("./TextOverlay.so");
    std::filesystem::current_path(before);
    _EPIRECORD record {};
    EXPECT_EQ(m_bundle.Call(epiCreateSettingDialog, &record), 0);
    EXPECT_EQ(record.pDialogHolder, &record);
    record.nNotifyCode = 2;
    EXPECT_EQ(m_bundle.Call(epiDialogNotify, &record), 0);
    EXPECT_EQ(record.nNotifyResult, 42);
    EXPECT_EQ(m_bundle.Call(epiDestroySettingDialog, &record), 0);
    EXPECT_EQ(record.pDialogHolder, nullptr);
    EXPECT_THAT(m_met.Reports(), testing::IsEmpty());
}

TEST_F(UIModuleTest, ItsAbsenceIsNoError) {
    EXPECT_THAT(ExpectNoDialogs(), testing::IsEmpty());
}

TEST_F(UIModuleTest, OneThatDoesNotOpenIsReportedOnce) {
    std::ofstream(m_bundle.ModuleFolder() / kUIModuleFileName) << "no module";
    const auto reports = ExpectNoDialogs();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_THAT(Describe(reports[0]), testing::HasSubstr(kUIModuleFileName));
}

TEST_F(UIModuleTest, OneWithoutATableIsRefused) {
    PutBeside(TELOP_PLATFORM);
    const auto reports = ExpectNoDialogs();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_THAT(reports[0].reason, testing::HasSubstr("no table"));
}

} // namespace
