// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxDialog.h"

using namespace platform;

namespace {

// What the parent of a half-modal dialog must not do meanwhile: close, or go away into an icon.
constexpr std::uint32_t kParentBoxes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
constexpr std::uint32_t kActivationScopeAll = 2;
constexpr std::uint32_t kMovableModalWindowClass = 4;

bool Is(EventRef event, OSType eventClass, std::uint32_t kind) {
    return GetEventClass(event) == eventClass && GetEventKind(event) == kind;
}

} // namespace

HuxDialog::~HuxDialog() {
    ReleaseParent();
}

const char* HuxDialog::GetWindowName() {
    return nullptr;
}

OSStatus HuxDialog::CreateDialog() {
    m_nRetCode = kHuxDialogCancel;
    const Alive alive(*this);
    const OSStatus status = CreateNibWindow(GetWindowName(), GetNibName(), GetBundle());
    if (!alive || status != kNoErr)
        return kParamErr;
    if (!IsInitFailed())
        return kNoErr;
    // The status of a handler that threw says nothing of it. A dialog that is half set up would only
    // fail again, so it ends as one that refused.
    SendEventInitializWindowError();
    if (alive)
        Dispose();
    return kParamErr;
}

bool HuxDialog::HandleInitWindow() {
    return HandleInitDialog();
}

bool HuxDialog::HandleInitDialog() {
    return OnInitDialog();
}

bool HuxDialog::OnInitDialog() {
    return true;
}

// Running modally --------------------------------------------------------------------------------

long HuxDialog::DoModal(WindowRef parent) {
    if (m_run != Run::kNone || IsValid())
        return kHuxDialogCancel;
    const Alive alive(*this);
    m_run = Run::kModal;
    if (CreateDialog() == kNoErr && alive)
        RunModal(parent);
    if (!alive)
        return kHuxDialogCancel;
    m_run = Run::kNone;
    Dispose();
    FocusFrontWindow();
    return alive ? m_nRetCode : kHuxDialogCancel;
}

// A dialog may end, or be ended, at every step; the loop of one that has ended would never return.
void HuxDialog::RunModal(WindowRef parent) {
    const Alive alive(*this);
    if (Window* const window = parent ? GetWindow() : nullptr)
        window->SetModality(kWindowModalityAppModal, Window::Find(parent));
    if (m_run == Run::kModal)
        ShowWindow();
    if (Window* const window = alive && m_run == Run::kModal ? GetWindow() : nullptr)
        window->RunModal();
    if (alive)
        HideWindow();
}

void HuxDialog::EndDialog(long code) {
    m_nRetCode = static_cast<std::int32_t>(code);
    if (m_fHalfModal) {
        EndHalfModal();
        return;
    }
    if (m_run == Run::kModal)
        m_run = Run::kEnded;
    if (Window* const window = GetWindow())
        window->QuitModal();
}

// Running half-modally ---------------------------------------------------------------------------

OSStatus HuxDialog::BeginHalfModal(WindowRef parent) {
    if (m_run != Run::kNone || IsValid())
        return kParamErr;
    const Alive alive(*this);
    m_run = Run::kModal;
    const OSStatus status = CreateDialog();
    if (!alive)
        return kParamErr;
    const bool ended = m_run == Run::kEnded;
    m_run = Run::kNone;
    if (status != kNoErr)
        return status;
    if (ended) {
        Dispose();
        return kNoErr;
    }
    TakeParent(parent ? Window::Find(parent) : FrontWindow());
    const WindowRef shown = m_hwnd;
    if (Window* const window = GetWindow()) {
        window->SetActivationScope(kActivationScopeAll);
        window->SetModality(kWindowModalityNone, nullptr);
        WindowGroup::OfClass(kMovableModalWindowClass).Add(*window);
        window->Show();
    }
    if (Window* const window = Window::Find(shown))
        window->TakeUserFocus();
    return kNoErr;
}

void HuxDialog::EndHalfModal() {
    if (!m_fHalfModal)
        return;
    const Alive alive(*this);
    const WindowRef parent = m_refParentWindow;
    ReleaseParent();
    HideWindow();
    if (alive)
        Dispose();
    if (Window* const window = Window::Find(parent))
        window->TakeUserFocus();
    else
        FocusFrontWindow();
}

void HuxDialog::TakeParent(Window* parent) {
    m_fHalfModal = true;
    m_refParentWindow = parent ? parent->Ref() : nullptr;
    m_uParentAttributes = parent ? parent->Attributes() : 0;
    if (parent)
        parent->ChangeAttributes(0, kParentBoxes);
}

void HuxDialog::ReleaseParent() {
    if (!m_fHalfModal)
        return;
    m_fHalfModal = false;
    if (Window* const parent = Window::Find(m_refParentWindow))
        parent->ChangeAttributes(m_uParentAttributes & kParentBoxes, 0);
    m_refParentWindow = nullptr;
}

// Events -----------------------------------------------------------------------------------------

OSStatus HuxDialog::Install(EventTargetRef target) {
    const OSStatus status = HuxWindowImplT::Install(target);
    constexpr EventTypeSpec kCommand { kEventClassCommand, kEventCommandProcess };
    const OSStatus own = InstallCarbonEventHandler(target, 1, &kCommand);
    return status == kNoErr ? own : status;
}

OSStatus HuxDialog::HandleEventCurrent(EventHandlerCallRef call, EventRef event) {
    const OSStatus status = HuxWindowImplT::HandleEventCurrent(call, event);
    if (status != kEventNotHandledErr || !GetCurrentObject())
        return status;
    if (Is(event, kHuxEventClassWindow, kHuxEventWindowInitializeError)) {
        EndDialog(kHuxDialogInitFailed);
        return kNoErr;
    }
    return Is(event, kEventClassCommand, kEventCommandProcess) ? HandleCommand(event) : status;
}

OSStatus HuxDialog::HandleEventEnd(EventHandlerCallRef call, EventRef event) {
    // However the window ends, its parent gets its boxes back.
    if (Is(event, kEventClassWindow, kEventWindowClosed))
        ReleaseParent();
    return HuxWindowImplT::HandleEventEnd(call, event);
}

OSStatus HuxDialog::HandleCommand(EventRef event) {
    std::uint32_t commandID = 0;
    HuxCarbonEvent(event, true).GetCommandParameter(&commandID, nullptr, nullptr, nullptr);
    if (commandID != kHICommandOK && commandID != kHICommandCancel)
        return kEventNotHandledErr;
    // A second click may arrive before the loop has returned from the first.
    if (m_run == Run::kEnded)
        return kNoErr;
    if (commandID == kHICommandOK)
        PressOK();
    else
        PressCancel();
    return kNoErr;
}

// Each step may end this object, or the dialog's run. Whether the object is there is asked first: no
// member of one that is gone may be called.
void HuxDialog::PressOK() {
    if (!CheckControlValue() || !GetCurrentObject() || m_run == Run::kEnded)
        return;
    if (HandleOKButton() && GetCurrentObject() && m_run != Run::kEnded)
        EndDialog(kHuxDialogOK);
}

void HuxDialog::PressCancel() {
    if (HandleCancelButton() && GetCurrentObject() && m_run != Run::kEnded)
        EndDialog(kHuxDialogCancel);
}

bool HuxDialog::HandleOKButton() {
    return OnOK();
}

bool HuxDialog::HandleCancelButton() {
    return OnCancel();
}

bool HuxDialog::OnOK() {
    return true;
}

bool HuxDialog::OnCancel() {
    return true;
}
