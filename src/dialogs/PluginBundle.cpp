// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/PluginBundle.h"

#include "render/LocalizedString.h"

platform::CFBundleRef PluginBundle() {
    return platform::CFBundleGetBundleWithIdentifier(kPluginBundleIdentifier);
}

HuxString PluginText(std::string_view key) {
    return HuxString::Localized(PluginBundle(), key);
}
