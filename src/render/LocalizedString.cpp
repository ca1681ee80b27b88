// SPDX-License-Identifier: BSD-3-Clause
#include "render/LocalizedString.h"

#include <memory>

#include "platform/CoreFoundation.h"

namespace {

struct ReleaseString {
    void operator()(platform::CFStringRef string) const { platform::CFRelease(string); }
};
using StringHolder = std::unique_ptr<const platform::CFString, ReleaseString>;

} // namespace

bool CopyLocalizedString(const char* key, char* buffer, std::size_t size) {
    platform::CFBundleRef bundle =
        platform::CFBundleGetBundleWithIdentifier(kPluginBundleIdentifier);
    if (!bundle)
        bundle = platform::CFBundleGetMainBundle();
    const StringHolder string(platform::CFBundleCopyLocalizedString(bundle, key, key, nullptr));
    if (!string)
        return false;
    // A text that does not fit is cut; that is no failure to the callers, who have nothing better.
    platform::CFStringGetCString(string.get(), buffer, size);
    return true;
}
