// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Commands.h"

#include <array>
#include <cstdio>
#include <optional>
#include <string>

#include "apps/telop/LoadEffect.h"
#include "host/Message.h"
#include "platform/CoreFoundation.h"
#include "platform/TextEncoding.h"

namespace telop {

namespace {

struct DescribeOptions {
    std::optional<std::string> bundle; // else the one that render uses
};

void Print(const char* label, const std::string& value) {
    std::printf("%-16s%s\n", label, value.empty() ? "(none)" : host::Printable(value).c_str());
}

std::string FourCharacters(std::uint32_t code) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto c = static_cast<char>(code >> shift & 0xFF);
        text += c >= 0x20 && c < 0x7F ? c : '?';
    }
    return text;
}

std::string Number(double value) {
    std::array<char, 32> text {};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

void PrintBundle(const host::Plugin& plugin) {
    Print("bundle", plugin.Bundle().string());
    Print("module", plugin.Module().string());
    Print("exports", EPI_ENTRY_POINT_NAME);
    const platform::BundleHolder bundle(platform::CFBundleCreate(plugin.Bundle()));
    if (!bundle)
        return;
    Print("identifier", platform::CFBundleGetIdentifier(bundle.get()));
    Print("version", platform::CFBundleGetVersion(bundle.get()));
}

void PrintParameter(std::size_t index, const host::ParameterDescription& parameter) {
    Print(index == 0 ? "parameters" : "",
          std::to_string(index) + ": " + platform::DecodeText(parameter.name) + ", kind " +
              std::to_string(parameter.kind) + ", " + Number(parameter.minimum) + " to " +
              Number(parameter.maximum) + ", default " + Number(parameter.defaultValue));
}

void AddDescribeOptions(CLI::App& command, DescribeOptions& options) {
    command.description("Shows what a plug-in says about itself.");
    command.add_option("BUNDLE", options.bundle,
                       "A folder such as TextOverlay.bundle; without it, "
                       "the one that render uses");
    command.footer("Examples:\n"
                   "  telop describe\n"
                   "  telop describe /usr/lib/telop/TextOverlay.bundle\n");
}

ExitCode RunDescribe(const DescribeOptions& options) {
    const auto plugin = LoadPlugin(options.bundle);
    const auto& description = plugin->Description();
    Print("name", platform::DecodeText(description.name));
    Print("category", platform::DecodeText(description.category));
    PrintBundle(*plugin);
    Print("signature", FourCharacters(description.signature) + ", " +
                           std::to_string(description.info1) + ", " +
                           std::to_string(description.info2));
    Print("memory", std::to_string(description.fixedParamSize) + " bytes of parameters, " +
                        std::to_string(description.settingsSize) + " bytes of dialog settings");
    for (std::size_t i = 0; i < description.parameters.size(); ++i)
        PrintParameter(i, description.parameters[i]);
    return ExitCode::kSuccess;
}

} // namespace

void AddDescribe(CLI::App& program, ExitCode& code) {
    AddCommand(program, code, "describe", AddDescribeOptions, RunDescribe);
}

} // namespace telop
