// SPDX-License-Identifier: BSD-3-Clause
// The dialog's window, its beginnings and its events; what they set off lies in the files beside this
// one.
#include "dialogs/CMTextEditDlg.h"

#include <algorithm>
#include <array>
#include <memory>

#include "dialogs/HostCalls.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "popup/CMEditPopupDlg.h"
#include "render/ColorRef.h"
#include "render/TextFields.h"

namespace {

constexpr long kTextChanged = 1; // what an edit field says of typing
constexpr long kZoomStep = 10;   // per cent

// Takes the window's default button away while it lives.
class WithoutDefaultButton {
public:
    WithoutDefaultButton(platform::Window& window, platform::ControlRef button)
        : m_window(window.Ref()), m_button(button) {
        window.SetDefaultButton(nullptr);
    }
    WithoutDefaultButton(const WithoutDefaultButton&) = delete;
    WithoutDefaultButton& operator=(const WithoutDefaultButton&) = delete;
    ~WithoutDefaultButton() {
        if (platform::Window* const window = platform::Window::Find(m_window))
            window->SetDefaultButton(platform::Control::Find(m_button));
    }

private:
    platform::WindowRef m_window;
    platform::ControlRef m_button;
};

constexpr std::array kEditFields { CMTextEditDlg::kSizeField, CMTextEditDlg::kOpacityField,
                                   CMTextEditDlg::kInfoField, CMTextEditDlg::kCharacterField,
                                   CMTextEditDlg::kDialogueField };
constexpr std::array kCommands {
    CMTextEditDlg::kZoomInButton,     CMTextEditDlg::kZoomOutButton,
    CMTextEditDlg::kPreviewModePopup, CMTextEditDlg::kPreviewOptionCheck,
    CMTextEditDlg::kFontPopup,        CMTextEditDlg::kSizePopup,
    CMTextEditDlg::kTextColorButton,  CMTextEditDlg::kBoxCheck,
    CMTextEditDlg::kBoxColorButton,   CMTextEditDlg::kScoreFormatPopup,
    CMTextEditDlg::kInfoPopup,        CMTextEditDlg::kCharacterPopup,
    CMTextEditDlg::kSuffixPopup,      CMTextEditDlg::kOptionCheck,
    CMTextEditDlg::kModeGroup,
};

bool Contains(const auto& controls, std::int32_t id) {
    return std::ranges::find(controls, id) != controls.end();
}

constexpr std::array<std::int32_t, 25> kSizes { 3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                                16, 17, 18, 20, 22, 24, 26, 28, 36, 48, 64, 72 };

constexpr double kMaxSize = 99, kMinSize = 3, kDefaultSize = 36;
constexpr double kMaxOpacity = 100, kMinOpacity = 0, kDefaultOpacity = 50;
constexpr long kSizeDigits = 2, kOpacityDigits = 3;
// Also of the dialogue, although its parameter holds more: a longer text would not stay readable in
// a frame.
constexpr long kTextLimit = 63;

platform::RGBColor ToRGB(COLORREF color) {
    platform::RGBColor rgb;
    COLORREFtoRGB(rgb, color);
    return rgb;
}

} // namespace

CMTextEditDlg::CMTextEditDlg() : PluginDialog("Edit"), CTextEditDlg(kPreview), m_preview(*this) {}

