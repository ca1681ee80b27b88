// SPDX-License-Identifier: BSD-3-Clause
// The text edit dialog's controls as they are when it opens.
#include <algorithm>
#include <array>

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/LockedParam.h"
#include "dialogs/PluginBundle.h"
#include "dialogs/TextEditControls.h"
#include "render/ColorRef.h"
#include "render/TextFields.h"

namespace {

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

void CMTextEditDlg::_AttachControls() {
    using namespace dialogs;
    AttachPopup(m_fontPopup, kFontPopup);
    AttachEdit(m_sizeField, kSizeField);
    AttachPopup(m_sizePopup, kSizePopup);
    AttachControl(m_textColorButton, kTextColorButton);
    AttachControl(m_boxCheck, kBoxCheck);
    AttachControl(m_boxColorButton, kBoxColorButton);
    AttachEdit(m_opacityField, kOpacityField);
    AttachControl(m_opacityStepper, kOpacityStepper);
    for (std::int32_t i = 0; i < 4; ++i)
        AttachControl(m_modeRadios[i], kFirstModeRadio + i);
    AttachPopup(m_scoreFormatPopup, kScoreFormatPopup);
    AttachEdit(m_infoField, kInfoField);
    AttachPopup(m_infoPopup, kInfoPopup);
    AttachEdit(m_characterField, kCharacterField);
    AttachPopup(m_characterPopup, kCharacterPopup);
    AttachPopup(m_suffixPopup, kSuffixPopup);
    AttachEdit(m_dialogueField, kDialogueField);
    AttachControl(m_optionCheck, kOptionCheck);
    AttachControl(m_preview, kPreview);
    AttachControl(m_zoomInButton, kZoomInButton);
    AttachControl(m_zoomOutButton, kZoomOutButton);
    AttachControl(m_scaleText, kScaleText);
    AttachPopup(m_previewModePopup, kPreviewModePopup);
    AttachControl(m_previewOptionCheck, kPreviewOptionCheck);
}

// The form's value is written back so that it lies within the menu.
void CMTextEditDlg::AttachPopup(HuxPopupButton& popup, std::int32_t number) {
    AttachControl(popup, number);
    popup.SetValue(popup.GetValue());
    popup.ClearCheckMarks();
}

void CMTextEditDlg::AttachEdit(HuxEditText& field, std::int32_t number) {
    AttachControl(field, number);
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
    m_modeGroup.Create(GetWindowRef(), { kHuxPropertyCreator, dialogs::kModeGroup },
                       dialogs::kModeGroup);
    m_vectorControls.Add(m_modeGroup);
    for (HuxRadioButton& radio : m_modeRadios)
        m_modeGroup.AddButton(radio);
    if (m_hostRecord.bInfoPresent == 0) {
        m_modeRadios[0].Disable();
        if ((param.dwFlags & TEXT_SCORE) != 0)
            param.dwFlags = (param.dwFlags & ~TEXT_SCORE) | TEXT_INFO;
    }
    // A dialogue is what is left when none of the flags is set.
    const auto* mode =
        std::find_if(std::begin(dialogs::kModeFlags), std::end(dialogs::kModeFlags) - 1,
                     [&](std::uint32_t flag) { return (param.dwFlags & flag) != 0; });
    m_modeGroup.SetValue(static_cast<std::int32_t>(mode - std::begin(dialogs::kModeFlags)) + 1);
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
