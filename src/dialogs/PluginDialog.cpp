// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/PluginDialog.h"

#include "dialogs/MessageBox.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
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
