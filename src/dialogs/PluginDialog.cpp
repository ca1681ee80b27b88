// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/PluginDialog.h"

#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "platform/ui/Dialogs.h"
#include "render/ColorRef.h"
#include "render/LocalizedString.h"

platform::CFBundleRef PluginBundle() {
    return platform::CFBundleGetBundleWithIdentifier(kPluginBundleIdentifier);
}

HuxString PluginText(std::string_view key) {
    return HuxString::Localized(PluginBundle(), key);
}

std::optional<PluginDialog::ControlCommand>
PluginDialog::ControlCommandOf(platform::EventRef event) {
    const HuxCarbonEvent command(event, true);
    if (!command.Is(platform::kEventClassCommand, platform::kEventCommandProcess))
        return std::nullopt;
    ControlCommand found {};
    platform::HICommandExtended source {};
    command.GetCommandParameter(&found.id, &found.value, &source, nullptr);
    if ((source.attributes & platform::kHICommandFromControl) == 0)
        return std::nullopt;
    return found;
}

bool PluginDialog::Ask(std::string_view key, long withCancel) {
    return MessageBox(PluginText(key), PluginText("IDS_FILTER"), withCancel);
}

bool MessageBox(const HuxString& message, const HuxString& title, long withCancel) {
    return platform::RunStandardAlert(title.GetUTF8(), message.GetUTF8(), withCancel != 0);
}

bool ColorDialog(unsigned long& color) {
    constexpr unsigned long kPicked = 0xFF000000;
    const HuxString noPrompt;
    platform::RGBColor current {};
    COLORREFtoRGB(current, color);
    platform::RGBColor picked {};
    if (!platform::GetColor({ 0, 0 }, noPrompt.GetCFString(), current, &picked))
        return false;
    color = kPicked | RGBtoCOLORREF(picked);
    return true;
}
