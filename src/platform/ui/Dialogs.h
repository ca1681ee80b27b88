// SPDX-License-Identifier: BSD-3-Clause
// Standard dialogs: the alert, the colour picker, opening and saving files. Each runs modally with a
// loop of its own. User-interface thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/ui/Windows.h"

namespace platform {

// A plain alert with the platform's OK button, which is the default, and, if asked for, its Cancel button,
// which Escape and closing press too. UTF-8. True: OK was pressed.
bool RunStandardAlert(std::string_view title, std::string_view message, bool cancelButton);

// The colour picker, at the point (0, 0: where the platform likes it) with the prompt as its title.
// True and *picked when the user accepts, false and *picked untouched when not.
bool GetColor(Point where, CFStringRef prompt, const RGBColor& current, RGBColor* picked);

struct FileDialogOptions {
    // Under this number the folder of the last choice is remembered, from run to run.
    std::uint32_t preferenceKey = 0;
    std::string typeName;       // what the one entry of the type popup is called; UTF-8
    std::string typePattern;    // such as "*.txt"; all files are there to choose as well
    std::string title;          // empty: the platform's
    std::string fileName;       // of a file to save, to begin with
    WindowRef parent = nullptr; // null: the active window
};
// Nothing when the user cancels. The save dialog asks before it gives a file that exists.
std::optional<FSSpec> RunGetFileDialog(const FileDialogOptions& options);
std::optional<FSSpec> RunPutFileDialog(const FileDialogOptions& options);

} // namespace platform
