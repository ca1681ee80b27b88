// SPDX-License-Identifier: BSD-3-Clause
// The dialog's window and its events; what they set off lies in the files beside this one.
#include "dialogs/CMTextEditDlg.h"

#include <memory>

#include "dialogs/DialogCommand.h"
#include "dialogs/PluginBundle.h"
#include "dialogs/TextEditControls.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "popup/CMEditPopupDlg.h"

namespace {

constexpr long kTextChanged = 1; // what an edit field says of typing
constexpr long kZoomStep = 10;   // per cent

// Takes the window's default button away while it lives.
class WithoutDefaultButton {
public:
    WithoutDefaultButton(platform::WindowRef window, platform::ControlRef button)
        : m_window(window), m_button(button) {
        platform::SetWindowDefaultButton(m_window, nullptr);
    }
    WithoutDefaultButton(const WithoutDefaultButton&) = delete;
    WithoutDefaultButton& operator=(const WithoutDefaultButton&) = delete;
    ~WithoutDefaultButton() { platform::SetWindowDefaultButton(m_window, m_button); }

private:
    platform::WindowRef m_window;
    platform::ControlRef m_button;
};

bool IsEditField(std::uint32_t id) {
    return id == dialogs::kSizeField || id == dialogs::kOpacityField || id == dialogs::kInfoField ||
           id == dialogs::kCharacterField || id == dialogs::kDialogueField;
}

} // namespace

CMTextEditDlg::CMTextEditDlg() : CTextEditDlg(dialogs::kPreview), m_preview(*this) {
    SetBundle(PluginBundle());
}

CMTextEditDlg::~CMTextEditDlg() {
    CMTextEditDlg::Dispose();
}

const char* CMTextEditDlg::GetNibName() {
    return "DialogSettings";
}

const char* CMTextEditDlg::GetWindowName() {
    return "Edit";
}

platform::WindowRef CMTextEditDlg::Create(_EPIRECORD* record) {
    m_hostRecord = *record;
    const platform::Alive alive(*this);
    if (CreateNibWindow(GetWindowName(), GetNibName(), GetBundle()) != platform::kNoErr || !alive)
        return nullptr;
    // What failed has been reported; half a dialog would only fail again.
    if (IsInitFailed())
        Dispose();
    return GetWindowRef();
}

void CMTextEditDlg::Dispose() {
    m_nInitialized = 0;
    if (m_pListEditor)
        m_pListEditor->EndDialog(kHuxDialogCancel);
    m_preview.TermPreview();
    TerminateTextDlg();
    HuxDialogImpl::Dispose();
}

void CMTextEditDlg::ReceiveCompositeImage(_EPIRECORD* record) {
    m_hostRecord = *record;
    RefreshRecord(m_hostRecord);
    ShowComposite();
    UpdatePreview(1);
    RefreshViewScaleText();
}

void CMTextEditDlg::ShowComposite() {
    // The wrapper is the view's; the pixels stay the host's.
    const _EPIRECORD& record = m_hostRecord;
    // Copies, as the packed record gives no address that may be kept.
    const auto* objects = record.pObjectProcs;
    const auto* images = record.pOffscreenProcs;
    EPIImageRef composite = record.hComposite;
    auto image = composite ? std::make_unique<PIOffscreen>(objects, images, composite) : nullptr;
    SetBkImage(image.release(), 1);
}

platform::OSStatus CMTextEditDlg::InstallSelf(platform::EventTargetRef target) {
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassKeyboard, platform::kEventRawKeyDown },
        { platform::kEventClassKeyboard, platform::kEventRawKeyRepeat },
        { platform::kEventClassWindow, platform::kEventWindowBoundsChanged },
    };
    return InstallCarbonEventHandler(target, std::size(types), types);
}

platform::OSStatus CMTextEditDlg::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                         platform::EventRef event) {
    if (platform::GetEventClass(event) == platform::kEventClassKeyboard)
        return HandleRowKeyDown(event);
    if (platform::GetEventClass(event) == platform::kEventClassWindow &&
        platform::GetEventKind(event) == platform::kEventWindowBoundsChanged)
        FitPreview();
    const auto command = dialogs::ControlCommandOf(event);
    if (!command)
        return platform::kEventNotHandledErr;
    if (IsEditField(command->id))
        return command->value == kTextChanged
                   ? HandleEditChange(command->id, command->control, kTextChanged)
                   : platform::kEventNotHandledErr;
    return HandleCommand(command->id, command->control, command->value);
}

// Return in the dialogue starts a new line instead of pressing the default button.
platform::OSStatus CMTextEditDlg::HandleRowKeyDown(platform::EventRef event) {
    std::uint32_t keyCode = 0;
    HuxCarbonEvent(event, true)
        .GetParameter(platform::kEventParamKeyCode, platform::kTypeUInt32, sizeof keyCode,
                      &keyCode);
    if (keyCode != platform::kVirtualKeyReturn)
        return platform::kEventNotHandledErr;
    platform::ControlRef focus = nullptr;
    platform::ControlRef defaultButton = nullptr;
    platform::GetKeyboardFocus(GetWindowRef(), &focus);
    platform::GetWindowDefaultButton(GetWindowRef(), &defaultButton);
    if (!focus || focus != m_dialogueField.GetControlRef() || !defaultButton)
        return platform::kEventNotHandledErr;
    const WithoutDefaultButton without(GetWindowRef(), defaultButton);
    return CallNext();
}

// The preview has the size that the window leaves it, and a view of the whole frame follows.
void CMTextEditDlg::FitPreview() {
    if (m_nInitialized == 0)
        return;
    const platform::Rect bounds = m_preview.GetBounds();
    FitArea(bounds.right - bounds.left, bounds.bottom - bounds.top);
    RefreshViewScaleText();
}

void CMTextEditDlg::DragUpdate() {
    m_preview.Draw(true);
    if (platform::IsWindowBuffered(GetWindowRef()))
        m_preview.FlushPortBuffer();
}

bool CMTextEditDlg::IsDragButton() {
    platform::Point where {};
    platform::MouseTracking result {};
    constexpr platform::EventTime kForEver = -1.0;
    const platform::OSStatus status =
        platform::TrackMouseLocation(GetWindowRef(), kForEver, &where, &result);
    return status == platform::kNoErr && result != platform::MouseTracking::kMouseUp &&
           result != platform::MouseTracking::kUserCancelled;
}

void CMTextEditDlg::ZoomBy(long steps) {
    SetViewScale(m_nViewScale + steps * kZoomStep, 1);
    RefreshViewScaleText();
}
