// SPDX-License-Identifier: BSD-3-Clause
// The dialog selectors of the real module, with and without a module of dialogs beside it.
#include "effect/UIModule.h"

#include <cstring>

#include <gmock/gmock.h>

#include "platform/TextContext.h"
#include "support/LoadedBundle.h"

namespace {

// A copy of the bundle with that in the place of the dialogs that the build has put into it.
struct ChangedBundle : LoadedBundle {
    explicit ChangedBundle(const char* dialogs) : LoadedBundle(TELOP_BUNDLE, TELOP_MODULE) {
        const auto place = ModuleFolder() / kUIModuleFileName;
        std::filesystem::remove(place);
        if (*dialogs)
            std::filesystem::copy_file(dialogs, place);
    }

    platform::TextContext met;
    platform::TextScope scope { met };
};

TEST(UIModule, GetsTheDialogSelectorsAlsoAfterTheHostHasLeftTheFolder) {
    ChangedBundle bundle(TELOP_FAKE_UI);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(bundle.ModuleFolder());
    bundle.Load("./TextOverlay.so");
    std::filesystem::current_path(before);
    _EPIRECORD record {};
    EXPECT_EQ(bundle.Call(epiCreateSettingDialog, &record), 0);
    EXPECT_EQ(record.pDialogHolder, &record);
    record.nNotifyCode = 2;
    EXPECT_EQ(bundle.Call(epiDialogNotify, &record), 0);
    EXPECT_EQ(record.nNotifyResult, 42);
    EXPECT_EQ(bundle.Call(epiDestroySettingDialog, &record), 0);
    EXPECT_EQ(record.pDialogHolder, nullptr);
    EXPECT_THAT(bundle.met.Reports(), testing::IsEmpty());
}

// Each selector twice, as a host does that opens its dialog again: what is wrong is reported once.
TEST(UIModule, WithoutDialogsTheSelectorsDoNothing) {
    const TemporaryFolder folder;
    const std::string broken = folder.Write("broken", "no module");
    for (const auto& [dialogs, reported] :
         { std::pair { "", "" }, std::pair { broken.c_str(), kUIModuleFileName },
           std::pair { TELOP_PLATFORM, "no table" } }) {
        ChangedBundle bundle(dialogs);
        for (int round = 0; round < 2; ++round) {
            _EPIRECORD record {};
            record.hDialogWindow = reinterpret_cast<EPIWindowRef>(&record);
            record.pDialogHolder = &record;
            _EPIRECORD expected = record;
            EXPECT_EQ(bundle.Call(epiDialogNotify, &record), 0);
            EXPECT_EQ(bundle.Call(epiDestroySettingDialog, &record), 0);
            EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
            expected.hDialogWindow = nullptr;
            expected.pDialogHolder = nullptr;
            EXPECT_EQ(bundle.Call(epiCreateSettingDialog, &record), 0);
            EXPECT_EQ(std::memcmp(&record, &expected, sizeof record), 0);
        }
        const auto reports = bundle.met.Reports();
        ASSERT_EQ(reports.size(), *reported ? 1u : 0u) << dialogs;
        if (*reported)
            EXPECT_THAT(Describe(reports[0]), testing::HasSubstr(reported));
    }
}

} // namespace
