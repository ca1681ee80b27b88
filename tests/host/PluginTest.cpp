// SPDX-License-Identifier: BSD-3-Clause
#include "host/Plugin.h"

#include <dlfcn.h>
#include <filesystem>

#include "LedgerTest.h"
#include "host/BundleSearch.h"
#include "support/ScopedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

class PluginTest : public LedgerTest {
protected:
    std::string WhyNot(const fs::path& bundle) {
        std::string why;
        EXPECT_FALSE(Plugin::Load(bundle, why));
        return why;
    }

    TemporaryFolder folder;
};

TEST_F(PluginTest, DescribesItself) {
    std::string why;
    auto const plugin = Plugin::Load(TELOP_FAKE_BUNDLE "/", why);
    ASSERT_TRUE(plugin) << why;
    auto const& description = plugin->Description();
    EXPECT_EQ(description.name, "Fake");
    EXPECT_EQ(description.category, std::string(64, 'c'));
    EXPECT_EQ(description.fixedParamSize, 480);
    ASSERT_EQ(description.parameters.size(), 2U);
    EXPECT_EQ(description.parameters[1].name, "Number");
    EXPECT_EQ(description.parameters[1].minimum, -1);
    EXPECT_EQ(description.parameters[1].defaultValue, 0.5);
}

TEST_F(PluginTest, IsUnloadedByTheLastOneWhoHoldsIt) {
    std::string why;
    auto plugin = Plugin::Load(TELOP_FAKE_BUNDLE, why);
    auto const module = plugin->Module();
    auto other = plugin;
    plugin.reset();
    auto* library = dlopen(module.c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    dlclose(library);
    other.reset();
    EXPECT_EQ(dlopen(module.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(PluginTest, WhatIsNoPluginIsRefusedWithTheReason) {
    auto const contents = [](const char* bundle) { return fs::path(bundle) / "Contents"; };
    EXPECT_THAT(WhyNot(folder.Path() / "none.bundle"),
                AllOf(HasSubstr("none.bundle: "), HasSubstr("is no bundle")));

    folder.Write(contents("Far.bundle") / "Linux-vax" / "Far.so", "");
    EXPECT_THAT(WhyNot(folder.Path() / "Far.bundle"),
                AllOf(HasSubstr(ModuleFolder() + "/Far.so"), HasSubstr("Linux-vax only")));

    folder.Write(contents("Text.bundle") / ModuleFolder() / "Text.so", "no library");
    EXPECT_THAT(WhyNot(folder.Path() / "Text.bundle"),
                AllOf(HasSubstr("Text.so: does not load: "), HasSubstr("file too short")));

    // Any library will do: the C++ one is there for sure.
    Dl_info library;
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "_ZSt9terminatev"), &library), 0);
    folder.Write(contents("Mute.bundle") / ModuleFolder() / "x", "");
    fs::create_symlink(library.dli_fname,
                       folder.Path() / contents("Mute.bundle") / ModuleFolder() / "Mute.so");
    EXPECT_THAT(WhyNot(folder.Path() / "Mute.bundle"), HasSubstr("exports no EntryPoint"));

    ScopedEnvironment const trouble("TELOP_FAKE_TROUBLE", "wild sizes");
    EXPECT_THAT(WhyNot(TELOP_FAKE_BUNDLE), HasSubstr("asks for -5 bytes"));
}

TEST_F(PluginTest, IsLookedForInOrder) {
    auto const first = folder.Path() / "first", second = folder.Path() / "second";
    fs::create_directories(second / "Some.bundle");
    fs::create_directories(folder.Path() / "data/telop/Some.bundle");
    ScopedEnvironment const data("XDG_DATA_HOME", (folder.Path() / "data").c_str());
    for (auto const& [searched, found] : std::vector<std::pair<std::string, fs::path>> {
             { first.string() + ":" + second.string(), second / "Some.bundle" },
             { (second / "Some.bundle/").string(), second / "Some.bundle" },
             { "::" + first.string() + ":", folder.Path() / "data/telop/Some.bundle" } }) {
        ScopedEnvironment const path("TELOP_PLUGIN_PATH", searched.c_str());
        EXPECT_EQ(FindBundle("Some").found, found) << searched;
    }

    ScopedEnvironment const path("TELOP_PLUGIN_PATH", first.c_str());
    std::string why;
    EXPECT_FALSE(Plugin::LoadByName("Other", why));
    EXPECT_THAT(why, AllOf(HasSubstr((first / "Other.bundle").string() + " (TELOP_PLUGIN_PATH)"),
                           HasSubstr("data/telop/Other.bundle"), HasSubstr("the build tree")));
}

} // namespace
} // namespace host
