// SPDX-License-Identifier: BSD-3-Clause
// A loaded plug-in: its module, its entry function and what it says about itself.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <epi/epi.h>

namespace host {

struct ParameterDescription {
    std::int32_t kind;
    std::string name; // in the application's text encoding
    double minimum, maximum, defaultValue;
};

struct PluginDescription {
    std::uint32_t signature; // a four-character code
    std::int32_t info1, info2;
    std::string category, name; // in the application's text encoding
    std::int32_t fixedParamSize, settingsSize;
    std::vector<ParameterDescription> parameters;
};

// Unloads the module when the last one who holds it lets go. Any thread may call the entry.
class Plugin {
public:
    // bundle is a folder such as ".../TextOverlay.bundle". Null with the reason when there is no
    // module for this machine in it, it does not load, exports no entry, or describes itself with
    // sizes that cannot be.
    static std::shared_ptr<Plugin> Load(const std::filesystem::path& bundle, std::string& why);
    // The same for the bundle of that name wherever it is found; the reason lists the places.
    static std::shared_ptr<Plugin> LoadByName(const std::string& name, std::string& why);
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    ~Plugin(); // epiTerm, when it was described

    const std::filesystem::path& Bundle() const { return m_bundle; }
    const std::filesystem::path& Module() const { return m_module; }
    const PluginDescription& Description() const { return m_description; }

    // The entry function as it is; exceptions of callbacks pass through.
    long Call(long selector, _EPIRECORD* record) const { return m_entry(selector, record); }
    // The same for callers that want a reason: false when the status is not 0 or an exception came.
    bool Run(long selector, _EPIRECORD& record, std::string& why) const;

private:
    Plugin() = default;
    bool OpenModule(std::string& why);
    bool Describe(std::string& why);

    std::filesystem::path m_bundle;
    std::filesystem::path m_module;
    void* m_library = nullptr;
    EPIEntryPoint m_entry = nullptr;
    PluginDescription m_description {};
    bool m_isInitialized = false; // epiInit went well, so epiTerm follows
};

} // namespace host
