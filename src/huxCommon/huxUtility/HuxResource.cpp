// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/HuxResource.h"

#include <utility>

#include "huxCommon/huxUtility/VamBundle.h"

namespace {

constexpr platform::OSType kUnknownCode = EPI_FOUR_CC('?', '?', '?', '?');

HuxCFObject<platform::CFStringRef> IconsType() {
    return HuxCFObject<platform::CFStringRef>::Adopt(platform::CFStringCreateWithUTF8("icns"));
}

} // namespace

std::vector<_IconCache> HuxResource::s_vectorIconCache;

HuxResource::HuxResource(bool release) : m_fRelease(release) {}

HuxResource::~HuxResource() {
    Release();
}

bool HuxResource::IsValid() const {
    return (m_nType == kHuxResourceIcon && m_refIcon) || (m_nType == kHuxResourcePict && m_hPict);
}

void HuxResource::Attach(platform::PicHandle picture, bool release) {
    Release();
    m_fRelease = release;
    m_nType = kHuxResourcePict;
    m_hPict = picture;
}

void HuxResource::Attach(platform::IconRef icon, bool release) {
    Release();
    m_fRelease = release;
    m_nType = kHuxResourceIcon;
    m_refIcon = icon;
}

void HuxResource::Detach() {
    m_nType = kHuxResourceNone;
    m_hPict = nullptr;
    m_refIcon = nullptr;
}

void HuxResource::Release() {
    const platform::PicHandle picture = std::exchange(m_hPict, nullptr);
    const platform::IconRef icon = std::exchange(m_refIcon, nullptr);
    // What belongs to somebody else is forgotten, but what kind of thing it was stays known.
    if (!m_fRelease)
        return;
    m_nType = kHuxResourceNone;
    platform::KillPicture(picture);
    if (icon)
        platform::ReleaseIconRef(icon);
}

platform::PicHandle HuxResource::LoadPICT(platform::CFStringRef name, platform::CFBundleRef bundle,
                                          platform::CFStringRef subDir) {
    Release();
    m_hPict = vamLoadPictFromBundle(bundle, name, subDir);
    if (m_hPict)
        m_nType = kHuxResourcePict;
    return m_hPict;
}

platform::IconRef HuxResource::LoadIcon(platform::CFStringRef name, platform::CFBundleRef bundle,
                                        platform::CFStringRef subDir) {
    Release();
    if (RegisterIconRef(name, bundle, subDir, &m_refIcon) == platform::kNoErr)
        m_nType = kHuxResourceIcon;
    return m_refIcon;
}

platform::OSStatus HuxResource::RegisterIconRef(platform::CFStringRef name,
                                                platform::CFBundleRef bundle,
                                                platform::CFStringRef subDir,
                                                platform::IconRef* out) {
    *out = nullptr;
    FSRef file;
    if (!vamGetResourceFSRefFromBundle(&file, bundle, name, IconsType().Get(), subDir))
        return platform::kParamErr;
    const platform::OSStatus status =
        platform::RegisterIconRefFromFile(kUnknownCode, kUnknownCode, file.path, out);
    if (status != platform::kNoErr)
        return status;
    platform::AcquireIconRef(*out);
    s_vectorIconCache.push_back({ kUnknownCode, kUnknownCode, decltype(_IconCache::refIcon)(*out),
                                  HuxCFObject<platform::CFStringRef>(name) });
    return platform::kNoErr;
}

void HuxResource::UnregisterIconRef() {
    for (const _IconCache& entry : s_vectorIconCache)
        platform::UnregisterIconRef(entry.uCreator, entry.uIconType);
    s_vectorIconCache.clear();
}

platform::IconRef HuxResource::GetIconRefCache(platform::CFStringRef name) {
    platform::IconRef found = nullptr;
    // To the end: of several icons of one name the last one counts, which may have replaced a file.
    for (const _IconCache& entry : s_vectorIconCache)
        if (name && platform::CFStringGetUTF8(entry.refResourceName.Get()) ==
                        platform::CFStringGetUTF8(name))
            found = entry.refIcon.get();
    if (found)
        platform::AcquireIconRef(found);
    return found;
}
