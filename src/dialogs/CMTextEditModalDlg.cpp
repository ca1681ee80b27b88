// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/CMTextEditModalDlg.h"

#include <algorithm>
#include <utility>

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/HostCalls.h"

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
    const platform::Window* const found = platform::Window::Find(window);
    return found ? found->ContentBounds() : Rect {};
}

platform::ControlRef AddHiddenButton(platform::WindowRef window, const platform::ControlID& id,
                                     std::uint32_t commandID, const char* title) {
    platform::Control* const button = platform::Control::Create(window, "QPushButton", kOutside);
    if (!button)
        return nullptr;
    button->id = id;
    button->commandID = commandID;
    button->SetTitle(PluginText(title).GetUTF8());
    return button->Ref();
}

} // namespace

CMTextEditModalDlg::CMTextEditModalDlg() : PluginDialog("EditModal") {
    m_patcher.SetHandler(this, s_HandlePatchEvent);
}

CMTextEditModalDlg::~CMTextEditModalDlg() = default;

// A frame that ended in any other way than by EndDialog still has its editor.
long CMTextEditModalDlg::DoModal(platform::WindowRef parent) {
    const long result = PluginDialog::DoModal(parent);
    EndEditor();
    return result;
}

platform::OSStatus CMTextEditModalDlg::InstallSelf(platform::EventTargetRef target) {
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassWindow, platform::kEventWindowBoundsChanged },
    };
    return InstallCarbonEventHandler(target, std::size(types), types);
}

bool CMTextEditModalDlg::OnInitDialog() {
    m_announced = GetWindowRef();
    if (const auto opens = FindEntry(m_pRecord->pWindowProcs, &EPIWindowProcs::ModalOpens))
        opens(m_announced);
    if (!m_announced)
        return false; // the host has ended everything
    m_editor = std::make_unique<CMTextEditDlg>();
    if (const platform::WindowRef editor = m_editor->Create(m_pRecord))
        TieEditor(editor);
    if (!m_editor)
        return false; // as above, while windows came up; the record is gone as well
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassCommand, platform::kEventCommandProcess },
    };
    m_patcher.InstallCarbonEventHandler(m_editor->GetEventTarget(), std::size(types), types);
    if (platform::Window* const frame = GetWindow())
        frame->CenterOnMainScreen();
    TellEditorOpened(*m_pRecord);
    return true;
}

// The editor may be ended at every step, so it is known by its window alone.
void CMTextEditModalDlg::TieEditor(platform::WindowRef editor) {
    SizeFrameForEditor(editor);
    const Rect frame = ContentOf(GetWindowRef());
    if (platform::Window* const window = platform::Window::Find(editor))
        window->MoveTo(frame.left, frame.top);
    JoinGroup(editor);
    AddHiddenButtons(editor);
    if (platform::Window* const window = platform::Window::Find(editor))
        window->Show();
    FitEditor();
}

// The editor knows how large its form must be; the frame's form holds room for its own buttons.
void CMTextEditModalDlg::SizeFrameForEditor(platform::WindowRef editor) {
    const Rect frame = ContentOf(GetWindowRef());
    const Rect form = ContentOf(editor);
    const auto strip = static_cast<std::int16_t>(Height(frame) - EditorHeight());
    if (platform::Window* const window = GetWindow())
        window->Resize(std::max(Width(frame), Width(form)),
                       static_cast<std::int16_t>(Height(form) + strip));
}

// How far down the editor reaches: to the row of the frame's buttons.
std::int16_t CMTextEditModalDlg::EditorHeight() const {
    const auto* const button = platform::Control::FindByID(GetWindowRef(), kOKButton);
    return button ? button->Bounds().top : Height(ContentOf(GetWindowRef()));
}

void CMTextEditModalDlg::FitEditor() {
    if (platform::Window* const editor = m_editor ? m_editor->GetWindow() : nullptr)
        editor->Resize(Width(ContentOf(GetWindowRef())), EditorHeight());
}

void CMTextEditModalDlg::JoinGroup(platform::WindowRef editor) {
    if (!m_group.IsValid()) {
        m_group.Create(kGroupAttributes);
        m_group.Add(GetWindowRef());
    }
    if (platform::Window* const window = platform::Window::Find(editor)) {
        window->SetModality(platform::kWindowModalityWindowModal, nullptr);
        window->SetActivationScope(kActivationScopeAll);
        window->ChangeAttributes(platform::kWindowHasNoTitleBarAttribute, 0);
        platform::WindowGroup::OfClass(kMovableModalClass).Add(*window);
        window->BringToFront();
    }
    m_group.Add(editor);
}

void CMTextEditModalDlg::AddHiddenButtons(platform::WindowRef editor) {
    platform::Window* const window = platform::Window::Find(editor);
    if (!window)
        return;
    window->SetDefaultButton(platform::Control::Find(
        AddHiddenButton(editor, kOKButton, platform::kHICommandOK, "IDS_OK")));
    window->SetCancelButton(platform::Control::Find(
        AddHiddenButton(editor, kCancelButton, platform::kHICommandCancel, "IDS_CANCEL")));
}

platform::OSStatus CMTextEditModalDlg::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                              platform::EventRef event) {
    if (platform::GetEventClass(event) == platform::kEventClassWindow &&
        platform::GetEventKind(event) == platform::kEventWindowBoundsChanged)
        FitEditor();
    return platform::kEventNotHandledErr;
}

// Return and Escape in the editor are the frame's. They are posted, so that the editor is not ended
// while it handles the key.
platform::OSStatus CMTextEditModalDlg::s_HandlePatchEvent(platform::EventHandlerCallRef,
                                                          platform::EventRef event,
                                                          void* userData) {
    const auto command = ControlCommandOf(event);
    if (!command ||
        (command->id != platform::kHICommandOK && command->id != platform::kHICommandCancel))
        return platform::kEventNotHandledErr;
    HuxCarbonEvent::PostEventCommand(static_cast<CMTextEditModalDlg*>(userData)->GetEventTarget(),
                                     command->id, 0);
    return platform::kNoErr;
}

bool CMTextEditModalDlg::OnOK() {
    return m_editor && m_editor->OnOK();
}

void CMTextEditModalDlg::EndDialog(long code) {
    EndEditor();
    PluginDialog::EndDialog(code);
}

void CMTextEditModalDlg::EndEditor() {
    m_patcher.Remove();
    if (const auto editor = std::move(m_editor))
        editor->Dispose();
    const platform::WindowRef frame = std::exchange(m_announced, nullptr);
    if (!frame)
        return;
    if (const auto ends = FindEntry(m_pRecord->pWindowProcs, &EPIWindowProcs::ModalEnds))
        ends(frame);
}
