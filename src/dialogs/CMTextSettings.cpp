// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/CMTextSettings.h"

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/CMTextEditModalDlg.h"
#include "dialogs/HostCalls.h"
#include "render/CTextRenderer.h"
#include "render/TextFields.h"

namespace {

constexpr std::int32_t kEditButton = 101;
constexpr std::int32_t kSummary = 201;
constexpr std::size_t kSummarySize = 1024;

} // namespace

CMTextSettings::~CMTextSettings() {
    CMTextSettings::Dispose();
    m_summary.Detach();
    m_editButton.Detach();
}

platform::WindowRef CMTextSettings::Create(_EPIRECORD* record) {
    m_record = *record;
    if (CreateNibWindow(GetWindowName(), GetNibName(), GetBundle()) != platform::kNoErr)
        return nullptr;
    return GetWindowRef();
}

// The editor works with this object's record, so it does not outlive it.
void CMTextSettings::Dispose() {
    if (m_pModalDialog)
        m_pModalDialog->EndDialog(kHuxDialogCancel);
    PluginDialog::Dispose();
}

void CMTextSettings::_AttachControls() {
    AttachControl(m_editButton, kEditButton);
    AttachControl(m_summary, kSummary);
}

bool CMTextSettings::HandleInitWindow() {
    m_summary.SetReadOnly(true);
    m_summary.SetWrap(true);
    UpdateControls();
    return true;
}

platform::OSStatus CMTextSettings::Update(_EPIRECORD* record) {
    m_record = *record;
    UpdateControls();
    return platform::kNoErr;
}

void CMTextSettings::ReceiveCompositeImage(_EPIRECORD* record) {
    m_record = *record;
    if (!m_pModalDialog || !m_pModalDialog->IsValid())
        return;
    if (CMTextEditDlg* editor = m_pModalDialog->Editor())
        editor->ReceiveCompositeImage(record);
}

// The text as the frames get it, so that a score line shows its numbers.
void CMTextSettings::UpdateControls() {
    const LockedParam param(m_record);
    if (!param)
        return;
    _TEXTPARAM text = render::TerminatedCopy(*param);
    const render::InfoStrings infos(m_record);
    char summary[kSummarySize] = {};
    CTextRenderer::GetTextInfoText(&text, summary, sizeof summary, infos.Present(0),
                                   infos.Present(1), infos.Present(2), infos.Present(3));
    m_summary.SetText(summary);
}

platform::OSStatus CMTextSettings::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                          platform::EventRef event) {
    const auto command = ControlCommandOf(event);
    return command && command->id == kEditButton ? HandleButtonEdit()
                                                 : platform::kEventNotHandledErr;
}

platform::OSStatus CMTextSettings::HandleButtonEdit() {
    if (m_pModalDialog)
        return platform::kNoErr;
    CMTextEditModalDlg dialog;
    dialog.SetRecord(&m_record);
    const platform::Alive alive(*this);
    const platform::WhileSet running(*this, m_pModalDialog, &dialog);
    if (dialog.DoModal(nullptr) == kHuxDialogOK && alive)
        UpdateControls();
    return platform::kNoErr;
}
