// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/DialogFixture.h"

namespace test {

// Loaded once: nobody unloads and loads a user interface again and again.
std::shared_ptr<host::Plugin> DialogFixture::ThePlugin() {
    static std::string why;
    static const std::shared_ptr<host::Plugin> plugin = host::Plugin::Load(TELOP_BUNDLE, why);
    EXPECT_TRUE(plugin) << why;
    return plugin;
}

} // namespace test
