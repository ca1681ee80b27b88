// SPDX-License-Identifier: BSD-3-Clause
// What the previews have in common: a control that shows a buffer, is one part to the mouse, and hears
// of the mouse wherever it is over the control's window. Here as well: the cursors that previews show.
#pragma once

#include <optional>

#include <epi/epi.h>

#include "huxCommon/huxGUI/HuxCarbonEventPatcherT.h"
#include "huxCommon/huxGUI/HuxControlImpl.h"

inline constexpr const char* kArrowCursor = "arrowCursor";
inline constexpr const char* kWatchCursor = "watchCursor";
inline constexpr const char* kHandCursor = "CursorPreviewHand"; // over what can be panned
inline constexpr const char* kDragCursor = "CursorPreviewDrag"; // while it is

void SetPreviewCursor(const char* name);

// Where a view starts, on one axis, so that a place of it lies in the middle of the area, without
// showing more beyond its ends than there must be. Below 0 when the view is smaller than the area.
std::int32_t ScrollFor(long center, long area, long view);

class PreviewControl : public HuxControlImpl {
public:
    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;
    virtual platform::OSStatus HandleControlDraw(platform::EventRef event) = 0;
    virtual platform::OSStatus HandleControlTrack(platform::EventRef event) = 0;
    virtual platform::OSStatus HandleControlHitTest(platform::EventRef event);
    // An event of the mouse that the window has, while it is over this control.
    virtual platform::OSStatus HandleDispatcherEvent(platform::EventRef event) = 0;

protected:
    struct Size {
        long width, height;
        bool operator==(const Size&) const = default;
    };
    // Takes the two hands from the bundle's pictures, unless the process has them already, and
    // follows the mouse, until LeaveMouse or the end.
    void FollowMouse(platform::CFBundleRef bundle);
    void LeaveMouse() { m_dispatcher.Remove(); }

    Size ControlSize() const;
    // Null shows nothing.
    void DrawBuffer(platform::GWorldPtr buffer) const;
    // The place within the control of a mouse event of its window; none when it is not over it.
    std::optional<tagPOINT> MouseOver(platform::EventRef event) const;
    // The place of the desktop at which the button of a track event went down; none when the event
    // does not say.
    std::optional<platform::Point> PressedAt(platform::EventRef event) const;

private:
    static platform::OSStatus s_HandleDispatcherEvent(platform::EventHandlerCallRef call,
                                                      platform::EventRef event, void* userData);

    HuxCarbonEventPatcherT<PreviewControl> m_dispatcher;
};
