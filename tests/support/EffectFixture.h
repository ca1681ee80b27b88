// SPDX-License-Identifier: BSD-3-Clause
// The real bundle's effect under the reference host, for tests with real widgets: a record with its
// parameters and a frame, and nothing of it left behind.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "host/Effect.h"
#include "host/Ledger.h"
#include "platform/ui/UIObject.h"
#include "support/TemporaryFolder.h"

namespace test {

class EffectFixture : public testing::Test {
protected:
    void SetUp() override {
        static const TemporaryFolder home; // neither the language nor the settings of the user
        setenv("XDG_CONFIG_HOME", home.Path().c_str(), 1);
        setenv("LANGUAGE", "en", 1);
        ASSERT_TRUE(platform::EnsureUserInterface());
        std::string why;
        effect = host::Effect::Make(ThePlugin(), why);
        ASSERT_TRUE(effect) << why;
        record = effect->Record();
        SetFrame(320, 180);
        SetMode(TEXT_DIALOGUE);
    }
    void TearDown() override {
        effect.reset();
        EXPECT_EQ(host::Ledger::Get().Describe(), "");
    }
    // Loaded once: nobody unloads and loads a user interface again and again.
    static std::shared_ptr<host::Plugin> ThePlugin() {
        static std::string why;
        static const std::shared_ptr<host::Plugin> plugin = host::Plugin::Load(TELOP_BUNDLE, why);
        EXPECT_TRUE(plugin) << why;
        return plugin;
    }
    void SetFrame(std::int32_t width, std::int32_t height) {
        image = host::Image::Make(width, height, host::kArgb32);
        record.nFrameWidth = width;
        record.nFrameHeight = height;
        record.hComposite = image->Ref();
    }
    void SetMode(std::uint32_t mode) { effect->Params()->dwFlags = mode; }
    _TEXTPARAM Param() const { return effect->CopyParams(); }

    std::unique_ptr<host::Effect> effect;
    std::unique_ptr<host::Image> image;
    _EPIRECORD record {};
};

} // namespace test
