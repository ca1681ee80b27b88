// SPDX-License-Identifier: BSD-3-Clause
#include "popup/CMEditPopupDlg.h"

#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "effect/CText.h"
#include "huxCommon/huxGUI/HuxFileDialog.h"
#include "platform/TextContext.h"
#include "platform/TextEncoding.h"
#include "popup/CTextPopup.h"
#include "render/TextFields.h"

namespace {

constexpr std::int32_t kList = 201;
enum Button : std::int32_t {
    kAdd = 101,
    kDelete,
    kUp,
    kDown,
    kRename,
    kReset,
    kLoad,
    kSave,
};

constexpr platform::DataBrowserPropertyID kName = 0x4E616D65; // "Name"
constexpr std::uint32_t kLoadPreference = 10001;
constexpr std::uint32_t kSavePreference = 10002;
constexpr char kFilePattern[] = "*.txt";
constexpr auto kTexts = static_cast<std::int32_t>(kPopupEntries);

// One type of files is the editor's own. The platform's dialog has a second entry for all files, and
// it stays: a list that another system wrote need not have the ending that stands for texts here.
template <class FileDialog>
void SetUp(FileDialog& dialog, std::uint32_t preference, platform::WindowRef parent) {
    dialog.SetPreferenceKey(preference);
    dialog.SetType(PluginText("IDS_FILTER_TEXT"), kFilePattern);
    dialog.SetParent(parent);
}

// The text that says what came in otherwise than its user will have meant; null for nothing.
const char* WarningAbout(const _POPUPSTRING& list) {
    platform::TextContext met;
    const platform::TextScope scope(met);
    bool hasLineFeed = false;
    const std::int32_t count = CTextPopup::CountEntries(list.szPreset);
    for (std::int32_t i = 0; i < count; ++i) {
        const auto text = FieldText(list.szPreset[i]);
        hasLineFeed = hasLineFeed || text.find('\n') != std::string_view::npos;
        platform::DecodeText(text);
    }
    if (!met.Reports().empty())
        return "IDS_LIST_NOT_TEXT";
    return hasLineFeed ? "IDS_LIST_LINE_FEEDS" : nullptr;
}

} // namespace

void CMEditPopupDlg::_AttachControls() {
    for (std::int32_t id = kAdd; id <= kSave; ++id)
        if (auto* const button =
                platform::Control::FindByID(GetWindowRef(), { kHuxPropertyCreator, id }))
            button->commandID = static_cast<std::uint32_t>(id);
    AttachControl(m_listView, kList);
}

bool CMEditPopupDlg::HandleInitWindow() {
    m_listView.InstallCallbacks(kName);
    CreateList();
    return true;
}

// Who ran it may have ended it, and be gone with the record, while a file is being chosen.
void CMEditPopupDlg::EndDialog(long code) {
    m_pRecord = nullptr;
    PluginDialog::EndDialog(code);
}

platform::OSStatus CMEditPopupDlg::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                          platform::EventRef event) {
    HuxDataBrowser::ItemDataRequest request {};
    if (HuxDataBrowser::ReadItemData(event, &request))
        return request.id.id == kList ? HandleDataBrowserData(request)
                                      : platform::kEventNotHandledErr;
    const auto command = ControlCommandOf(event);
    const auto id = command ? static_cast<std::int32_t>(command->id) : 0;
    if (id < kAdd || id > kSave)
        return platform::kEventNotHandledErr;
    HandleCommand(id);
    return platform::kNoErr;
}

void CMEditPopupDlg::HandleCommand(std::int32_t id) {
    m_listView.CheckControlValue(); // what is typed in a row belongs to it before it moves
    switch (id) {
    case kAdd:
        AddText();
        break;
    case kDelete:
        DeleteText();
        break;
    case kUp:
        MoveText(-1);
        break;
    case kDown:
        MoveText(1);
        break;
    case kRename:
        if (const auto* row = GetSelectItem())
            m_listView.EditItem(*row);
        break;
    case kReset:
        ResetList();
        break;
    case kLoad:
        LoadList();
        break;
    default:
        SaveList();
        break;
    }
}

platform::OSStatus
CMEditPopupDlg::HandleDataBrowserData(const HuxDataBrowser::ItemDataRequest& request) {
    const auto* row = dynamic_cast<const CMEditPopupListItem*>(request.row);
    if (!row)
        return platform::kEventNotHandledErr;
    platform::DataBrowserItemData& data = *request.itemData;
    auto& entry = m_list.szPreset[row->Index()];
    if (request.property == platform::kDataBrowserItemIsEditableProperty)
        data.boolean = true;
    else if (request.property != kName)
        return platform::kEventNotHandledErr;
    else if (request.setValue)
        HuxString::FromUTF8(data.text).GetCString(entry, sizeof entry);
    else
        data.text = platform::DecodeText(FieldText(entry));
    return platform::kNoErr;
}

