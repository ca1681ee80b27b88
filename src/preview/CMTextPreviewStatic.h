// SPDX-License-Identifier: BSD-3-Clause
// The preview in the text edit dialog: shows the placement view's buffer and hands it the mouse and
// the arrow keys.
#pragma once

#include "preview/PreviewControl.h"

class CTextEditDlg;

class CMTextPreviewStatic : public PreviewControl {
public:
    // The view outlives this wrapper.
    explicit CMTextPreviewStatic(CTextEditDlg& view) : m_view(view) {}

    // Registers the cursors and follows the mouse over the window, until TermPreview.
    void InitPreview(platform::CFBundleRef bundle) { FollowMouse(bundle); }
    void TermPreview() { LeaveMouse(); }

    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;
    platform::OSStatus HandleControlDraw(platform::EventRef event) override;
    platform::OSStatus HandleControlTrack(platform::EventRef event) override;
    platform::OSStatus HandleDispatcherEvent(platform::EventRef event) override;

private:
    platform::OSStatus HandleKey(platform::EventRef event);
    platform::OSStatus HandleWheel(platform::EventRef event);

    CTextEditDlg& m_view;
};
