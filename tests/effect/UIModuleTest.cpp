// SPDX-License-Identifier: BSD-3-Clause
// The dialog selectors of the real module, with and without a module of dialogs beside it.
#include "effect/UIModule.h"

#include <string_view>

#include <gmock/gmock.h>

#include "platform/TextContext.h"
#include "support/LoadedBundle.h"

namespace {

std::string_view Bytes(const _EPIRECORD& record) {
    return { reinterpret_cast<const char*>(&record), sizeof record };
}

class UIModuleTest : public testing::Test {
protected:
    // The copy of the bundle starts without the dialogs that the build has put into it.
    UIModuleTest() : m_bundle(TELOP_BUNDLE, TELOP_MODULE) {
        std::filesystem::remove(m_bundle.ModuleFolder() / kUIModuleFileName);
    }

    void PutBeside(const char* module) {
        std::filesystem::copy_file(module, m_bundle.ModuleFolder() / kUIModuleFileName);
    }

    // Each selector twice, as a host does that opens its dialog again.
    void ExpectNoDialogs() {
        for (int round = 0; round < 2; ++round) {
            _EPIRECORD record {};
            record.hDialogWindow = reinterpret_cast<EPIWindowRef>(&record);
            record.pDialogHolder = &record;
            _EPIRECORD expected = record;
            EXPECT_EQ(m_bundle.Call(epiDialogNotify, &record), 0);
            EXPECT_EQ(m_bundle.Call(epiDestroySettingDialog, &record), 0);
            EXPECT_TRUE(Bytes(record) == Bytes(expected));
            expected.hDialogWindow = nullptr;
            expected.pDialogHolder = nullptr;
            EXPECT_EQ(m_bundle.Call(epiCreateSettingDialog, &record), 0);
            EXPECT_TRUE(Bytes(record) == Bytes(expected));
        }
    }

    LoadedBundle m_bundle;
    platform::TextContext m_met;
    platform::TextScope m_scope { m_met };
};

TEST_F(UIModuleTest, GetsTheDialogSelectors) {
    PutBeside(TELOP_FAKE_UI);
    _EPIRECORD record {};
    EXPECT_EQ(m_bundle.Call(epiCreateSettingDialog, &record), 0);
    EXPECT_EQ(static_cast<void*>(record.hDialogWindow), &record);
    record.nNotifyCode = 2;
    EXPECT_EQ(m_bundle.Call(epiDialogNotify, &record), 0);
    EXPECT_EQ(record.nNotifyResult, 42);
    EXPECT_EQ(m_bundle.Call(epiDestroySettingDialog, &record), 0);
    EXPECT_EQ(record.hDialogWindow, nullptr);
    EXPECT_EQ(record.pDialogHolder, nullptr);
    EXPECT_THAT(m_met.Reports(), testing::IsEmpty());
}

TEST_F(UIModuleTest, IsFoundAfterTheHostHasLeftTheFolder) {
    PutBeside(TELOP_FAKE_UI);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(m_bundle.ModuleFolder());
    m_bundle.Load("./TextOverlay.so");
    std::filesystem::current_path(before);
    _EPIRECORD record {};
    EXPECT_EQ(m_bundle.Call(epiCreateSettingDialog, &record), 0);
    EXPECT_EQ(record.pDialogHolder, &record);
}

TEST_F(UIModuleTest, ItsAbsenceIsNoError) {
    ExpectNoDialogs();
    EXPECT_THAT(m_met.Reports(), testing::IsEmpty());
}

TEST_F(UIModuleTest, OneThatDoesNotOpenIsReportedOnce) {
    std::ofstream(m_bundle.ModuleFolder() / kUIModuleFileName) << "no module";
    ExpectNoDialogs();
    const auto reports = m_met.Reports();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_THAT(Describe(reports[0]), testing::HasSubstr(kUIModuleFileName));
}

TEST_F(UIModuleTest, OneWithoutATableIsRefused) {
    PutBeside(TELOP_PLATFORM);
    ExpectNoDialogs();
    const auto reports = m_met.Reports();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_THAT(reports[0].reason, testing::HasSubstr("no table"));
}

} // namespace
