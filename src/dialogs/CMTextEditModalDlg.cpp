// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/CMTextEditModalDlg.h"

#include <algorithm>
#include <utility>

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/DialogCommand.h"
#include "dialogs/HostNotices.h"
#include "dialogs/PluginBundle.h"

namespace {

using platform::Rect;

constexpr platform::ControlID kOKButton { kHuxPropertyCreator, 1 };
constexpr platform::ControlID kCancelButton { kHuxPropertyCreator, 2 };
constexpr std::uint32_t kGroupAttributes = 0x1F; // everything together
constexpr std::uint32_t kActivationScopeAll = 2;
constexpr std::uint32_t kMovableModalClass = 4;
// Outside the visible area: nobody sees the buttons, but Return and Escape press them.
constexpr Rect kOutside { -100, -100, -90, -90 };

std::int16_t Width(const Rect& rect) {
    return static_cast<std::int16_t>(rect.right - rect.left);
}
std::int16_t Height(const Rect& rect) {
    return static_cast<std::int16_t>(rect.bottom - rect.top);
}

Rect ContentOf(platform::WindowRef window) {
    Rect bounds {};
    platform::GetWindowContentBounds(window, &bounds);
    return bounds;
}

platform::ControlRef AddHiddenButton(platform::WindowRef window, const platform::ControlID& id,
                                     std::uint32_t commandID) {
    platform::Control* const button = platform::Control::Create(window, "QPushButton", kOutside);
    if (!button)
        return nullptr;
    button->id = id;
    button->commandID = commandID;
    return button->Ref();
}

} // namespace

CMTextEditModalDlg::CMTextEditModalDlg() {
    SetBundle(PluginBundle());
    m_patcher.SetHandler(this, s_HandlePatchEvent);
}

CMTextEditModalDlg::~CMTextEditModalDlg() = default;

// A frame that ended in any other way than by EndDialog still has its editor.
long CMTextEditModalDlg::DoModal(platform::WindowRef parent) {
    const long result = HuxDialogImpl::DoModal(parent);
    EndEditor();
    return result;
}

const char* CMTextEditModalDlg::GetNibName() {
    return "DialogSettings";
}

const char* CMTextEditModalDlg::GetWindowName() {
    return "EditModal";
}

platform::OSStatus CMTextEditModalDlg::InstallSelf(platform::EventTargetRef target) {
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassWindow, platform::kEventWindowBoundsChanged },
    };
    return InstallCarbonEventHandler(target, std::size(types), types);
}

bool CMTextEditModalDlg::OnInitDialog() {
    m_announced = GetWindowRef();
    dialogs::ModalOpens(*m_pRecord, m_announced);
    if (!m_announced)
        return false; // the host has ended everything
    m_editor = std::make_unique<CMTextEditDlg>();
    if (m_editor->Create(m_pRecord))
        TieEditor();
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassCommand, platform::kEventCommandProcess },
    };
    m_patcher.InstallCarbonEventHandler(m_editor->GetEventTarget(), std::size(types), types);
    platform::RepositionWindow(GetWindowRef(), nullptr, platform::kWindowCenterOnMainScreen);
    dialogs::EditorOpened(*m_pRecord);
    return true;
}

void CMTextEditModalDlg::TieEditor() {
    SizeFrameForEditor();
    const platform::WindowRef editor = m_editor->GetWindowRef();
    const Rect frame = ContentOf(GetWindowRef());
    platform::MoveWindow(editor, frame.left, frame.top, false);
    JoinGroup();
    AddHiddenButtons();
    platform::ShowWindow(editor);
    FitEditor();
}

// The editor knows how large its form must be; the frame's form holds room for its own buttons.
void CMTextEditModalDlg::SizeFrameForEditor() {
    const Rect frame = ContentOf(GetWindowRef());
    const Rect editor = ContentOf(m_editor->GetWindowRef());
    const auto strip = static_cast<std::int16_t>(Height(frame) - EditorHeight());
    platform::SizeWindow(GetWindowRef(), std::max(Width(frame), Width(editor)),
                         static_cast<std::int16_t>(Height(editor) + strip));
}

// How far down the editor reaches: to the row of the frame's buttons.
std::int16_t CMTextEditModalDlg::EditorHeight() const {
    const auto* const button = platform::Control::FindByID(GetWindowRef(), kOKButton);
    return button ? button->Bounds().top : Height(ContentOf(GetWindowRef()));
}

void CMTextEditModalDlg::FitEditor() {
    if (m_editor && m_editor->IsValid())
        platform::SizeWindow(m_editor->GetWindowRef(), Width(ContentOf(GetWindowRef())),
                             EditorHeight());
}

void CMTextEditModalDlg::JoinGroup() {
    const platform::WindowRef editor = m_editor->GetWindowRef();
    if (!m_group.IsValid()) {
        m_group.Create(kGroupAttributes);
        m_group.SetParent(platform::GetWindowGroup(GetWindowRef()));
        m_group.Add(GetWindowRef());
    }
    platform::SetWindowModality(editor, platform::kWindowModalityWindowModal, nullptr);
    platform::SetWindowActivationScope(editor, kActivationScopeAll);
    platform::ChangeWindowAttributes(editor, platform::kWindowHasNoTitleBarAttribute, 0);
    platform::SetWindowGroup(editor, platform::GetWindowGroupOfClass(kMovableModalClass));
    platform::BringToFront(editor);
    m_group.Add(editor);
}

void CMTextEditModalDlg::AddHiddenButtons() {
    const platform::WindowRef editor = m_editor->GetWindowRef();
    platform::SetWindowDefaultButton(editor,
                                     AddHiddenButton(editor, kOKButton, platform::kHICommandOK));
    platform::SetWindowCancelButton(
        editor, AddHiddenButton(editor, kCancelButton, platform::kHICommandCancel));
}

platform::OSStatus CMTextEditModalDlg::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                              platform::EventRef event) {
    if (platform::GetEventClass(event) == platform::kEventClassWindow &&
        platform::GetEventKind(event) == platform::kEventWindowBoundsChanged)
        FitEditor();
    return platform::kEventNotHandledErr;
}

platform::OSStatus CMTextEditModalDlg::s_HandlePatchEvent(platform::EventHandlerCallRef,
                                                          platform::EventRef event,
                                                          void* userData) {
    return static_cast<CMTextEditModalDlg*>(userData)->HandlePatchEvent(event);
}

// Return and Escape in the editor are the frame's. They are posted, so that the editor is not ended
// while it handles the key.
platform::OSStatus CMTextEditModalDlg::HandlePatchEvent(platform::EventRef event) {
    const auto command = dialogs::ControlCommandOf(event);
    if (!command ||
        (command->id != platform::kHICommandOK && command->id != platform::kHICommandCancel))
        return platform::kEventNotHandledErr;
    HuxCarbonEvent::PostEventCommand(GetEventTarget(), command->id, 0);
    return platform::kNoErr;
}

bool CMTextEditModalDlg::OnOK() {
    return m_editor && m_editor->OnOK();
}

bool CMTextEditModalDlg::OnCancel() {
    return true;
}

void CMTextEditModalDlg::EndDialog(long code) {
    EndEditor();
    HuxDialogImpl::EndDialog(code);
}

void CMTextEditModalDlg::EndEditor() {
    m_patcher.Remove();
    if (const auto editor = std::move(m_editor))
        editor->Dispose();
    if (const platform::WindowRef frame = std::exchange(m_announced, nullptr))
        dialogs::ModalEnds(*m_pRecord, frame);
}