CMTextEditDlg::~CMTextEditDlg() {
    CMTextEditDlg::Dispose();
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
    PluginDialog::Dispose();
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

// Beginnings -------------------------------------------------------------------------------------

void CMTextEditDlg::_AttachControls() {
    for (std::int32_t i = 0; i < 4; ++i)
        AttachControl(m_modeRadios[i], kFirstModeRadio + i);
    const struct {
        HuxControlImpl& control;
        Control number;
    } rows[] = {
        { m_fontPopup, kFontPopup },
        { m_sizeField, kSizeField },
        { m_sizePopup, kSizePopup },
        { m_textColorButton, kTextColorButton },
        { m_boxCheck, kBoxCheck },
        { m_boxColorButton, kBoxColorButton },
        { m_opacityField, kOpacityField },
        { m_opacityStepper, kOpacityStepper },
        { m_scoreFormatPopup, kScoreFormatPopup },
        { m_infoField, kInfoField },
        { m_infoPopup, kInfoPopup },
        { m_characterField, kCharacterField },
        { m_characterPopup, kCharacterPopup },
        { m_suffixPopup, kSuffixPopup },
        { m_dialogueField, kDialogueField },
        { m_optionCheck, kOptionCheck },
        { m_preview, kPreview },
        { m_zoomInButton, kZoomInButton },
        { m_zoomOutButton, kZoomOutButton },
        { m_scaleText, kScaleText },
        { m_previewModePopup, kPreviewModePopup },
        { m_previewOptionCheck, kPreviewOptionCheck },
    };
    for (const auto& row : rows) {
        AttachControl(row.control, row.number);
        // The form's value is written back so that it lies within the menu.
        if (auto* const popup = dynamic_cast<HuxPopupButton*>(&row.control)) {
            popup->SetValue(popup->GetValue());
            popup->ClearCheckMarks();
        }
    }
}

bool CMTextEditDlg::HandleInitWindow() {
    LockedParam param(m_hostRecord);
    if (!param || !m_hostRecord.pSettings)
        return false;
    InitializeTextDlg(&m_hostRecord, GetWindowRef(), DialogParam().nViewState1,
                      DialogParam().nViewState2);
    InitStyle(*param);
    InitSizes(*param);
    InitOpacity(*param);
    InitModes(*param);
    InitTexts(*param);
    InitOptions();
    m_preview.InitPreview(PluginBundle());
    RefreshControls();
    if (m_hostRecord.hComposite)
        ShowComposite();
    WholeSizeView(0);
    UpdatePreview(0);
    RefreshViewScaleText();
    m_nInitialized = 1;
    return true;
}

void CMTextEditDlg::InitStyle(const _TEXTPARAM& param) {
    m_fontPopup.DeleteAllItems();
    m_fontPopup.AppendFontMenu();
    unsigned char family[256];
    CtoPascalString(family, render::TerminatedCopy(param).szFontName);
    m_fontPopup.SetFontFamilyName(family);

    m_textColorButton.SetType(HuxBevelButton::kColor);
    m_textColorButton.SetColor(ToRGB(param.crText));
    m_boxCheck.SetChecked((param.dwFlags & TEXT_BOX) != 0);
    m_boxColorButton.SetType(HuxBevelButton::kColor);
    m_boxColorButton.SetColor(ToRGB(param.crBack));
}

void CMTextEditDlg::InitSizes(const _TEXTPARAM& param) {
    m_sizePopup.DeleteAllItems();
    for (const std::int32_t size : kSizes)
        m_sizePopup.AppendItem(HuxString::FromInteger(size), size);
    m_sizePopup.SetMinimum(0);
    m_sizePopup.SetValue(m_sizePopup.FindItem(param.nFontSize));

    m_sizeField.SetType(false, kMaxSize, kMinSize, kDefaultSize, false);
    m_sizeField.SetLimitText(kSizeDigits);
    m_sizeField.SetSInt(param.nFontSize);
}

void CMTextEditDlg::InitOpacity(const _TEXTPARAM& param) {
    m_opacityField.SetType(false, kMaxOpacity, kMinOpacity, kDefaultOpacity, false);
    m_opacityField.SetLimitText(kOpacityDigits);
    m_opacityField.SetSInt(param.nOpacity);
    // The decimal place means nothing to a field of integers.
    m_opacityStepper.SetEditControl(&m_opacityField, 1, 1, 0);
}

void CMTextEditDlg::InitModes(_TEXTPARAM& param) {
    m_modeGroup.Create(GetWindowRef(), { kHuxPropertyCreator, kModeGroup }, kModeGroup);
    m_vectorControls.Add(m_modeGroup);
    for (HuxRadioButton& radio : m_modeRadios)
        m_modeGroup.AddButton(radio);
    if (m_hostRecord.bInfoPresent == 0) {
        m_modeRadios[0].Disable();
        if ((param.dwFlags & TEXT_SCORE) != 0)
            param.dwFlags = (param.dwFlags & ~TEXT_SCORE) | TEXT_INFO;
    }
    // A dialogue is what is left when none of the flags is set.
    std::int32_t mode = 0;
    while (mode < 3 && (param.dwFlags & kModeFlags[mode]) == 0)
        ++mode;
    m_modeGroup.SetValue(mode + 1);
    m_scoreFormatPopup.SetValue(param.nScoreFormat + 1);
    const std::int32_t suffix = (param.dwFlags & TEXT_MONOLOGUE) != 0 ? 3 : 1;
    m_suffixPopup.SetValue((param.dwFlags & TEXT_OFFCHARACTER) != 0 ? 2 : suffix);
}

void CMTextEditDlg::InitTexts(const _TEXTPARAM& param) {
    const _TEXTPARAM text = render::TerminatedCopy(param);
    m_infoField.SetLimitText(kTextLimit);
    m_infoField.SetText(text.szInfoText);
    SetPopupInfoString(m_infoPopup, DialogParam().infoPopup, text.szInfoText);
    m_characterField.SetLimitText(kTextLimit);
    m_characterField.SetText(text.szCharacter);
    SetPopupInfoString(m_characterPopup, DialogParam().characterPopup, text.szCharacter);
    m_dialogueField.SetLimitText(kTextLimit);
    m_dialogueField.SetText(text.szDialogue);
}

void CMTextEditDlg::InitOptions() {
    m_previewModePopup.SetValue(m_nPreviewMode + 1);
    m_previewOptionCheck.SetChecked(m_nPreviewOption != 0);
    if (m_nPreviewMode == 0)
        m_previewOptionCheck.Disable();
    if ((m_hostRecord.dwDialogFlags & (EPI_DIALOG_TEXT_EDIT | EPI_DIALOG_NO_OPTION)) != 0)
        m_optionCheck.Disable();
    else
        m_optionCheck.SetChecked(DialogParam().bDialogOption != 0);
}

// Events -----------------------------------------------------------------------------------------

bool CMTextEditDlg::CheckControlValue() {
    const platform::WhileSet quiet(*this, m_nInitialized, 0); // as OnOK is about numbers
    return PluginDialog::CheckControlValue();
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
    const auto command = ControlCommandOf(event);
    const auto id = command ? static_cast<std::int32_t>(command->id) : 0;
    if (Contains(kEditFields, id) && command->value == kTextChanged)
        return HandleEditChange(id);
    return Contains(kCommands, id) ? HandleCommand(id) : platform::kEventNotHandledErr;
}

// Return in the dialogue starts a new line instead of pressing the default button.
platform::OSStatus CMTextEditDlg::HandleRowKeyDown(platform::EventRef event) {
    std::uint32_t keyCode = 0;
    HuxCarbonEvent(event, true)
        .GetParameter(platform::kEventParamKeyCode, platform::kTypeUInt32, sizeof keyCode,
                      &keyCode);
    if (keyCode != platform::kVirtualKeyReturn)
        return platform::kEventNotHandledErr;
    platform::Window* const window = GetWindow();
    const platform::Control* const focus = window ? window->KeyboardFocus() : nullptr;
    const platform::Control* const button = window ? window->DefaultButton() : nullptr;
    if (!focus || focus->Ref() != m_dialogueField.GetControlRef() || !button)
        return platform::kEventNotHandledErr;
    const WithoutDefaultButton without(*window, button->Ref());
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
    m_preview.FlushPortBuffer();
}

bool CMTextEditDlg::IsDragButton() {
    platform::Point where {};
    constexpr platform::EventTime kForEver = -1.0;
    platform::Window* const window = GetWindow();
    const platform::MouseTracking result =
        window ? window->TrackMouse(kForEver, &where) : platform::MouseTracking::kUserCancelled;
    return result != platform::MouseTracking::kMouseUp &&
           result != platform::MouseTracking::kUserCancelled;
}

void CMTextEditDlg::ZoomBy(long steps) {
    SetViewScale(m_nViewScale + steps * kZoomStep, 1);
    RefreshViewScaleText();
}
