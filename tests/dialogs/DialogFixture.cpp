// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/DialogFixture.h"

#include <cstdlib>

#include "support/TemporaryFolder.h"

namespace test {

// Neither the language nor the settings of whoever runs the tests.
void DialogFixture::PrepareEnvironment() {
    static const TemporaryFolder home;
    setenv("XDG_CONFIG_HOME", home.Path().c_str(), 1);
    setenv("LANGUAGE", "en", 1);
}

// Loaded once: nobody unloads and loads a user interface again and again.
std::shared_ptr<host::Plugin> DialogFixture::ThePlugin() {
    static std::string why;
    static const std::shared_ptr<host::Plugin> plugin = host::Plugin::Load(TELOP_BUNDLE, why);
    EXPECT_TRUE(plugin) << why;
    return plugin;
}

} // namespace test
