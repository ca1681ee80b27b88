// SPDX-License-Identifier: BSD-3-Clause
// The window with every control, which logs what its controls tell it.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "CommandLog.h"
#include "RowData.h"
#include "TextPane.h"
#include "huxCommon/huxGUI/HuxBevelButton.h"
#include "huxCommon/huxGUI/HuxDataBrowser.h"
#include "huxCommon/huxGUI/HuxDialog.h"
#include "huxCommon/huxGUI/HuxEditText.h"
#include "huxCommon/huxGUI/HuxLittleArrows.h"
#include "huxCommon/huxGUI/HuxPopupButton.h"
#include "huxCommon/huxGUI/HuxSwitches.h"

class ControlsDialog : public HuxDialogImpl {
public:
    const char* GetNibName() override { return "Controls"; }
    const char* GetWindowName() override { return "Controls"; }
    void _AttachControls() override;
    bool OnInitDialog() override;
    bool WasMade() const { return m_made; } // from its form
    bool OnOK() override;
    bool OnCancel() override;
    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    static constexpr std::size_t kFieldCount = 9;

    void InitFields();
    void InitMenu();
    void InitRows();
    void Log(std::string_view what, const HuxString& detail = {});

    platform::OSStatus HandleCommand(platform::EventRef event);
    platform::OSStatus HandleField(std::size_t index, long notification);
    void HandleCheck();
    void HandleMenu();
    void HandleFont();
    void HandlePane();
    void AddRow();
    void RemoveRow();
    platform::OSStatus HandleItemData(const HuxDataBrowser::ItemDataRequest& request);
    void HandleNotification(const HuxDataBrowser::ItemNotification& notification);
    void ShowPoints();

    HuxControlImpl m_push;
    HuxCheckBox m_check;
    HuxControlImpl m_sizes;
    HuxBevelButton m_color;
    HuxPopupButton m_menu;
    HuxPopupButton m_font;
    std::array<HuxEditText, kFieldCount> m_fields;
    HuxLittleArrows m_pointsStep;
    HuxDataBrowser m_rows;
    TextPane m_pane;
    CommandLog m_log;
    long m_rowsMade = 0;
    bool m_made = false;
};
