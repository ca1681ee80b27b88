// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/VamCursor.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxUtility/VamBundle.h"
#include "platform/ui/Cursors.h"

namespace {

struct SystemCursor {
    std::string_view name;
    platform::ThemeCursor theme;
};

constexpr std::array kSystemCursors {
    SystemCursor { "arrowCursor", platform::kThemeArrowCursor },
    SystemCursor { "iBeamCursor", platform::kThemeIBeamCursor },
    SystemCursor { "crossCursor", platform::kThemeCrossCursor },
    SystemCursor { "plusCursor", platform::kThemePlusCursor },
    SystemCursor { "watchCursor", platform::kThemeWatchCursor },
    // The word is doubled in the name that callers have always used.
    SystemCursor { "pointingHandCursorCursor", platform::kThemePointingHandCursor },
};

// Null for a name that is not the system's.
const SystemCursor* FindSystemCursor(platform::CFStringRef name) {
    if (!name)
        return nullptr;
    const auto* const found =
        std::ranges::find(kSystemCursors, platform::CFStringGetUTF8(name), &SystemCursor::name);
    return found == kSystemCursors.end() ? nullptr : found;
}

// The name under which the platform knows a cursor.
class RegistryName {
public:
    explicit RegistryName(platform::CFStringRef name)
        : m_valid(name && platform::CFStringGetCString(name, m_bytes.data(), m_bytes.size())) {}
    bool IsValid() const { return m_valid; }
    const char* Get() const { return m_bytes.data(); }

private:
    std::array<char, 128> m_bytes {};
    bool m_valid;
};

struct Kill {
    void operator()(platform::PicHandle picture) const { platform::KillPicture(picture); }
};
using PictureHolder = std::unique_ptr<platform::Picture, Kill>;

struct Dispose {
    void operator()(platform::GWorldPtr world) const { platform::DisposeGWorld(world); }
};
using WorldHolder = std::unique_ptr<platform::GWorld, Dispose>;

struct DrawnPicture {
    WorldHolder world; // null: there is no such picture, or no memory
    platform::Rect bounds {};
};

// The picture over white, which is transparent in a cursor.
DrawnPicture DrawPictureOf(platform::CFBundleRef bundle, platform::CFStringRef name,
                           platform::CFStringRef subDir) {
    const PictureHolder picture(vamLoadPictFromBundle(bundle, name, subDir));
    const platform::Rect bounds = platform::GetPictureBounds(picture.get());
    platform::GWorldPtr made = nullptr;
    if (!picture || platform::NewGWorld(&made, 32, bounds) != platform::kNoErr)
        return {};
    WorldHolder world(made);
    platform::CGrafPtr port = nullptr;
    platform::GDHandle device = nullptr;
    platform::GetGWorld(&port, &device);
    platform::SetGWorld(made, nullptr);
    platform::EraseRect(bounds);
    const platform::OSStatus status = platform::DrawPicture(picture.get(), bounds);
    platform::SetGWorld(port, device);
    return status == platform::kNoErr ? DrawnPicture { std::move(world), bounds } : DrawnPicture {};
}

std::int16_t MiddleOf(int side) {
    return static_cast<std::int16_t>((side - 1) / 2);
}

void AddDensePicture(platform::CFBundleRef bundle, platform::CFStringRef name,
                     platform::CFStringRef subDir, const RegistryName& known) {
    const std::string denseName = std::string(platform::CFStringGetUTF8(name)) + "@2x";
    const DrawnPicture dense =
        DrawPictureOf(bundle, HuxString::FromUTF8(denseName).GetCFString(), subDir);
    if (dense.world)
        platform::AddNamedPixMapCursorDensity(dense.world.get(), known.Get());
}

} // namespace

bool vamIsSystemNamedCursor(platform::CFStringRef name) {
    return FindSystemCursor(name) != nullptr;
}

bool vamRegisterNamedCursorFromBundle(platform::CFBundleRef bundle, platform::CFStringRef name,
                                      platform::CFStringRef subDir) {
    const RegistryName known(name);
    if (!known.IsValid())
        return false;
    if (platform::IsNamedPixMapCursorRegistered(known.Get()))
        return true;
    const DrawnPicture drawn = DrawPictureOf(bundle, name, subDir);
    const platform::Rect& bounds = drawn.bounds;
    if (!drawn.world || platform::RegisterNamedPixMapCursor(
                            drawn.world.get(), MiddleOf(bounds.right), MiddleOf(bounds.bottom),
                            known.Get()) != platform::kNoErr)
        return false;
    AddDensePicture(bundle, name, subDir, known);
    return true;
}

void vamSetNamedCursor(platform::CFStringRef name) {
    if (const SystemCursor* const system = FindSystemCursor(name)) {
        platform::SetThemeCursor(system->theme);
        return;
    }
    const RegistryName known(name);
    if (known.IsValid())
        platform::SetNamedPixMapCursor(known.Get());
}
