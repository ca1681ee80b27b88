// SPDX-License-Identifier: BSD-3-Clause
// Cursors by theme and by name: the registry of names, and which one was set last.
#include "platform/ui/Cursors.h"

#include <cstring>
#include <map>
#include <string>

#include <QGuiApplication>

#include "platform/ui/UIObject.h"
#include "platform/ui/Windows.h"
#include "platform/ui/cursors/MouseCursor.h"
#include "platform/ui/cursors/NamedCursor.h"
#include "platform/ui/cursors/PortImage.h"

namespace platform {
namespace {

constexpr std::size_t kMaxNameBytes = 127;

struct CursorState {
    std::map<std::string, NamedCursor, std::less<>> named;
    std::string currentName; // empty: the theme cursor
    ThemeCursor currentTheme = kThemeArrowCursor;
};

// Never destroyed: its pixmaps may outlive the application.
CursorState& State() {
    static auto* state = new CursorState;
    return *state;
}

NamedCursor* FindNamed(const char* name) {
    auto& named = State().named;
    const auto found = name ? named.find(name) : named.end();
    return found == named.end() ? nullptr : &found->second;
}

// Null unless the world can be a cursor.
QImage CursorImageOf(GWorldPtr world) {
    QImage image = ImageOfWorld(world);
    if (image.isNull() || image.width() > kMaxCursorSide || image.height() > kMaxCursorSide)
        return {};
    ClearSurround(image);
    return image;
}

bool ShowTheme(ThemeCursor theme) {
    MouseCursor& mouse = MouseCursor::The();
    switch (theme) {
    case kThemeArrowCursor:
        mouse.ShowArrow();
        return true;
    case kThemeIBeamCursor:
        mouse.Show(Qt::IBeamCursor);
        return true;
    case kThemeCrossCursor:
    case kThemePlusCursor: // a fat cross, which is none of the shapes that there are
        mouse.Show(Qt::CrossCursor);
        return true;
    case kThemeWatchCursor:
        mouse.ShowWatch();
        return true;
    case kThemePointingHandCursor:
        mouse.Show(Qt::PointingHandCursor);
        return true;
    default:
        return false;
    }
}

} // namespace

OSStatus SetThemeCursor(ThemeCursor cursor) {
    if (!EnsureUserInterface())
        return kErrNoUserInterface;
    if (!ShowTheme(cursor))
        return kParamErr;
    State().currentTheme = cursor;
    State().currentName.clear();
    return kNoErr;
}

OSStatus RegisterNamedPixMapCursor(GWorldPtr world, std::int16_t hotX, std::int16_t hotY,
                                   const char* name) {
    if (!name || std::strlen(name) > kMaxNameBytes || FindNamed(name))
        return kParamErr;
    QImage image = CursorImageOf(world);
    if (image.isNull())
        return kParamErr;
    State().named.try_emplace(name, std::move(image), QPoint(hotX, hotY));
    return kNoErr;
}

OSStatus AddNamedPixMapCursorDensity(GWorldPtr world, const char* name) {
    NamedCursor* const cursor = FindNamed(name);
    if (!cursor)
        return kErrNoSuchCursor;
    QImage image = CursorImageOf(world);
    return image.isNull() ? kParamErr : cursor->AddDensity(std::move(image));
}

bool IsNamedPixMapCursorRegistered(const char* name) {
    return FindNamed(name) != nullptr;
}

OSStatus SetNamedPixMapCursor(const char* name) {
    NamedCursor* const cursor = FindNamed(name);
    if (!cursor)
        return kErrNoSuchCursor;
    if (!EnsureUserInterface())
        return kErrNoUserInterface;
    MouseCursor& mouse = MouseCursor::The();
    const QWidget* const widget = mouse.Widget();
    mouse.Show(cursor->At(widget ? widget->devicePixelRatioF() : 1));
    State().currentName = name;
    return kNoErr;
}

const char* CurrentNamedCursor() {
    return State().currentName.c_str();
}

ThemeCursor CurrentThemeCursor() {
    return State().currentTheme;
}

} // namespace platform
