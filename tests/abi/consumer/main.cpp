// SPDX-License-Identifier: BSD-3-Clause
// Loads the installed effect through the installed host library.
#include <cstdio>
#include <string>

#include <host/Plugin.h>

int main() {
    std::string why;
    const auto plugin = host::Plugin::Load(BUNDLE, why);
    if (!plugin) {
        std::fprintf(stderr, "%s\n", why.c_str());
        return 1;
    }
    std::printf("%s\n", plugin->Description().name.c_str());
    return 0;
}
