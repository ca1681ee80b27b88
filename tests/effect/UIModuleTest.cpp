// SPDX-License-Identifier: BSD-3-Clause
// The dialog selectors of the real module, with and without a module of dialogs beside it.
#include "effect/UIModule.h"

#include <cstring>
#include <stdexcept>

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <epi/epi.h>

#include "platform/TextContext.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

// A copy of the real bundle with that in the place of the dialogs that the build has put into it.
struct ChangedBundle {
    explicit ChangedBundle(const fs::path& dialogs) {
        fs::copy(TELOP_BUNDLE, folder.Path(), fs::copy_options::recursive);
        const auto place = module.parent_path() / kUIModuleFileName;
        fs::remove(place);
        if (!dialogs.empty())
            fs::copy_file(dialogs, place);
    }
    ~ChangedBundle() {
        if (library)
            dlclose(library);
    }
    // path leads to the module, perhaps from the current folder only.
    void Load(const fs::path& path) {
        library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!library)
            throw std::runtime_error(dlerror());
    }
    long Call(long selector, _EPIRECORD* record) const {
        return reinterpret_cast<EPIEntryPoint>(dlsym(library, EPI_ENTRY_POINT_NAME))(selector,
                                                                                     record);
    }

    TemporaryFolder folder;
    fs::path module = folder.Path() / fs::path(TELOP_MODULE).lexically_relative(TELOP_BUNDLE);
    void* library = nullptr;
    platform::TextContext met;
    platform::TextScope scope { met };
};

TEST(UIModule, GetsTheDialogSelectorsAlsoAfterTheHostHasLeftTheFolder) {
    ChangedBundle bundle(TELOP_FAKE_UI);
    const auto before = fs::current_path();
    fs::current_path(bundle.module.parent_path());
    bundle.Load("./TextOverlay.so");
    fs::current_path(before);
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
        bundle.Load(bundle.module);
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
