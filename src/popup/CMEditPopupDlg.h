// SPDX-License-Identifier: BSD-3-Clause
// The editor of one list of reusable texts: add, delete, rename in place, order, reset, load, save. It
// works on a copy, which the caller takes over when the user presses OK.
#pragma once

#include <epi/epi.h>

#include "huxCommon/huxGUI/HuxControlImpl.h"
#include "huxCommon/huxGUI/HuxDataBrowser.h"
#include "huxCommon/huxGUI/HuxDialogImpl.h"

// A row: the place of its text in the list.
class CMEditPopupListItem : public HuxDataBrowserItemData {
public:
    explicit CMEditPopupListItem(std::int32_t index) : m_nIndex(index) {}
    std::int32_t Index() const { return m_nIndex; }

private:
    std::int32_t m_nIndex;
};

class CMEditPopupDlg : public HuxDialogImpl {
public:
    // record and param outlive the dialog. which: 1 for the list of directions, 0 for that of
    // characters; a reset takes the defaults of that one.
    CMEditPopupDlg(_EPIRECORD* record, _POPUPSTRING* list, _TEXT_DIALOG_PARAM* param, long which);
    ~CMEditPopupDlg() override;

    // As it was edited.
    const _POPUPSTRING& GetList() const { return m_list; }

    const char* GetNibName() override;
    const char* GetWindowName() override;
    void _AttachControls() override;
    bool HandleInitWindow() override;
    void EndDialog(long code) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    platform::OSStatus HandleCommand(std::uint32_t id, platform::ControlRef control, long value);
    platform::OSStatus HandleDataBrowserData(const HuxDataBrowser::ItemDataRequest& request);
    platform::OSStatus HandleDataBrowserNotify(const HuxDataBrowser::ItemNotification& message);
    CMEditPopupListItem* GetSelectItem() const;
    CMEditPopupListItem* GetItemID(std::int32_t index) const;
    void CreateList();

    void AddText();
    void DeleteText();
    void MoveText(std::int32_t by);
    void RenameText();
    void ResetList();
    void LoadList();
    void SaveList();

    _EPIRECORD* m_pRecord; // null when the dialog has ended
    _POPUPSTRING m_list;
    _TEXT_DIALOG_PARAM* m_pDialogParam;
    std::int32_t m_nWhich;
    HuxDataBrowser m_listView;
    // Rows shown; they are the texts before the first empty one, as CreateList found it. A text that
    // is renamed to nothing stays a row until then.
    std::int32_t m_nItemCount = 0;
};
