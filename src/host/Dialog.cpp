// SPDX-License-Identifier: BSD-3-Clause
#include "host/Dialog.h"

#include <array>

#include "host/Message.h"

namespace host {

namespace {

void FillIn(_EPIRECORD& record, const Dialog::Frame& frame) {
    record.nFrameWidth = frame.width;
    record.nFrameHeight = frame.height;
    record.hComposite = frame.composite ? frame.composite->Ref() : nullptr;
    record.pPreviewSwitch = frame.previewSwitch;
    record.bInfoPresent = frame.strings ? 1 : 0;
    std::string cut; // a preview shows what fits
    for (std::size_t i = 0; frame.strings && i < frame.strings->size(); ++i)
        SetInfoString(record, i, (*frame.strings)[i], cut);
}

} // namespace

std::unique_ptr<Dialog> Dialog::Open(Effect& effect, DialogKind kind, const Frame& frame,
                                     std::string& why) {
    std::unique_ptr<Dialog> dialog(new Dialog(effect));
    auto& record = dialog->m_record;
    FillIn(record, frame);
    if (kind == DialogKind::kTextEdit)
        record.dwDialogFlags = EPI_DIALOG_TEXT_EDIT;
    if (!effect.ThePlugin().Run(epiCreateSettingDialog, record, why))
        return nullptr;
    if (record.hDialogWindow)
        return dialog;
    why = Printable(effect.ThePlugin().Bundle().native()) +
          ": made no window: its user interface is not installed or cannot run here";
    return nullptr;
}

Dialog::~Dialog() {
    // Without a holder there is nothing to destroy, and the selector must not come.
    std::string why;
    if (m_record.pDialogHolder)
        m_effect->ThePlugin().Run(epiDestroySettingDialog, m_record, why);
}

bool Dialog::Notify(std::int32_t code, std::string& why) {
    m_record.nNotifyCode = code;
    return m_effect->ThePlugin().Run(epiDialogNotify, m_record, why);
}

void Dialog::SetFrame(const Frame& frame) {
    FillIn(m_record, frame);
}

bool Dialog::NotifyComposite(Image* composite, std::string& why) {
    m_record.hComposite = composite ? composite->Ref() : nullptr;
    return Notify(epiNotifyCompositeImage, why);
}

} // namespace host
