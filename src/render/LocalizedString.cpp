// SPDX-License-Identifier: BSD-3-Clause
#include "render/LocalizedString.h"

#include "platform/CoreFoundation.h"

bool CopyLocalizedString(const char* key, char* buffer, std::size_t size) {
    platform::CFBundleRef bundle =
        platform::CFBundleGetBundleWithIdentifier(kPluginBundleIdentifier);
    if (!bundle)
        bundle = platform::CFBundleGetMainBundle();
    const platform::StringHolder string(
        platform::CFBundleCopyLocalizedString(bundle, key, key, nullptr));
    if (!string)
        return false;
    // A text that does not fit is cut; that is no failure to the callers, who have nothing better.
    platform::CFStringGetCString(string.get(), buffer, size);
    return true;
}
