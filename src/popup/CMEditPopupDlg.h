// SPDX-License-Identifier: BSD-3-Clause
// The editor of one list of reusable texts: add, delete, rename in place, order, reset, load, save. It
// works on a copy, which the caller takes over when the user presses OK.
#pragma once

#include <epi/epi.h>

#include "dialogs/PluginDialog.h"
#include "huxCommon/huxGUI/HuxDataBrowser.h"

// A row: the place of its text in the list.
class CMEditPopupListItem : public HuxDataBrowserItemData {
public:
    explicit CMEditPopupListItem(std::int32_t index) : m_nIndex(index) {}
    std::int32_t Index() const { return m_nIndex; }

private:
    std::int32_t m_nIndex;
};

class CMEditPopupDlg : public PluginDialog {
public:
    // The record outlives the dialog. which: 1 for the list of directions, 0 for that of characters;
    // a reset takes the defaults of that one.
    CMEditPopupDlg(_EPIRECORD* record, const _POPUPSTRING& list, long which)
        : PluginDialog("EditPopup"), m_pRecord(record), m_list(list), m_nWhich(which) {}

    // As it was edited.
    const _POPUPSTRING& GetList() const { return m_list; }

    void _AttachControls() override;
    bool HandleInitWindow() override;
    void EndDialog(long code) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    void HandleCommand(std::int32_t id);
    platform::OSStatus HandleDataBrowserData(const HuxDataBrowser::ItemDataRequest& request);
    CMEditPopupListItem* GetSelectItem() const;
    CMEditPopupListItem* GetItemID(std::int32_t index) const;
    void CreateList();
    void ReplaceList(const _POPUPSTRING& list);

    void AddText();
    void DeleteText();
    void MoveText(std::int32_t by);
    void ResetList();
    void LoadList();
    void SaveList();

    _EPIRECORD* m_pRecord; // null when the dialog has ended
    _POPUPSTRING m_list;
    long m_nWhich;
    HuxDataBrowser m_listView;
    // Rows shown; they are the texts before the first empty one, as CreateList found it. A text that
    // is renamed to nothing stays a row until then.
    std::int32_t m_nItemCount = 0;
};
