// SPDX-License-Identifier: BSD-3-Clause
// What the text edit dialog does when the user picks, clicks, types or presses OK.
#include "dialogs/CMTextEditDlg.h"
#include "dialogs/HostCalls.h"
#include "popup/CTextPopup.h"
#include "render/ColorRef.h"
#include "render/TextFields.h"

namespace {

constexpr std::uint32_t kAllModeFlags = TEXT_SCORE | TEXT_INFO | TEXT_CHARACTER | TEXT_DIALOGUE;

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

void SetEnabled(HuxControlImpl& control, bool enabled) {
    if (enabled)
        control.Enable();
    else
        control.Disable();
}

} // namespace

platform::OSStatus CMTextEditDlg::HandleCommand(std::int32_t id) {
    if (m_nInitialized == 0)
        return platform::kNoErr;
    bool isChanged = false;
    // The lists ask questions, and the parameters are not kept pinned meanwhile.
    if (id == kInfoPopup)
        isChanged = DoPopupInfo(m_infoPopup, m_infoField, &_TEXT_DIALOG_PARAM::infoPopup,
                                &_TEXTPARAM::szInfoText, 1) != 0;
    else if (id == kCharacterPopup)
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
bool CMTextEditDlg::RunCommand(std::int32_t id, _TEXTPARAM& param) {
    switch (id) {
    case kZoomInButton:
        ZoomBy(1);
        return false;
    case kZoomOutButton:
        ZoomBy(-1);
        return false;
    case kPreviewModePopup:
        ChangePreviewMode();
        return false;
    case kPreviewOptionCheck:
        m_nPreviewOption = m_previewOptionCheck.IsChecked() ? 1 : 0;
        Redraw();
        return false;
    case kFontPopup:
        ChangeFont(param);
        return true;
    case kSizePopup:
        return ChangeSizeByMenu(param);
    case kTextColorButton:
        param.crText = ColorOf(m_textColorButton);
        return true;
    case kBoxCheck:
        SetFlag(param, TEXT_BOX, m_boxCheck.IsChecked());
        RefreshControls();
        return true;
    case kBoxColorButton:
        param.crBack = ColorOf(m_boxColorButton);
        return true;
    case kScoreFormatPopup:
        param.nScoreFormat = m_scoreFormatPopup.GetValue() - 1;
        RefreshControls();
        return true;
    case kSuffixPopup:
        ChangeSuffix(param);
        return true;
    case kOptionCheck:
        DialogParam().bDialogOption = m_optionCheck.IsChecked() ? 1 : 0;
        return false;
    case kModeGroup:
        ChangeMode(param);
        return true;
    default:
        return false;
    }
}

void CMTextEditDlg::ChangePreviewMode() {
    m_nPreviewMode = m_previewModePopup.GetValue() - 1;
    SetEnabled(m_previewOptionCheck, m_nPreviewMode != 0);
    Redraw();
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
    const platform::WhileSet quiet(*this, m_nInitialized, 0);
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
    param.dwFlags = (param.dwFlags & ~kAllModeFlags) | kModeFlags[mode - 1];
    RefreshControls();
    if (platform::Window* const window = GetWindow())
        window->TakeUserFocus();
    HuxEditText* const fields[] = { nullptr, &m_infoField, &m_characterField, &m_dialogueField };
    const HuxEditText* const field = fields[mode - 1];
    if (platform::Window* const window = field ? GetWindow() : nullptr)
        window->SetKeyboardFocus(platform::Control::Find(field->GetControlRef()));
}

platform::OSStatus CMTextEditDlg::HandleEditChange(std::int32_t id) {
    LockedParam param(m_hostRecord);
    if (m_nInitialized == 0 || !param)
        return platform::kNoErr;
    const platform::WhileSet quiet(*this, m_nInitialized, 0);
    bool changed = true;
    switch (id) {
    case kSizeField:
        changed = ChangeSizeByField(*param);
        break;
    case kOpacityField:
        changed = ChangeOpacity(*param);
        break;
    case kInfoField:
        ReadText(m_infoField, param->szInfoText);
        SelectPopupInfoString(m_infoPopup, DialogParam().infoPopup, param->szInfoText);
        break;
    case kCharacterField:
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
    const bool isConfirmed =
        (record.dwDialogFlags & EPI_DIALOG_NO_OPTION) == 0 &&
        ((record.dwDialogFlags & EPI_DIALOG_TEXT_EDIT) != 0 || m_optionCheck.IsChecked());
    if (const auto changed = FindEntry(record.pParamProcs, &EPIParamProcs::ParametersChanged))
        changed(record.hFixedParam);
    if (const auto option = FindEntry(record.pParamProcs, &EPIParamProcs::Option);
        option && isConfirmed)
        option(1.0, 0);
    return true;
}

// The user is told of a number that cannot be; it and what comes after it are not stored, and neither
// is what the field shows instead until the user agrees with another OK.
bool CMTextEditDlg::StoreNumbers(_TEXTPARAM& param) {
    const platform::WhileSet quiet(*this, m_nInitialized, 0);
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
    const _TEXTPARAM text = render::TerminatedCopy(param);
    const auto keep = [](_POPUPSTRING& list, const char* text) {
        if (list.bLock == 0)
            CTextPopup::InsertPopupString(text, list.szHistory, list.szPreset);
    };
    keep(DialogParam().infoPopup, text.szInfoText);
    keep(DialogParam().characterPopup, text.szCharacter);
}

void CMTextEditDlg::RefreshControls() {
    const LockedParam param(m_hostRecord);
    if (!param)
        return;
    const auto is = [&](std::uint32_t flag) { return (param->dwFlags & flag) != 0; };
    SetEnabled(m_scoreFormatPopup, is(TEXT_SCORE));
    EnableField(m_infoField, is(TEXT_INFO));
    SetEnabled(m_infoPopup, is(TEXT_INFO));
    EnableField(m_characterField, is(TEXT_CHARACTER));
    SetEnabled(m_characterPopup, is(TEXT_CHARACTER));
    SetEnabled(m_suffixPopup, is(TEXT_CHARACTER));
    EnableField(m_dialogueField, is(TEXT_DIALOGUE));
    SetEnabled(m_boxColorButton, is(TEXT_BOX));
}

void CMTextEditDlg::EnableField(HuxEditText& field, bool enabled) {
    SetEnabled(field, enabled);
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
