// SPDX-License-Identifier: BSD-3-Clause
// What the text edit dialog does when the user picks, clicks, types or presses OK.
#include <algorithm>
#include <cstring>

#include "dialogs/CMTextEditDlg.h"
#include "dialogs/HostNotices.h"
#include "dialogs/LockedParam.h"
#include "dialogs/TextEditControls.h"
#include "popup/CTextPopup.h"
#include "render/ColorRef.h"

namespace {

// Clears the dialog's flag, so that what a change sets off is ignored, and sets it again.
class Quiet {
public:
    explicit Quiet(std::int32_t& initialized) : m_initialized(initialized) { m_initialized = 0; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;
    ~Quiet() { m_initialized = 1; }

private:
    std::int32_t& m_initialized;
};

void SetFlag(_TEXTPARAM& param, std::uint32_t flag, bool set) {
    param.dwFlags = set ? param.dwFlags | flag : param.dwFlags & ~flag;
}

COLORREF ColorOf(const HuxBevelButton& button) {
    return static_cast<COLORREF>(RGBtoCOLORREF(button.GetColor()));
}

template <std::size_t size>
void ReadText(const HuxEditText& field, char (&text)[size]) {
    field.GetText(text, size, false);
}

} // namespace

platform::OSStatus CMTextEditDlg::HandleCommand(std::uint32_t id, platform::ControlRef /*control*/,
                                                long /*value*/) {
    if (m_nInitialized == 0)
        return platform::kNoErr;
    bool isChanged = false;
    // The lists ask questions, and the parameters are not kept pinned meanwhile.
    if (id == dialogs::kInfoPopup)
        isChanged = DoPopupInfo(m_infoPopup, m_infoField, &_TEXT_DIALOG_PARAM::infoPopup,
                                &_TEXTPARAM::szInfoText, 1) != 0;
    else if (id == dialogs::kCharacterPopup)
        isChanged =
            DoPopupInfo(m_characterPopup, m_characterField, &_TEXT_DIALOG_PARAM::characterPopup,
                        &_TEXTPARAM::szCharacter, 0) != 0;
    else if (const LockedParam param(m_hostRecord); param)
        isChanged = RunCommand(id, *param);
    if (isChanged)
        UpdatePreview(1);
    return platform::kNoErr;
}

// True when the text looks different now.
bool CMTextEditDlg::RunCommand(std::uint32_t id, _TEXTPARAM& param) {
    switch (id) {
    case dialogs::kZoomInButton:
        ZoomBy(1);
        return false;
    case dialogs::kZoomOutButton:
        ZoomBy(-1);
        return false;
    case dialogs::kPreviewModePopup:
        ChangePreviewMode();
        return false;
    case dialogs::kPreviewOptionCheck:
        m_nPreviewOption = m_previewOptionCheck.IsChecked() ? 1 : 0;
        DrawOffscreen();
        InvalPreviewArea();
        return false;
    case dialogs::kFontPopup:
        ChangeFont(param);
        return true;
    case dialogs::kSizePopup:
        return ChangeSizeByMenu(param);
    case dialogs::kTextColorButton:
        param.crText = ColorOf(m_textColorButton);
        return true;
    case dialogs::kBoxCheck:
        SetFlag(param, TEXT_BOX, m_boxCheck.IsChecked());
        RefreshControls();
        return true;
    case dialogs::kBoxColorButton:
        param.crBack = ColorOf(m_boxColorButton);
        return true;
    case dialogs::kScoreFormatPopup:
        param.nScoreFormat = m_scoreFormatPopup.GetValue() - 1;
        RefreshControls();
        return true;
    case dialogs::kSuffixPopup:
        ChangeSuffix(param);
        return true;
    case dialogs::kOptionCheck:
        DialogParam().bDialogOption = m_optionCheck.IsChecked() ? 1 : 0;
        return false;
    case dialogs::kModeGroup:
        ChangeMode(param);
        return true;
    default:
        return false;
    }
}

void CMTextEditDlg::ChangePreviewMode() {
    m_nPreviewMode = m_previewModePopup.GetValue() - 1;
    if (m_nPreviewMode != 0)
        m_previewOptionCheck.Enable();
    else
        m_previewOptionCheck.Disable();
    DrawOffscreen();
    InvalPreviewArea();
}

void CMTextEditDlg::ChangeFont(_TEXTPARAM& param) {
    unsigned char family[256];
    if (m_fontPopup.GetFontFamilyName(family))
        HuxString(family).GetCString(param.szFontName, sizeof param.szFontName);
}

// False when no size is picked.
bool CMTextEditDlg::ChangeSizeByMenu(_TEXTPARAM& param) {
    const auto size = m_sizePopup.GetSelectRefCon();
    if (!size)
        return false;
    param.nFontSize = *size;
    const Quiet quiet(m_nInitialized);
    m_sizeField.SetSInt(*size);
    return true;
}

void CMTextEditDlg::ChangeSuffix(_TEXTPARAM& param) {
    const std::int32_t suffix = m_suffixPopup.GetValue();
    SetFlag(param, TEXT_OFFCHARACTER, suffix == 2);
    SetFlag(param, TEXT_MONOLOGUE, suffix == 3);
    RefreshControls();
}

void CMTextEditDlg::ChangeMode(_TEXTPARAM& param) {
    const std::int32_t mode = m_modeGroup.GetValue();
    if (mode < 1 || mode > 4)
        return;
    param.dwFlags = (param.dwFlags & ~dialogs::kAllModeFlags) | dialogs::kModeFlags[mode - 1];
    RefreshControls();
    platform::SetUserFocusWindow(GetWindowRef());
    HuxEditText* const fields[] = { nullptr, &m_infoField, &m_characterField, &m_dialogueField };
    if (const HuxEditText* field = fields[mode - 1])
        platform::SetKeyboardFocus(GetWindowRef(), field->GetControlRef(),
                                   platform::kControlEditTextPart);
}

platform::OSStatus CMTextEditDlg::HandleEditChange(std::uint32_t id,
                                                   platform::ControlRef /*control*/,
                                                   long /*value*/) {
    LockedParam param(m_hostRecord);
    if (m_nInitialized == 0 || !param)
        return platform::kNoErr;
    const Quiet quiet(m_nInitialized);
    bool changed = true;
    switch (id) {
    case dialogs::kSizeField:
        changed = ChangeSizeByField(*param);
        break;
    case dialogs::kOpacityField:
        changed = ChangeOpacity(*param);
        break;
    case dialogs::kInfoField:
        ReadText(m_infoField, param->szInfoText);
        SelectPopupInfoString(m_infoPopup, DialogParam().infoPopup, param->szInfoText);
        break;
    case dialogs::kCharacterField:
        ReadText(m_characterField, param->szCharacter);
        SelectPopupInfoString(m_characterPopup, DialogParam().characterPopup, param->szCharacter);
        break;
    default:
        ReadText(m_dialogueField, param->szDialogue);
        break;
    }
    if (changed)
        UpdatePreview(1);
    return platform::kNoErr;
}

bool CMTextEditDlg::ChangeSizeByField(_TEXTPARAM& param) {
    long size = 0;
    if (!m_sizeField.GetInt(size, false) || size == param.nFontSize)
        return false;
    // A size that the menu lacks leaves its selection where it was.
    if (const auto item = m_sizePopup.FindItem(static_cast<std::int32_t>(size)))
        m_sizePopup.SetValue(item);
    param.nFontSize = static_cast<std::int32_t>(size);
    return true;
}

bool CMTextEditDlg::ChangeOpacity(_TEXTPARAM& param) {
    long opacity = 0;
    if (!m_opacityField.GetInt(opacity, false) || opacity == param.nOpacity)
        return false;
    param.nOpacity = static_cast<std::int32_t>(opacity);
    return true;
}

bool CMTextEditDlg::OnOK() {
    {
        LockedParam param(m_hostRecord);
        if (!param || !StoreNumbers(*param))
            return false;
        KeepTexts(*param);
        DialogParam().nViewState1 = m_nPreviewMode;
        DialogParam().nViewState2 = m_nPreviewOption;
    }
    // Either call may end this dialog.
    const _EPIRECORD record = m_hostRecord;
    const bool isConfirmed = ConfirmsOption();
    dialogs::ParametersChanged(record);
    if (isConfirmed)
        dialogs::OptionConfirmed(record);
    return true;
}

// The user is told of a number that cannot be; it and what comes after it are not stored.
bool CMTextEditDlg::StoreNumbers(_TEXTPARAM& param) {
    long number = 0;
    if (!m_sizeField.GetInt(number, true))
        return false;
    param.nFontSize = static_cast<std::int32_t>(number);
    if (!m_opacityField.GetInt(number, true))
        return false;
    param.nOpacity = static_cast<std::int32_t>(number);
    return true;
}

void CMTextEditDlg::KeepTexts(const _TEXTPARAM& param) {
    const auto keep = [](_POPUPSTRING& list, const char* text) {
        if (list.bLock == 0)
            CTextPopup::InsertPopupString(text, list.szHistory, list.szPreset);
    };
    keep(DialogParam().infoPopup, param.szInfoText);
    keep(DialogParam().characterPopup, param.szCharacter);
}

bool CMTextEditDlg::ConfirmsOption() const {
    if ((m_hostRecord.dwDialogFlags & EPI_DIALOG_NO_OPTION) != 0)
        return false;
    return (m_hostRecord.dwDialogFlags & EPI_DIALOG_TEXT_EDIT) != 0 || m_optionCheck.IsChecked();
}

void CMTextEditDlg::RefreshControls() {
    const LockedParam param(m_hostRecord);
    if (!param)
        return;
    const auto enable = [](HuxControlImpl& control, bool enabled) {
        if (enabled)
            control.Enable();
        else
            control.Disable();
    };
    const auto is = [&](std::uint32_t flag) { return (param->dwFlags & flag) != 0; };
    enable(m_scoreFormatPopup, is(TEXT_SCORE));
    EnableField(m_infoField, is(TEXT_INFO));
    enable(m_infoPopup, is(TEXT_INFO));
    EnableField(m_characterField, is(TEXT_CHARACTER));
    enable(m_characterPopup, is(TEXT_CHARACTER));
    enable(m_suffixPopup, is(TEXT_CHARACTER));
    EnableField(m_dialogueField, is(TEXT_DIALOGUE));
    enable(m_boxColorButton, is(TEXT_BOX));
}

void CMTextEditDlg::EnableField(HuxEditText& field, bool enabled) {
    if (enabled)
        field.Enable();
    else
        field.Disable();
    platform::ControlFontStyleRec style {};
    field.GetFontStyle(&style);
    style.flags |= platform::kControlUseAllMask | platform::kControlUseForeColorMask;
    platform::GetThemeTextColor(enabled ? platform::kThemeTextColorDialogActive
                                        : platform::kThemeTextColorDialogInactive,
                                &style.foreColor);
    field.SetFontStyle(&style);
}

void CMTextEditDlg::RefreshViewScaleText() {
    const HuxString scale = HuxString::FromInteger(m_nViewScale);
    m_scaleText.SetTitle(scale);
    m_scaleText.Draw(true);
}
