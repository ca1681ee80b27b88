// SPDX-License-Identifier: BSD-3-Clause
// The text edit dialog: every parameter of the text, with a live preview in which it is placed. Edits
// the host's parameters in place, so that preview and frames always show the same.
#pragma once

#include <epi/epi.h>

#include "dialogs/PluginDialog.h"
#include "huxCommon/huxGUI/HuxBevelButton.h"
#include "huxCommon/huxGUI/HuxEditText.h"
#include "huxCommon/huxGUI/HuxLittleArrows.h"
#include "huxCommon/huxGUI/HuxPopupButton.h"
#include "huxCommon/huxGUI/HuxSwitches.h"
#include "preview/CMTextPreviewStatic.h"
#include "preview/CTextEditDlg.h"

class CMEditPopupDlg;

class CMTextEditDlg : public PluginDialog, public CTextEditDlg {
public:
    // The controls' numbers, which are also their command ids.
    enum Control : std::int32_t {
        kPreview = 91,
        kZoomInButton = 94,
        kZoomOutButton,
        kScaleText,
        kPreviewModePopup,
        kPreviewOptionCheck,
        kFontPopup = 101,
        kSizeField,
        kSizePopup,
        kTextColorButton,
        kBoxCheck,
        kBoxColorButton,
        kOpacityField,
        kOpacityStepper,
        kFirstModeRadio = 201, // score, info, character, dialogue
        kScoreFormatPopup = 205,
        kInfoField,
        kInfoPopup,
        kCharacterField,
        kCharacterPopup,
        kSuffixPopup,
        kDialogueField,
        kOptionCheck = 301,
        kModeGroup = 500,
    };

    CMTextEditDlg();
    ~CMTextEditDlg() override;

    // The dialog's window; null on failure. The record is copied; what it refers to outlives the
    // dialog.
    platform::WindowRef Create(_EPIRECORD* record);
    // The record's composited frame is shown behind the text from now on.
    void ReceiveCompositeImage(_EPIRECORD* record);
    void Dispose() override;

    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;
    void _AttachControls() override;
    bool HandleInitWindow() override;
    bool CheckControlValue() override;
    // Stores what the fields hold, enters the texts into the histories and tells the host. False: a
    // field holds no such number, which the user has been told.
    bool OnOK() override;

    void DragUpdate() override;
    bool IsDragButton() override;
    void ZoomBy(long steps) override;

private:
    // Which text is drawn, in the order of the radio buttons.
    static constexpr std::uint32_t kModeFlags[] = { TEXT_SCORE, TEXT_INFO, TEXT_CHARACTER,
                                                    TEXT_DIALOGUE };
    // One of the two texts that have a list, and the list.
    using ListedText = char (_TEXTPARAM::*)[64];
    using ListOfTexts = _POPUPSTRING _TEXT_DIALOG_PARAM::*;

    platform::OSStatus HandleRowKeyDown(platform::EventRef event);
    void FitPreview();

    // The controls' beginnings.
    void InitStyle(const _TEXTPARAM& param);
    void InitSizes(const _TEXTPARAM& param);
    void InitOpacity(const _TEXTPARAM& param);
    void InitModes(_TEXTPARAM& param);
    void InitTexts(const _TEXTPARAM& param);
    void InitOptions();
    void ShowComposite();

    // What the user changed (CMTextEditDlgCommand.cpp).
    platform::OSStatus HandleCommand(std::int32_t id);
    platform::OSStatus HandleEditChange(std::int32_t id);
    void ChangeFont(_TEXTPARAM& param);
    bool ChangeSizeByMenu(_TEXTPARAM& param);
    void ChangeSuffix(_TEXTPARAM& param);
    void ChangeMode(_TEXTPARAM& param);
    void ChangePreviewMode();
    bool ChangeSizeByField(_TEXTPARAM& param);
    bool ChangeOpacity(_TEXTPARAM& param);
    bool RunCommand(std::int32_t id, _TEXTPARAM& param);
    bool StoreNumbers(_TEXTPARAM& param);
    void KeepTexts(const _TEXTPARAM& param);
    void RefreshControls();
    void EnableField(HuxEditText& field, bool enabled);
    void RefreshViewScaleText();

    // The lists of reusable texts (CMTextEditDlgLists.cpp).
    void SetPopupInfoString(HuxPopupButton& popup, const _POPUPSTRING& list, const char* text);
    void SelectPopupInfoString(HuxPopupButton& popup, const _POPUPSTRING& list, const char* text);
    void SetPopupInfoLock(HuxPopupButton& popup, bool locked);
    long DoPopupInfo(HuxPopupButton& popup, HuxEditText& field, ListOfTexts list, ListedText text,
                     long which);
    long TakeText(HuxEditText& field, const _POPUPSTRING& list, std::int32_t place,
                  ListedText text);
    void ClearHistory(HuxPopupButton& popup, ListOfTexts list, const char* text);
    void EditList(HuxPopupButton& popup, ListOfTexts list, const char* text, long which);

    _TEXT_DIALOG_PARAM& DialogParam() const {
        return *static_cast<_TEXT_DIALOG_PARAM*>(m_hostRecord.pSettings);
    }

    HuxPopupButton m_fontPopup;
    HuxEditText m_sizeField;
    HuxPopupButton m_sizePopup;
    HuxBevelButton m_textColorButton;
    HuxCheckBox m_boxCheck;
    HuxBevelButton m_boxColorButton;
    HuxEditText m_opacityField;
    HuxLittleArrows m_opacityStepper;
    HuxRadioButton m_modeRadios[4];
    HuxPopupButton m_scoreFormatPopup;
    HuxEditText m_infoField;
    HuxPopupButton m_infoPopup;
    HuxEditText m_characterField;
    HuxPopupButton m_characterPopup;
    HuxPopupButton m_suffixPopup;
    HuxEditText m_dialogueField;
    HuxCheckBox m_optionCheck;
    CMTextPreviewStatic m_preview;
    HuxControlImpl m_zoomInButton;
    HuxControlImpl m_zoomOutButton;
    HuxControlImpl m_scaleText;
    HuxPopupButton m_previewModePopup;
    HuxCheckBox m_previewOptionCheck;
    HuxRadioGroup m_modeGroup;
    // 0 until everything is set up, and while a change of a field is handled: commands and changes
    // are ignored then.
    std::int32_t m_nInitialized = 0;
    _EPIRECORD m_hostRecord {};
    CMEditPopupDlg* m_pListEditor = nullptr; // while one runs
};
