// SPDX-License-Identifier: BSD-3-Clause
// The menus of reusable texts: registered ones, then those that were used before, then what can be
// done with them.
#include <cstring>
#include <string>

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/LockedParam.h"
#include "dialogs/MessageBox.h"
#include "dialogs/PluginBundle.h"
#include "platform/TextEncoding.h"
#include "popup/CMEditPopupDlg.h"

namespace {

constexpr std::int32_t kTexts = 20; // in each half of a list
constexpr std::int32_t kLock = 1000;
constexpr std::int32_t kClear = 1001;
constexpr std::int32_t kEdit = 1002;

using Texts = char[kTexts][64];

// How many there are before the first empty one.
std::int32_t CountTexts(const Texts& texts) {
    std::int32_t count = 0;
    while (count < kTexts && texts[count][0] != '\0')
        ++count;
    return count;
}

std::string_view TextAt(const Texts& texts, std::int32_t index) {
    return { texts[index], strnlen(texts[index], sizeof texts[index]) };
}

HuxString StringAt(const Texts& texts, std::int32_t index) {
    return HuxString::FromUTF8(platform::DecodeText(TextAt(texts, index)));
}

// Its place from 1; 0 when it is not among them.
std::int32_t PlaceOf(const Texts& texts, std::string_view text) {
    for (std::int32_t i = 0; i < CountTexts(texts); ++i) {
        if (TextAt(texts, i) == text)
            return i + 1;
    }
    return 0;
}

void AppendTexts(HuxPopupButton& popup, const Texts& texts, std::int32_t firstRefCon) {
    const std::int32_t count = CountTexts(texts);
    for (std::int32_t i = 0; i < count; ++i)
        popup.AppendItem(StringAt(texts, i), firstRefCon + i, platform::kMenuItemAttrIgnoreMeta);
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
        popup.SetValue(CountTexts(list.szPreset) + 1 + place);
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
    const std::int32_t picked = popup.GetSelectRefCon().value_or(-1);
    if (picked >= 0 && picked < 2 * kTexts)
        return TakeText(field, DialogParam().*list, picked, text);
    if (picked == kLock)
        ToggleLock(popup, DialogParam().*list, current);
    else if (picked == kClear)
        ClearHistory(popup, list, current);
    else if (picked == kEdit)
        EditList(popup, list, current, which);
    return 0;
}

long CMTextEditDlg::TakeText(HuxEditText& field, const _POPUPSTRING& list, std::int32_t place,
                             ListedText text) {
    const LockedParam param(m_hostRecord);
    if (!param)
        return 0;
    const std::string taken(place < kTexts ? TextAt(list.szPreset, place)
                                           : TextAt(list.szHistory, place - kTexts));
    field.SetText(taken.c_str());
    auto& kept = (*param).*text;
    kept[taken.copy(kept, sizeof kept - 1)] = '\0';
    return 1;
}

void CMTextEditDlg::ToggleLock(HuxPopupButton& popup, _POPUPSTRING& list, const char* text) {
    list.bLock = list.bLock == 0 ? 1 : 0;
    SelectPopupInfoString(popup, list, text);
}

// A host may end this dialog, or give it other memory for its settings, while a question is asked or a
// list is edited.
void CMTextEditDlg::ClearHistory(HuxPopupButton& popup, ListOfTexts list, const char* text) {
    const platform::Alive alive(*this);
    const bool isConfirmed =
        MessageBox(PluginText("IDS_QUESTION_HISTORY_CLEAR"), PluginText("IDS_FILTER"), 1);
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
    CMEditPopupDlg editor(&m_hostRecord, &(DialogParam().*list), &DialogParam(), which);
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
