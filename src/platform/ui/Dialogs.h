// SPDX-License-Identifier: BSD-3-Clause
// Standard dialogs: alerts, the colour picker, opening and saving files. Each runs modally with a
// loop of its own. User-interface thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/ui/Windows.h"

namespace platform {

enum class AlertType : std::int16_t { kStop = 0, kNote = 1, kCaution = 2, kPlain = 3 };
struct AlertParam {
    bool movable = true;
    bool helpButton = false;
    bool okButton = true;      // item 1, the default; its text is the platform's
    bool cancelButton = false; // item 2, also pressed by Escape and by closing
};
inline constexpr std::int16_t kAlertStdAlertOKButton = 1;
inline constexpr std::int16_t kAlertStdAlertCancelButton = 2;

// explanation may be null. Ended by RunStandardAlert or DisposeStandardAlert.
OSStatus CreateStandardAlert(AlertType type, CFStringRef message, CFStringRef explanation,
                             const AlertParam& param, DialogRef* alert);
WindowRef GetDialogWindow(DialogRef alert); // for its title; null when gone
EventTargetRef GetDialogEventTarget(DialogRef alert);
// Runs and ends it; item gets the button that was pressed.
OSStatus RunStandardAlert(DialogRef alert, std::int16_t* item);
void DisposeStandardAlert(DialogRef alert);

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
// Empty when the user cancels. The save dialog asks before it gives a file that exists.
std::vector<FSSpec> RunGetFileDialog(const FileDialogOptions& options);
std::vector<FSSpec> RunPutFileDialog(const FileDialogOptions& options);

} // namespace platform
