// SPDX-License-Identifier: BSD-3-Clause
#include "host/Effect.h"

#include <atomic>
#include <dlfcn.h>
#include <thread>

#include "LedgerTest.h"
#include "host/Dialog.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

using testing::AllOf;
using testing::HasSubstr;

// An effect of the plug-in that misbehaves on demand.
class EffectTest : public LedgerTest {
protected:
    std::unique_ptr<Effect> Make(const char* trouble = nullptr) {
        ScopedEnvironment const environment("TELOP_FAKE_TROUBLE", trouble);
        auto plugin = Plugin::Load(TELOP_FAKE_BUNDLE, why);
        return plugin ? Effect::Make(std::move(plugin), why) : nullptr;
    }
    static std::string CallLog(const Plugin& plugin) {
        auto* library = dlopen(plugin.Module().c_str(), RTLD_NOW | RTLD_NOLOAD);
        std::string log = reinterpret_cast<const char* (*)()>(dlsym(library, "CallLog"))();
        dlclose(library);
        return log;
    }

    std::string why;
    std::unique_ptr<Image> image = Image::Make(4, 3, kRgba32, 3);
};

TEST_F(EffectTest, CallsTheSelectorsInOrder) {
    auto effect = Make();
    ASSERT_TRUE(effect) << why;
    std::string error;
    auto const plugin = Plugin::Load(TELOP_FAKE_BUNDLE, error); // keeps the module loaded
    EXPECT_EQ(effect->Params()->nFontSize, 7);
    EXPECT_EQ(effect->Settings().size(), 100U);
    EXPECT_TRUE(effect->Render(*image, {}, why)) << why;
    EXPECT_TRUE(effect->Save(why)) << why;
    {
        auto const dialog = Dialog::Open(*effect, DialogKind::kTextEdit, {}, why);
        ASSERT_TRUE(dialog) << why;
        EXPECT_TRUE(dialog->Notify(epiNotifyOK, why));
        EXPECT_EQ(dialog->NotifyResult(), 10);
        EXPECT_TRUE(dialog->NotifyComposite(image.get(), why));
    }
    effect.reset();
    // Loading twice describes twice: 0, then 4 until an index is not known.
    EXPECT_EQ(CallLog(*plugin), "0 4 4 4 2 3 0 4 4 4 9 5 6 6 7 1 ");
}

TEST_F(EffectTest, EveryFailureSaysWhatFailed) {
    EXPECT_FALSE(Make("other parameters"));
    EXPECT_THAT(why, HasSubstr("100 bytes, not the 480"));
    EXPECT_FALSE(Make("throws")->Render(*image, {}, why));
    EXPECT_THAT(why, HasSubstr("DoFilter was stopped by an exception: no paint"));
    EXPECT_FALSE(Make("status")->Render(*image, {}, why));
    EXPECT_THAT(why, HasSubstr("DoFilter gave the status 7"));
    EXPECT_FALSE(Make("short save")->Save(why));
    EXPECT_THAT(why, HasSubstr("saved 10 bytes"));
    FrameInfo frame;
    std::string const text(64, 'x');
    frame.strings[1] = text;
    EXPECT_FALSE(Make()->Render(*image, frame, why));
    EXPECT_THAT(why, HasSubstr("information string 2 has 64 bytes"));
}

TEST_F(EffectTest, ALockThatIsLeftBehindIsCounted) {
    EXPECT_TRUE(Make("leaks")->Render(*image, {}, why));
    EXPECT_EQ(Ledger::Get().Outstanding(Lent::kImageLock), 1);
    EXPECT_THAT(Ledger::Get().Describe(), HasSubstr("1 image locks outstanding"));
    image->Unlock();
}

TEST_F(EffectTest, ADialogWithoutAWindowIsDestroyedOnlyIfItWasMade) {
    for (auto const& row : { std::pair { "no window", "5 7 " }, std::pair { "no dialog", "5 " } }) {
        auto const effect = Make(row.first);
        auto const before = CallLog(effect->ThePlugin()).size();
        EXPECT_FALSE(Dialog::Open(*effect, DialogKind::kSettingsPanel, {}, why));
        EXPECT_EQ(CallLog(effect->ThePlugin()).substr(before), row.second);
        EXPECT_THAT(why, HasSubstr("made no window"));
    }
}

TEST_F(EffectTest, ParametersSurviveWhatCannotBeLoaded) {
    auto const effect = Make("serialize status");
    EXPECT_FALSE(effect->Load(std::vector<std::uint8_t>(480, 1), why));
    EXPECT_EQ(effect->Params()->nFontSize, 7);
    for (std::size_t size : { 0, 479, 481 }) {
        EXPECT_FALSE(effect->Load(std::vector<std::uint8_t>(size, 1), why));
        EXPECT_THAT(why, HasSubstr("has " + std::to_string(size) + " bytes"));
        EXPECT_EQ(effect->Params()->nFontSize, 7);
    }
    TemporaryFolder const folder;
    auto const file = folder.Write("wrong.txt", "some text");
    EXPECT_FALSE(effect->LoadFile(file, why));
    EXPECT_THAT(why, AllOf(HasSubstr(file.string()), HasSubstr("has 9 bytes")));
    EXPECT_FALSE(effect->LoadFile(folder.Path() / "none", why));
    EXPECT_THAT(why, HasSubstr("No such file"));
}

TEST_F(EffectTest, ConcurrentFramesGetTheirOwnParametersOrShareThem) {
    auto const effect = Make();
    std::atomic<int> wrong { 0 };
    auto const work = [&](std::uint8_t own) {
        std::string reason;
        auto const frame = Image::Make(2, 2, kRgb24);
        auto params = effect->CopyParams();
        params.nFontSize = own;
        for (int i = 0; i < 500; ++i) {
            wrong += !effect->RenderWith(params, *frame, {}, reason) || frame->Row(1)[0] != own;
            wrong += !effect->Render(*frame, {}, reason) || frame->Row(1)[0] != 7;
        }
    };
    std::thread other(work, 20);
    work(30);
    other.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace host
