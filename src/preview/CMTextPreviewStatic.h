// SPDX-License-Identifier: BSD-3-Clause
// The preview in the text edit dialog: shows the placement view's buffer and hands it the mouse and
// the arrow keys.
#pragma once

#include "huxCommon/huxGUI/HuxCarbonEventPatcherT.h"
#include "huxCommon/huxGUI/HuxControlImpl.h"

class CTextEditDlg;

class CMTextPreviewStatic : public HuxControlImpl {
public:
    // The view outlives this wrapper.
    explicit CMTextPreviewStatic(CTextEditDlg& view) : m_view(view) {}

    // Registers the cursors and follows the mouse over the window, until TermPreview.
    void InitPreview(platform::CFBundleRef bundle);
    void TermPreview();

    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    static platform::OSStatus s_HandlePatchEvent(platform::EventHandlerCallRef call,
                                                 platform::EventRef event, void* userData);
    platform::OSStatus HandlePatchEvent(platform::EventRef event);
    platform::OSStatus HandleDraw();
    platform::OSStatus HandleHitTest(platform::EventRef event);
    platform::OSStatus HandleTrack(platform::EventRef event);
    platform::OSStatus HandleKey(platform::EventRef event);
    platform::OSStatus HandleWheel(platform::EventRef event);

    CTextEditDlg& m_view;
    HuxCarbonEventPatcherT<CMTextPreviewStatic> m_patcher;
};
