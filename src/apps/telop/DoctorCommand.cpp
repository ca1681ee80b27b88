// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Commands.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apps/telop/LoadEffect.h"
#include "host/BundleSearch.h"
#include "host/Ledger.h"
#include "host/Message.h"
#include "host/text/TextField.h"
#include "platform/Fonts.h"
#include "platform/TextContext.h"

namespace telop {

namespace {

struct DoctorOptions {
    std::optional<std::string> encoding, plugin;
};

// Lines under headings; those of what is wrong are counted.
class Sheet {
public:
    void Heading(std::string_view text) { std::printf("\n%s\n", std::string(text).c_str()); }
    void Say(const std::string& label, const std::string& value) { Line("  ", label, value); }
    // Names between commas, on as many lines as they need.
    void SayNames(const std::string& label, const std::string& start,
                  const std::vector<std::string>& names) {
        std::string line = start;
        std::string_view mark = label;
        for (const auto& name : names) {
            const bool last = &name == &names.back();
            if (Columns(line) + Columns(name) > kValueColumns) {
                Line("  ", std::string(std::exchange(mark, "")), line);
                line.clear();
            }
            line += (line.empty() ? "" : " ") + name + (last ? "" : ",");
        }
        Line("  ", std::string(mark), line);
    }
    void Wrong(const std::string& label, const std::string& value) {
        ++m_wrong;
        Line("! ", label, value);
    }
    int CountWrong() const { return m_wrong; }

private:
    static constexpr std::size_t kValueColumns = 76; // beside the label, in 100

