// SPDX-License-Identifier: BSD-3-Clause
#include "host/Plugin.h"

#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <system_error>

#include "host/BundleSearch.h"
#include "host/Message.h"
#include "host/Tables.h"

namespace host {

namespace fs = std::filesystem;

namespace {

// What a plug-in may ask for; more is a broken module's answer.
constexpr std::int32_t kMaxBlock = 1 << 24;
constexpr std::int32_t kMaxParameters = 256;

const char* NameOfSelector(long selector) {
    static constexpr const char* names[] { "Init",           "Term",
                                           "InitFixedParam", "InitSettings",
                                           "ParamInfo",      "CreateSettingDialog",
                                           "DialogNotify",   "DestroySettingDialog",
                                           "DoFilter",       "Serialize",
                                           "CalcRenderBound" };
    return selector >= epiInit && selector <= epiCalcRenderBound ? names[selector] : "selector";
}

template <std::size_t Size>
std::string Text(const char (&field)[Size]) {
    return { field, strnlen(field, Size) };
}

// "Linux-aarch64, Linux-ppc": what the bundle was built for.
std::string MachinesOf(const fs::path& contents) {
    std::string machines;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(contents, error)) {
        const auto name = entry.path().filename().string();
        if (name.starts_with("Linux-"))
            machines += (machines.empty() ? "" : ", ") + Printable(name);
    }
    return machines.empty() ? "no module at all" : "modules for " + machines + " only";
}

} // namespace

std::shared_ptr<Plugin> Plugin::Load(const fs::path& bundle, std::string& why) {
    std::shared_ptr<Plugin> plugin(new Plugin);
    // A path that ends with a slash has no name of its own.
    plugin->m_bundle = bundle.has_filename() ? bundle : bundle.parent_path();
    if (!plugin->OpenModule(why) || !plugin->Describe(why))
        return nullptr;
    return plugin;
}

std::shared_ptr<Plugin> Plugin::LoadByName(const std::string& name, std::string& why) {
    const auto search = FindBundle(name);
    if (!search.found.empty())
        return Load(search.found, why);
    why = "the plug-in " + name + ".bundle was not found; looked for\n" + search.Describe() +
          "set TELOP_PLUGIN_PATH to the folder that holds it";
    return nullptr;
}

Plugin::~Plugin() {
    auto record = MakeRecord();
    std::string why; // nobody is left to tell
    if (m_isInitialized)
        Run(epiTerm, record, why);
    if (m_library)
        dlclose(m_library);
}

bool Plugin::OpenModule(std::string& why) {
    const auto contents = m_bundle / "Contents";
    m_module = contents / ModuleFolder() / (m_bundle.stem().string() + ".so");
    std::error_code error;
    if (!fs::is_directory(contents, error)) {
        why = Printable(m_bundle.native()) + ": is no bundle: there is no folder " +
              Printable(contents.native());
        return false;
    }
    if (!fs::exists(m_module, error)) {
        why = Printable(m_bundle.native()) + ": has no " + ModuleFolder() + "/" +
              Printable(m_module.filename().native()) + " for this program, but " +
              MachinesOf(contents);
        return false;
    }
    // The absolute path, so that the loader does not look in its own places for a bare name.
    m_library = dlopen(fs::absolute(m_module, error).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!m_library) {
        const auto* reason = dlerror();
        why = Printable(m_module.native()) +
              ": does not load: " + Printable(reason ? reason : "no reason given");
        return false;
    }
    m_entry = reinterpret_cast<EPIEntryPoint>(dlsym(m_library, EPI_ENTRY_POINT_NAME));
    if (!m_entry)
        why = Printable(m_module.native()) + ": exports no " EPI_ENTRY_POINT_NAME;
    return m_entry != nullptr;
}

bool Plugin::Describe(std::string& why) {
    EPIPluginInfo info {};
    EPIParamDesc parameter {};
    auto record = MakeRecord();
    record.pPluginInfo = &info;
    record.pParamDesc = &parameter;
    m_isInitialized = Run(epiInit, record, why);
    if (!m_isInitialized)
        return false;
    if (info.nFixedParamSize < 1 || info.nFixedParamSize > kMaxBlock || info.nSettingsSize < 0 ||
        info.nSettingsSize > kMaxBlock) {
        why = Printable(m_module.native()) + ": asks for " + std::to_string(info.nFixedParamSize) +
              " bytes of parameters and " + std::to_string(info.nSettingsSize) + " of settings";
        return false;
    }
    m_description = { info.nSignature,    info.nInfo1,
                      info.nInfo2,        Text(info.szCategory),
                      Text(info.szName),  info.nFixedParamSize,
                      info.nSettingsSize, {} };
    // An index past the last parameter leaves the block alone.
    for (record.nParamIndex = 0; record.nParamIndex < kMaxParameters; ++record.nParamIndex) {
        parameter = {};
        if (!Run(epiParamInfo, record, why))
            return false;
        if (parameter.nKind == 0)
            break;
        m_description.parameters.push_back({ parameter.nKind, Text(parameter.szName),
                                             parameter.dMinimum, parameter.dMaximum,
                                             parameter.dDefault });
    }
    return true;
}

bool Plugin::Run(long selector, _EPIRECORD& record, std::string& why) const {
    try {
        const auto status = m_entry(selector, &record);
        if (status == 0)
            return true;
        why = "gave the status " + std::to_string(status);
    } catch (const std::exception& exception) {
        why = std::string("was stopped by an exception: ") + exception.what();
    } catch (...) {
        why = "was stopped by an exception";
    }
    why = Printable(m_module.native()) + ": " + NameOfSelector(selector) + " " + why;
    return false;
}

} // namespace host
