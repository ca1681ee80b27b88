// SPDX-License-Identifier: BSD-3-Clause
// What the plug-in's dialogs share: the forms and texts of its bundle, the commands of their controls,
// and what the user is asked in a window of its own: OK or Cancel before something is lost, or a colour.
#pragma once

#include <optional>
#include <string_view>

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxDialog.h"

// Lent; null when this code is no part of a bundle, and then the program's own bundle is asked.
platform::CFBundleRef PluginBundle();
// The text for the key in the user's language.
HuxString PluginText(std::string_view key);

class PluginDialog : public HuxDialogImpl {
public:
    const char* GetNibName() override { return "DialogSettings"; }
    const char* GetWindowName() override { return m_window; }

protected:
    // By the name of the dialog's window, which is not copied.
    explicit PluginDialog(const char* window) : m_window(window) { SetBundle(PluginBundle()); }

    struct ControlCommand {
        std::uint32_t id;
        long value; // 0 when the command carries none
    };
    // Nothing for any other event, and for a command that does not come from a control.
    static std::optional<ControlCommand> ControlCommandOf(platform::EventRef event);
    // The text for the key in a MessageBox.
    static bool Ask(std::string_view key, long withCancel);

private:
    const char* m_window;
};

// Runs until the user answers. True for OK; false for Cancel, and when nobody could be asked. Without
// withCancel there is only OK.
bool MessageBox(const HuxString& message, const HuxString& title, long withCancel);

// Runs the platform's colour picker from the colour (COLORREF; its top byte does not matter). True
// when the user accepts: color is the picked one then, with a top byte of 0xFF, which tells a picked
// colour from a converted one. False, and color as it was, when not.
bool ColorDialog(unsigned long& color);
