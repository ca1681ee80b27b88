// SPDX-License-Identifier: BSD-3-Clause
// The three calls by which a host opens, feeds and closes the plug-in's user interface, in the table
// that the effect's own module looks for. They come in this order: create, notify any number of times,
// destroy. User-interface thread only.
#include <memory>

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/CMTextSettings.h"
#include "dialogs/HostCalls.h"
#include "effect/UIModule.h"

namespace {

enum DialogKind : std::int32_t { kSettingsPanel = 1, kTextEdit = 2 };

// What pDialogHolder points to. The plug-in's, from creation to destruction.
struct DialogHolder {
    std::int32_t nKind;
    HuxDialogImpl* pDialog; // owned; a CMTextSettings or a CMTextEditDlg, by nKind
};

DialogHolder& HolderOf(const _EPIRECORD& record) {
    return *static_cast<DialogHolder*>(record.pDialogHolder);
}

template <class Dialog>
Dialog& DialogOf(const DialogHolder& holder) {
    return *static_cast<Dialog*>(holder.pDialog);
}

// The record knows the dialog before its window is made.
template <class Dialog>
Dialog& Hold(_EPIRECORD& record, DialogKind kind) {
    auto dialog = std::make_unique<Dialog>();
    Dialog& held = *dialog;
    auto holder = std::make_unique<DialogHolder>(DialogHolder { kind, dialog.get() });
    record.pDialogHolder = holder.release();
    dialog.release(); // NOLINT(bugprone-unused-return-value): the holder has it
    return held;
}

void NotifyTextEdit(CMTextEditDlg& dialog, _EPIRECORD& record) {
    if (record.nNotifyCode == epiNotifyOK)
        record.nNotifyResult = dialog.OnOK() ? 1 : 0;
    else if (record.nNotifyCode == epiNotifyCompositeImage)
        dialog.ReceiveCompositeImage(&record);
}

void NotifySettings(CMTextSettings& panel, _EPIRECORD& record) {
    if (record.nNotifyCode == epiNotifyUpdate)
        panel.Update(&record);
    else if (record.nNotifyCode == epiNotifyCompositeImage)
        panel.ReceiveCompositeImage(&record);
}

// The text edit dialog when bit 0 of dwDialogFlags is set, else the settings panel. The record's
// hDialogWindow is null when no window could be made.
long CreateSettingDialog(_EPIRECORD* record) {
    if ((record->dwDialogFlags & EPI_DIALOG_TEXT_EDIT) != 0) {
        record->hDialogWindow = Hold<CMTextEditDlg>(*record, kTextEdit).Create(record);
        TellEditorOpened(*record);
    } else {
        record->hDialogWindow = Hold<CMTextSettings>(*record, kSettingsPanel).Create(record);
    }
    return 0;
}

// An update means nothing to the text edit dialog, which edits the parameters themselves, and OK
// nothing to the panel, which has no OK.
long DialogNotify(_EPIRECORD* record) {
    const DialogHolder& holder = HolderOf(*record);
    if (holder.nKind == kTextEdit)
        NotifyTextEdit(DialogOf<CMTextEditDlg>(holder), *record);
    else
        NotifySettings(DialogOf<CMTextSettings>(holder), *record);
    return 0;
}

long DestroySettingDialog(_EPIRECORD* record) {
    const std::unique_ptr<DialogHolder> holder(&HolderOf(*record));
    const std::unique_ptr<HuxDialogImpl> dialog(holder->pDialog);
    // Also when the host throws out of what it is told meanwhile, there is no dialog any more.
    record->pDialogHolder = nullptr;
    record->hDialogWindow = nullptr;
    dialog->Dispose();
    return 0;
}

} // namespace

extern "C" const UIModuleTable TextOverlayUI = {
    sizeof(UIModuleTable),
    CreateSettingDialog,
    DialogNotify,
    DestroySettingDialog,
};
