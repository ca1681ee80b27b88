// SPDX-License-Identifier: BSD-3-Clause
// A plug-in, and the effects that are made of it.
#include "host/Plugin.h"

#include <array>
#include <dlfcn.h>
#include <filesystem>

#include "LedgerTest.h"
#include "host/BundleSearch.h"
#include "host/Dialog.h"
#include "host/Effect.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

class PluginTest : public LedgerTest {
protected:
    TemporaryFolder folder;
};

TEST_F(PluginTest, DescribesItselfAndIsUnloadedByTheLastOneWhoHoldsIt) {
    std::string why;
    auto plugin = Plugin::Load(TELOP_FAKE_BUNDLE "/", why);
    ASSERT_TRUE(plugin) << why;
    EXPECT_EQ(plugin->Description().category, std::string(64, 'c')) << "which has no end";
    ASSERT_EQ(plugin->Description().parameters.size(), 2U);
    EXPECT_EQ(plugin->Description().parameters[1].minimum, -1);

    const auto module = plugin->Module();
    auto other = plugin;
    plugin.reset();
    auto* library = dlopen(module.c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    dlclose(library);
    other.reset();
    EXPECT_EQ(dlopen(module.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(PluginTest, WhatIsNoPluginIsRefusedWithTheReason) {
    const auto contents = [](const char* bundle) { return fs::path(bundle) / "Contents"; };
    folder.Write(contents("Far.bundle") / "Linux-vax" / "Far.so", "");
    folder.Write(contents("Text.bundle") / ModuleFolder() / "Text.so", "no library");
    // Any library will do: the C++ one is there for sure.
    Dl_info library;
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "_ZSt9terminatev"), &library), 0);
    const auto mute = folder.Write(contents("Mute.bundle") / ModuleFolder() / "x", "");
    fs::create_symlink(library.dli_fname, mute.parent_path() / "Mute.so");
    const ScopedEnvironment trouble("TELOP_FAKE_TROUBLE", "wild sizes");
    for (const auto& [bundle, named, reason] : std::vector<std::array<std::string, 3>> {
             { "none.bundle", "none.bundle: ", "is no bundle" },
             { "Far.bundle", ModuleFolder() + "/Far.so", "Linux-vax only" },
             { "Text.bundle", "Text.so: does not load: ", "file too short" },
             { "Mute.bundle", "Mute.so", "exports no EntryPoint" },
             { TELOP_FAKE_BUNDLE, "Fake", "asks for -5 bytes" } }) {
        std::string why;
        EXPECT_FALSE(Plugin::Load(folder.Path() / bundle, why));
        EXPECT_THAT(why, AllOf(HasSubstr(named), HasSubstr(reason)));
    }
}

TEST_F(PluginTest, IsLookedForInOrder) {
    const auto first = folder.Path() / "first", second = folder.Path() / "second";
    fs::create_directories(second / "Some.bundle");
    fs::create_directories(folder.Path() / "data/telop/Some.bundle");
    const ScopedEnvironment data("XDG_DATA_HOME", (folder.Path() / "data").c_str());
    for (const auto& [searched, found] : std::vector<std::pair<std::string, fs::path>> {
             { first.string() + ":" + second.string(), second / "Some.bundle" },
             { (second / "Some.bundle/").string(), second / "Some.bundle" },
             { "::" + first.string() + ":", folder.Path() / "data/telop/Some.bundle" } }) {
        const ScopedEnvironment path("TELOP_PLUGIN_PATH", searched.c_str());
        EXPECT_EQ(FindBundle("Some").found, found) << searched;
    }

    const ScopedEnvironment path("TELOP_PLUGIN_PATH", first.c_str());
    std::string why;
    EXPECT_FALSE(Plugin::LoadByName("Other", why));
    EXPECT_THAT(why, AllOf(HasSubstr((first / "Other.bundle").string() + " (TELOP_PLUGIN_PATH)"),
                           HasSubstr("data/telop/Other.bundle"), HasSubstr("the build tree")));
}

// An effect of the plug-in that misbehaves on demand.
class EffectTest : public LedgerTest {
protected:
    std::unique_ptr<Effect> Make(const char* trouble = nullptr) {
        const ScopedEnvironment environment("TELOP_FAKE_TROUBLE", trouble);
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
    const auto plugin = Plugin::Load(TELOP_FAKE_BUNDLE, error); // keeps the module loaded
    EXPECT_EQ(effect->Params()->nFontSize, 7);
    EXPECT_EQ(effect->Settings().size(), 100U);
    EXPECT_TRUE(effect->Render(*image, {}, why)) << why;
    EXPECT_TRUE(effect->Save(why)) << why;
    {
        const auto dialog = Dialog::Open(*effect, DialogKind::kTextEdit, {}, why);
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
    const std::string text(64, 'x');
    frame.strings[1] = text;
    EXPECT_FALSE(Make()->Render(*image, frame, why));
    EXPECT_THAT(why, HasSubstr("information string 2 has 64 bytes"));

    EXPECT_TRUE(Make("leaks")->Render(*image, {}, why));
    EXPECT_THAT(Ledger::Get().Describe(), HasSubstr("1 image locks outstanding"));
    image->Unlock();
}

TEST_F(EffectTest, ADialogWithoutAWindowIsDestroyedOnlyIfItWasMade) {
    for (const auto& row : { std::pair { "no window", "5 7 " }, std::pair { "no dialog", "5 " } }) {
        const auto effect = Make(row.first);
        const auto before = CallLog(effect->ThePlugin()).size();
        EXPECT_FALSE(Dialog::Open(*effect, DialogKind::kSettingsPanel, {}, why));
        EXPECT_EQ(CallLog(effect->ThePlugin()).substr(before), row.second);
        EXPECT_THAT(why, HasSubstr("made no window"));
    }
}

TEST_F(EffectTest, ParametersSurviveWhatCannotBeLoaded) {
    const auto effect = Make("serialize status");
    EXPECT_FALSE(effect->Load(std::vector<std::uint8_t>(480, 1), why));
    EXPECT_EQ(effect->Params()->nFontSize, 7);
    for (std::size_t size : { 0, 479, 481 }) {
        EXPECT_FALSE(effect->Load(std::vector<std::uint8_t>(size, 1), why));
        EXPECT_THAT(why, HasSubstr("has " + std::to_string(size) + " bytes"));
        EXPECT_EQ(effect->Params()->nFontSize, 7);
    }
    EXPECT_FALSE(effect->LoadFile("/dev/null", why));
    EXPECT_THAT(why, HasSubstr("/dev/null: "));
}

} // namespace
} // namespace host