    // What it takes on a terminal: characters from the first East Asian ones on are wide there.
    static std::size_t Columns(std::string_view utf8) {
        std::size_t columns = 0;
        for (const unsigned char byte : utf8)
            columns += (byte & 0xC0) == 0x80 ? 0 : byte >= 0xE2 ? 2 : 1;
        return columns;
    }
    static void Line(const char* mark, const std::string& label, const std::string& value) {
        std::printf("%s%-20s %s\n", mark, label.c_str(), host::PrintableLines(value).c_str());
    }
    int m_wrong = 0;
};

std::string Environment(const char* name) {
    const auto* value = std::getenv(name);
    return value ? value : "";
}

// Plug-in ----------------------------------------------------------------------------------------

void CheckSearchPath(Sheet& sheet) {
    const auto list = Environment("TELOP_PLUGIN_PATH");
    for (std::size_t start = 0; start < list.size();) {
        const auto end = std::min(list.find(':', start), list.size());
        const auto folder = list.substr(start, end - start);
        std::error_code ignored;
        if (!folder.empty() && !std::filesystem::is_directory(folder, ignored))
            sheet.Wrong("TELOP_PLUGIN_PATH", folder + " is no folder");
        start = end + 1;
    }
}

std::shared_ptr<host::Plugin> CheckPlugin(Sheet& sheet, const DoctorOptions& options) {
    sheet.Heading("Plug-in");
    CheckSearchPath(sheet);
    if (!options.plugin) {
        const auto search = host::FindBundle(kBundleName);
        for (const auto& place : search.looked)
            sheet.Say(place.path == search.found ? "found" : "not in",
                      place.path.string() + " (" + place.origin + ")");
    }
    std::string why;
    auto plugin = options.plugin ? host::Plugin::Load(*options.plugin, why)
                                 : host::Plugin::LoadByName(kBundleName, why);
    if (!plugin) {
        sheet.Wrong("plug-in", why);
        return nullptr;
    }
    sheet.Say("module", plugin->Module().string());
    sheet.Say("name", platform::DecodeText(plugin->Description().name) + ", in " +
                          platform::DecodeText(plugin->Description().category));
    return plugin;
}

std::int64_t InkedPixels(const host::Image& image) {
    std::int64_t inked = 0;
    for (std::int32_t y = 0; y < image.Height(); ++y) {
        const auto row = image.Row(y);
        for (std::size_t x = 0; x + 2 < row.size(); x += 3)
            inked += row[x] + row[x + 1] + row[x + 2] > 0 ? 1 : 0;
    }
    return inked;
}

// Draws for real, into a black picture, since only that shows whether everything plays together.
void CheckDrawing(Sheet& sheet, const host::Effect& effect, const std::string& label,
                  const std::string& text) {
    auto params = effect.CopyParams();
    params.dwFlags = TEXT_INFO;
    params.crText = 0xFFFFFF;
    params.nOpacity = 100;
    params.ptPos = { 4, 4 };
    std::string why;
    const auto image = host::Image::Make(640, 120, host::kRgb24);
    platform::TextContext met;
    const platform::TextScope scope(met);
    if (!host::SetField(params.szInfoText, label, text, why)) {
        sheet.Say(label, "not in " + platform::ApplicationTextEncoding());
    } else if (!image || !effect.RenderWith(params, *image, {}, why)) {
        sheet.Wrong(label, why);
    } else if (const auto inked = InkedPixels(*image); inked == 0) {
        sheet.Wrong(label, "'" + text + "' leaves no pixel");
    } else {
        const auto reports = met.Reports();
        for (const auto& report : reports)
            sheet.Wrong(label, platform::Describe(report));
        if (reports.empty())
            sheet.Say(label, "'" + text + "' is drawn");
    }
}

void CheckEffect(Sheet& sheet, const std::shared_ptr<host::Plugin>& plugin) {
    if (!plugin)
        return;
    std::string why;
    const auto effect = host::Effect::Make(plugin, why);
    if (!effect) {
        sheet.Wrong("effect", why);
        return;
    }
    sheet.Say("default font",
              platform::DecodeText(host::FieldBytes(effect->CopyParams().szFontName)));
    CheckDrawing(sheet, *effect, "Latin", "Cut 12");
    CheckDrawing(sheet, *effect, "Japanese", "カット日本語");
    if (const auto& ledger = host::Ledger::Get(); !ledger.IsBalanced())
        sheet.Wrong("memory", ledger.Describe());
}

// Fonts ------------------------------------------------------------------------------------------

// By the family that stands in, since most of the names asked for share one.
void ShowAliases(Sheet& sheet) {
    std::map<std::string, std::vector<std::string>> namesByFamily;
    for (const auto& alias : platform::FontAliases())
        namesByFamily[alias.family].push_back(alias.asked);
    for (const auto& [family, names] : namesByFamily)
        if (family.empty())
            sheet.SayNames("nothing like", "", names);
        else
            sheet.SayNames("stands in", family + " for", names);
}

void CheckFonts(Sheet& sheet) {
    sheet.Heading("Fonts");
    const auto families = platform::InstalledFontFamilies();
    if (families.empty()) {
        sheet.Wrong("families", "no font is installed, or Fontconfig does not find it");
        return;
    }
    sheet.Say("families", std::to_string(families.size()) + " ('telop fonts' lists them)");
    const auto standard = platform::ResolveFontFamily("");
    sheet.Say("without a name", standard.family + "  " + standard.file);
    ShowAliases(sheet);
}

// Encoding, language -----------------------------------------------------------------------------

void CheckEncoding(Sheet& sheet) {
    sheet.Heading("Encoding and language");
    const auto asked = Environment("TELOP_TEXT_ENCODING");
    sheet.Say("encoding", platform::ApplicationTextEncoding());
    if (!asked.empty() && !platform::TextEncoding::Find(asked))
        sheet.Wrong("TELOP_TEXT_ENCODING", "'" + asked + "' is no known encoding");
    for (const auto* name : { "LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG" }) {
        const auto value = Environment(name);
        sheet.Say(name, value.empty() ? "(not set)" : value);
    }
}

void CheckProgram(Sheet& sheet) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    std::printf("telop %s, %s\n", TELOP_VERSION, error ? "?" : program.c_str());
    if (Environment("HOME").empty())
        sheet.Say("HOME", "(not set)");
}

void AddDoctorOptions(CLI::App& command, DoctorOptions& options) {
    command.description(
        "Shows the bundle, the fonts, the encoding and the paths that a run uses, and "
        "what is wrong\nwith them, in lines that start with '!'.");
    command.add_option("--encoding", options.encoding, "As for render")->option_text("NAME");
    command.add_option("--plugin", options.plugin, "As for render")->option_text("BUNDLE");
    command.footer("The exit code is 0 when nothing is wrong and 1 when something is.");
}

ExitCode RunDoctor(const DoctorOptions& options) {
    SetEncoding(options.encoding);
    Sheet sheet;
    CheckProgram(sheet);
    CheckEffect(sheet, CheckPlugin(sheet, options));
    CheckFonts(sheet);
    CheckEncoding(sheet);
    const auto wrong = sheet.CountWrong();
    std::printf("\n%s\n",
                wrong == 0 ? "Nothing is wrong."
                : wrong == 1
                    ? "One thing is wrong, marked with '!'."
                    : (std::to_string(wrong) + " things are wrong, marked with '!'.").c_str());
    return wrong == 0 ? ExitCode::kSuccess : ExitCode::kFramesFailed;
}

} // namespace

void AddDoctor(CLI::App& program, ExitCode& code) {
    AddCommand(program, code, "doctor", AddDoctorOptions, RunDoctor);
}

} // namespace telop
