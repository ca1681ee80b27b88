// SPDX-License-Identifier: BSD-3-Clause
// The menus of reusable texts: registered ones, then those that were used before, then what can be
// done with them.
#include <cstring>
#include <string>

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/HostCalls.h"
#include "platform/TextEncoding.h"
#include "popup/CMEditPopupDlg.h"
#include "popup/CTextPopup.h"
#include "render/TextFields.h"

namespace {

constexpr auto kTexts = static_cast<std::int32_t>(kPopupEntries); // in each half of a list
constexpr std::int32_t kLock = 1000;
constexpr std::int32_t kClear = 1001;
constexpr std::int32_t kEdit = 1002;

using Texts = char[kPopupEntries][64];

// Its place from 1; 0 when it is not among them.
std::int32_t PlaceOf(const Texts& texts, std::string_view text) {
    for (std::int32_t i = 0; i < CTextPopup::CountEntries(texts); ++i)
        if (FieldText(texts[i]) == text)
            return i + 1;
    return 0;
}

void AppendTexts(HuxPopupButton& popup, const Texts& texts, std::int32_t firstRefCon) {
    const std::int32_t count = CTextPopup::CountEntries(texts);
    for (std::int32_t i = 0; i < count; ++i)
        popup.AppendItem(HuxString::FromUTF8(platform::DecodeText(FieldText(texts[i]))),
                         firstRefCon + i, platform::kMenuItemAttrIgnoreMeta);
    if (count > 0)
        popup.AppendSeparator();
}

} // namespace

void CMTextEditDlg::SetPopupInfoString(HuxPopupButton& popup, const _POPUPSTRING& list,
                                       const char* text) {
    popup.DeleteAllItems();
    AppendTexts(popup, list.szPreset, 0);
    AppendTexts(popup, list.szHistory, kTexts);
    popup.AppendItem(PluginText("IDS_INFOLOCK"), kLock);
    popup.AppendItem(PluginText("IDS_INFOCLEAR"), kClear);
    popup.AppendSeparator();
    popup.AppendItem(PluginText("IDS_INFOEDIT"), kEdit);
    SelectPopupInfoString(popup, list, text);
}

// The separator counts even where an empty registered half has none, and the lock's mark is renewed
// only for a text that is in neither half: menus of saved lists have always behaved so.
void CMTextEditDlg::SelectPopupInfoString(HuxPopupButton& popup, const _POPUPSTRING& list,
                                          const char* text) {
    const std::string_view wanted(text, strnlen(text, sizeof list.szPreset[0]));
    if (const std::int32_t place = PlaceOf(list.szPreset, wanted)) {
        popup.SetValue(place);
        return;
    }
    if (const std::int32_t place = PlaceOf(list.szHistory, wanted)) {
        popup.SetValue(CTextPopup::CountEntries(list.szPreset) + 1 + place);
        return;
    }
    popup.SetValue(0);
    SetPopupInfoLock(popup, list.bLock != 0);
}

void CMTextEditDlg::SetPopupInfoLock(HuxPopupButton& popup, bool locked) {
    popup.CheckItem(popup.FindLastItem(kLock), locked);
}

long CMTextEditDlg::DoPopupInfo(HuxPopupButton& popup, HuxEditText& field, ListOfTexts list,
                                ListedText text, long which) {
    char current[256] = {};
    field.GetText(current, sizeof current, false);
    _POPUPSTRING& texts = DialogParam().*list;
    const std::int32_t picked = popup.GetSelectRefCon().value_or(-1);
    if (picked >= 0 && picked < 2 * kTexts)
        return TakeText(field, texts, picked, text);
    if (picked == kLock) {
        texts.bLock = texts.bLock == 0 ? 1 : 0;
        SelectPopupInfoString(popup, texts, current);
    } else if (picked == kClear) {
        ClearHistory(popup, list, current);
    } else if (picked == kEdit) {
        EditList(popup, list, current, which);
    }
    return 0;
}

long CMTextEditDlg::TakeText(HuxEditText& field, const _POPUPSTRING& list, std::int32_t place,
                             ListedText text) {
    const LockedParam param(m_hostRecord);
    if (!param)
        return 0;
    const std::string taken(
        FieldText(place < kTexts ? list.szPreset[place] : list.szHistory[place - kTexts]));
    field.SetText(taken.c_str());
    auto& kept = (*param).*text;
    kept[taken.copy(kept, sizeof kept - 1)] = '\0';
    return 1;
}

// A host may end this dialog, or give it other memory for its settings, while a question is asked or a
// list is edited.
void CMTextEditDlg::ClearHistory(HuxPopupButton& popup, ListOfTexts list, const char* text) {
    const platform::Alive alive(*this);
    const bool isConfirmed = Ask("IDS_QUESTION_HISTORY_CLEAR", 1);
    if (!alive)
        return;
    _POPUPSTRING& texts = DialogParam().*list;
    if (!isConfirmed) {
        SelectPopupInfoString(popup, texts, text);
        return;
    }
    std::memset(texts.szHistory, 0, sizeof texts.szHistory);
    SetPopupInfoString(popup, texts, text);
}

void CMTextEditDlg::EditList(HuxPopupButton& popup, ListOfTexts list, const char* text,
                             long which) {
    const platform::Alive alive(*this);
    CMEditPopupDlg editor(&m_hostRecord, DialogParam().*list, which);
    const platform::WhileSet running(*this, m_pListEditor, &editor);
    const long result = editor.DoModal(nullptr);
    if (!alive)
        return;
    _POPUPSTRING& texts = DialogParam().*list;
    if (result != kHuxDialogOK) {
        SelectPopupInfoString(popup, texts, text);
        return;
    }
    texts = editor.GetList();
    SetPopupInfoString(popup, texts, text);
}
