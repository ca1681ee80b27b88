// SPDX-License-Identifier: BSD-3-Clause
// The settings panel: a summary of the text that frames get, and a button that opens the editor.
#pragma once

#include <epi/epi.h>

#include "dialogs/PluginDialog.h"
#include "huxCommon/huxGUI/HuxControlImpl.h"
#include "huxCommon/huxGUI/HuxScrollEditText.h"

class CMTextEditModalDlg;

class CMTextSettings : public PluginDialog {
public:
    CMTextSettings() : PluginDialog("Settings") {}
    ~CMTextSettings() override;

    // The panel's window, which the host embeds; null on failure. The record is copied.
    platform::WindowRef Create(_EPIRECORD* record);
    platform::OSStatus Update(_EPIRECORD* record);
    // Only an open editor shows the frame.
    void ReceiveCompositeImage(_EPIRECORD* record);
    void UpdateControls();
    // Ends the editor as well, when it runs.
    void Dispose() override;

    void _AttachControls() override;
    bool HandleInitWindow() override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    platform::OSStatus HandleButtonEdit();

    _EPIRECORD m_record {};                       // the last one that the host handed over
    CMTextEditModalDlg* m_pModalDialog = nullptr; // while one runs
    HuxControlImpl m_editButton;
    HuxScrollEditText m_summary;
};
