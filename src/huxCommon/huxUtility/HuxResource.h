// SPDX-License-Identifier: BSD-3-Clause
// One picture or icon of a bundle, owned or only looked at, and the cache of the icons that were
// loaded in this process. User-interface thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "huxCommon/huxCoreFoundation/HuxCFObject.h"
#include "platform/CoreFoundation.h"
#include "platform/ui/Cursors.h"

using ResType = std::uint32_t;
inline constexpr ResType kHuxResourceNone = 0;
inline constexpr ResType kHuxResourceIcon = 1;
inline constexpr ResType kHuxResourcePict = 2;

struct HuxIconReleaser {
    void operator()(platform::IconRef icon) const { platform::ReleaseIconRef(icon); }
};

// One loaded icon, under what it is registered, and the name that it was loaded under.
struct _IconCache {
    platform::OSType uCreator;
    platform::OSType uIconType;
    std::unique_ptr<platform::Icon, HuxIconReleaser> refIcon;
    HuxCFObject<platform::CFStringRef> refResourceName;
};

class HuxResource {
public:
    // release: what is held is disposed of when it is let go.
    explicit HuxResource(bool release);
    HuxResource(const HuxResource&) = delete;
    HuxResource& operator=(const HuxResource&) = delete;
    virtual ~HuxResource(); // releases

    bool IsValid() const;
    ResType GetType() const { return m_nType; }
    platform::PicHandle GetPict() const { return m_hPict; }
    platform::IconRef GetIcon() const { return m_refIcon; }

    // Releases, then holds the other one, from now on with this ownership.
    void Attach(platform::PicHandle picture, bool release);
    void Attach(platform::IconRef icon, bool release);
    // Lets go of what is held without disposing of it, which is then up to the caller.
    void Detach();
    void Release();

    // Release, then load and hold the bundle's <name>.pct or <name>.icns (null bundle: the main one;
    // null subDir: the top level) under the ownership that was set last; null when there is none.
    platform::PicHandle LoadPICT(platform::CFStringRef name, platform::CFBundleRef bundle,
                                 platform::CFStringRef subDir);
    platform::IconRef LoadIcon(platform::CFStringRef name, platform::CFBundleRef bundle,
                               platform::CFStringRef subDir);

    // Loads the icon anew, adds it to the cache under the name and gives it with a count for the
    // caller. kParamErr, and null, when there is no such file or it is no picture.
    static platform::OSStatus RegisterIconRef(platform::CFStringRef name,
                                              platform::CFBundleRef bundle,
                                              platform::CFStringRef subDir, platform::IconRef* out);
    // Forgets all icons of the cache.
    static void UnregisterIconRef();
    // The icon that was loaded last under the name, with a count for the caller; null when none was.
    static platform::IconRef GetIconRefCache(platform::CFStringRef name);

private:
    bool m_fRelease;
    ResType m_nType = kHuxResourceNone;
    platform::PicHandle m_hPict = nullptr;
    platform::IconRef m_refIcon = nullptr;

    static std::vector<_IconCache> s_vectorIconCache;
};