CMEditPopupListItem* CMEditPopupDlg::GetSelectItem() const {
    return dynamic_cast<CMEditPopupListItem*>(m_listView.GetSelectItem());
}

CMEditPopupListItem* CMEditPopupDlg::GetItemID(std::int32_t index) const {
    const auto hasIndex = [index](const HuxDataBrowserItemData& item) {
        const auto* row = dynamic_cast<const CMEditPopupListItem*>(&item);
        return row && row->Index() == index;
    };
    return dynamic_cast<CMEditPopupListItem*>(m_listView.FindItem(hasIndex));
}

void CMEditPopupDlg::CreateList() {
    m_listView.RemoveAllItems();
    m_nItemCount = CTextPopup::CountEntries(m_list.szPreset);
    for (std::int32_t i = 0; i < m_nItemCount; ++i)
        m_listView.AddItem(std::make_unique<CMEditPopupListItem>(i));
}

void CMEditPopupDlg::ReplaceList(const _POPUPSTRING& list) {
    m_list = list;
    CreateList();
    m_listView.UpdateItems();
}

void CMEditPopupDlg::AddText() {
    if (m_nItemCount >= kTexts) {
        Ask("IDS_ATTENSION_ADDITEM", 0);
        return;
    }
    auto& entry = m_list.szPreset[m_nItemCount];
    PluginText("IDS_NEWITEM").GetCString(entry, sizeof entry);
    const auto* row = m_listView.AddItem(std::make_unique<CMEditPopupListItem>(m_nItemCount));
    ++m_nItemCount;
    if (!row)
        return;
    m_listView.SelectItem(*row);
    m_listView.EditItem(*row);
}

// The rows show texts by their places, so the last row is the one that goes.
void CMEditPopupDlg::DeleteText() {
    const auto* row = GetSelectItem();
    if (!row)
        return;
    for (std::int32_t i = row->Index(); i + 1 < m_nItemCount; ++i)
        std::memcpy(m_list.szPreset[i], m_list.szPreset[i + 1], sizeof m_list.szPreset[i]);
    --m_nItemCount;
    m_list.szPreset[m_nItemCount][0] = '\0';
    m_listView.RemoveItem(GetItemID(m_nItemCount));
    m_listView.UpdateItems();
}

void CMEditPopupDlg::MoveText(std::int32_t by) {
    const auto* row = GetSelectItem();
    if (!row || row->Index() + by < 0 || row->Index() + by >= m_nItemCount)
        return;
    const std::int32_t to = row->Index() + by;
    std::swap(m_list.szPreset[row->Index()], m_list.szPreset[to]);
    m_listView.UpdateItems();
    if (const auto* moved = GetItemID(to))
        m_listView.SelectItem(*moved);
}

void CMEditPopupDlg::ResetList() {
    if (!Ask("IDS_QUESTION_RESET", 1))
        return;
    auto defaults = std::make_unique<_TEXT_DIALOG_PARAM>();
    CText::InitDialogParam(*defaults);
    ReplaceList(m_nWhich == 1 ? defaults->infoPopup : defaults->characterPopup);
}

// A file without texts, or one that is too large, is thrown as a number; the copy that it would have
// filled is dropped, so that the list stays as it was.
void CMEditPopupDlg::LoadList() {
    HuxGetFileDialog dialog;
    SetUp(dialog, kLoadPreference, GetWindowRef());
    if (!dialog.Run() || !m_pRecord)
        return;
    const FSSpec file = dialog.GetFile();
    _POPUPSTRING loaded = m_list;
    bool isLoaded = false;
    try {
        isLoaded = CText::OpenPopupString(m_pRecord, &file, loaded.szPreset) != 0;
    } catch (std::int32_t) {
        isLoaded = false;
    }
    if (!isLoaded) {
        Ask("IDS_LIST_UNREADABLE", 0);
        return;
    }
    ReplaceList(loaded);
    if (const char* const warning = WarningAbout(loaded))
        Ask(warning, 0);
}

void CMEditPopupDlg::SaveList() {
    if (m_nItemCount < 1)
        return;
    HuxPutFileDialog dialog;
    SetUp(dialog, kSavePreference, GetWindowRef());
    if (!dialog.Run() || !m_pRecord)
        return;
    const FSSpec file = dialog.GetFile();
    if (CText::SavePopupString(m_pRecord, &file, m_list.szPreset) == 0)
        Ask("IDS_LIST_UNWRITABLE", 0);
}
