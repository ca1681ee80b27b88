// SPDX-License-Identifier: BSD-3-Clause
// Runs the text edit dialog modally: a frame with OK and Cancel, over which the editor's own window
// lies, tied to it.
#pragma once

#include <memory>

#include <epi/epi.h>

#include "dialogs/PluginDialog.h"
#include "huxCommon/huxGUI/HuxCarbonEventPatcherT.h"
#include "huxCommon/huxGUI/HuxWindowGroup.h"

class CMTextEditDlg;

class CMTextEditModalDlg : public PluginDialog {
public:
    CMTextEditModalDlg();
    ~CMTextEditModalDlg() override;
    long DoModal(platform::WindowRef parent) override;

    // Before DoModal; must outlive the run.
    void SetRecord(_EPIRECORD* record) { m_pRecord = record; }
    CMTextEditDlg* Editor() const { return m_editor.get(); } // null unless it runs

    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;
    bool OnInitDialog() override;
    bool OnOK() override;
    void EndDialog(long code) override;

private:
    static platform::OSStatus s_HandlePatchEvent(platform::EventHandlerCallRef call,
                                                 platform::EventRef event, void* userData);
    void TieEditor(platform::WindowRef editor);
    void SizeFrameForEditor(platform::WindowRef editor);
    std::int16_t EditorHeight() const;
    void FitEditor();
    void JoinGroup(platform::WindowRef editor);
    void AddHiddenButtons(platform::WindowRef editor);
    void EndEditor();

    _EPIRECORD* m_pRecord = nullptr;
    std::unique_ptr<CMTextEditDlg> m_editor;
    HuxWindowGroup m_group;
    HuxCarbonEventPatcherT<CMTextEditModalDlg> m_patcher;
    platform::WindowRef m_announced = nullptr; // the frame, from when the host hears of it
};
