// SPDX-License-Identifier: BSD-3-Clause
#include "popup/CMEditPopupDlg.h"

#include <cstring>
#include <memory>
#include <utility>

#include "dialogs/DialogCommand.h"
#include "dialogs/MessageBox.h"
#include "dialogs/PluginBundle.h"
#include "effect/CText.h"
#include "huxCommon/huxGUI/HuxGetFileDialog.h"
#include "huxCommon/huxGUI/HuxPutFileDialog.h"
#include "platform/TextEncoding.h"

namespace {

constexpr std::int32_t kList = 201;
constexpr std::int32_t kFirstButton = 101;
constexpr std::int32_t kLastButton = 108;
enum Button : std::uint32_t {
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
constexpr std::int32_t kTexts = 20;

HuxString TextAt(const _POPUPSTRING& list, std::int32_t index) {
    const char* text = list.szPreset[index];
    return HuxString::FromUTF8(
        platform::DecodeText({ text, strnlen(text, sizeof list.szPreset[index]) }));
}

void Swap(_POPUPSTRING& list, std::int32_t a, std::int32_t b) {
    std::swap(list.szPreset[a], list.szPreset[b]);
}

bool Ask(const char* key, long withCancel) {
    return MessageBox(PluginText(key), PluginText("IDS_FILTER"), withCancel);
}

template <class FileDialog>
void SetUp(FileDialog& dialog, std::uint32_t preference, platform::WindowRef parent) {
    dialog.SetPreferenceKey(preference);
    dialog.SetType(PluginText("IDS_FILTER_TEXT"), kFilePattern);
    dialog.SetParent(parent);
}

} // namespace

CMEditPopupDlg::CMEditPopupDlg(_EPIRECORD* record, _POPUPSTRING* list, _TEXT_DIALOG_PARAM* param,
                               long which)
    : m_pRecord(record), m_list(*list), m_pDialogParam(param),
      m_nWhich(static_cast<std::int32_t>(which)) {
    SetBundle(PluginBundle());
}

CMEditPopupDlg::~CMEditPopupDlg() = default;

const char* CMEditPopupDlg::GetNibName() {
    return "DialogSettings";
}

const char* CMEditPopupDlg::GetWindowName() {
    return "EditPopup";
}

void CMEditPopupDlg::_AttachControls() {
    for (std::int32_t id = kFirstButton; id <= kLastButton; ++id) {
        if (auto* const button =
                platform::Control::FindByID(GetWindowRef(), { kHuxPropertyCreator, id }))
            button->commandID = static_cast<std::uint32_t>(id);
    }
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
    HuxDialogImpl::EndDialog(code);
}

platform::OSStatus CMEditPopupDlg::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                          platform::EventRef event) {
    HuxDataBrowser::ItemDataRequest request {};
    if (HuxDataBrowser::ReadItemData(event, &request))
        return request.id.id == kList ? HandleDataBrowserData(request)
                                      : platform::kEventNotHandledErr;
    HuxDataBrowser::ItemNotification notification {};
    if (HuxDataBrowser::ReadNotification(event, &notification))
        return HandleDataBrowserNotify(notification);
    const auto command = dialogs::ControlCommandOf(event);
    if (!command || command->id < kAdd || command->id > kSave)
        return platform::kEventNotHandledErr;
    return HandleCommand(command->id, command->control, command->value);
}

platform::OSStatus CMEditPopupDlg::HandleCommand(std::uint32_t id, platform::ControlRef /*control*/,
                                                 long /*value*/) {
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
        RenameText();
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
    return platform::kNoErr;
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
        data.text = TextAt(m_list, row->Index()).GetUTF8();
    return platform::kNoErr;
}

platform::OSStatus
CMEditPopupDlg::HandleDataBrowserNotify(const HuxDataBrowser::ItemNotification& /*message*/) {
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
    m_nItemCount = 0;
    while (m_nItemCount < kTexts && m_list.szPreset[m_nItemCount][0] != '\0')
        m_listView.AddItem(std::make_unique<CMEditPopupListItem>(m_nItemCount++));
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
    Swap(m_list, row->Index(), to);
    m_listView.UpdateItems();
    if (const auto* moved = GetItemID(to))
        m_listView.SelectItem(*moved);
}

void CMEditPopupDlg::RenameText() {
    if (const auto* row = GetSelectItem())
        m_listView.EditItem(*row);
}

void CMEditPopupDlg::ResetList() {
    if (!Ask("IDS_QUESTION_RESET", 1))
        return;
    auto defaults = std::make_unique<_TEXT_DIALOG_PARAM>();
    CText::InitDialogParam(*defaults);
    m_list = m_nWhich == 1 ? defaults->infoPopup : defaults->characterPopup;
    CreateList();
    m_listView.UpdateItems();
}

// A file without texts, or one that is too large, is thrown as a number; the copy that it would have
// filled is dropped, so that the list stays as it was.
void CMEditPopupDlg::LoadList() {
    HuxGetFileDialog dialog;
    SetUp(dialog, kLoadPreference, GetWindowRef());
    const FSSpec* file = dialog.Run() ? dialog.GetFiles().GetAt(0) : nullptr;
    if (!file || !m_pRecord)
        return;
    _POPUPSTRING loaded = m_list;
    bool isLoaded = false;
    try {
        isLoaded = CText::OpenPopupString(m_pRecord, file, loaded.szPreset) != 0;
    } catch (std::int32_t) {
        isLoaded = false;
    }
    if (!isLoaded) {
        Ask("IDS_LIST_UNREADABLE", 0);
        return;
    }
    m_list = loaded;
    CreateList();
    m_listView.UpdateItems();
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
