// SPDX-License-Identifier: BSD-3-Clause
// A copy of the real bundle in a folder of its own, and its module, loaded as a host loads it.
#pragma once

#include <stdexcept>

#include <dlfcn.h>

#include <epi/epi.h>

#include "support/TemporaryFolder.h"

class LoadedBundle {
public:
    // bundle is the folder of the built one, module the place of the module in it.
    LoadedBundle(const std::filesystem::path& bundle, const std::filesystem::path& module) {
        std::filesystem::copy(bundle, m_folder.Path() / bundle.filename(),
                              std::filesystem::copy_options::recursive);
        m_modulePath = m_folder.Path() / bundle.filename() / module.lexically_relative(bundle);
    }
    LoadedBundle(const LoadedBundle&) = delete;
    LoadedBundle& operator=(const LoadedBundle&) = delete;
    ~LoadedBundle() {
        if (m_module)
            dlclose(m_module);
    }

    std::filesystem::path ModuleFolder() const { return m_modulePath.parent_path(); }

    // path leads to the module, perhaps from the current folder only.
    void Load(const std::filesystem::path& path) {
        m_module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!m_module)
            throw std::runtime_error(dlerror());
        m_entry = reinterpret_cast<EPIEntryPoint>(dlsym(m_module, EPI_ENTRY_POINT_NAME));
    }

    // Loads the module at the first call.
    long Call(long selector, _EPIRECORD* record) {
        if (!m_module)
            Load(m_modulePath);
        return m_entry(selector, record);
    }

private:
    TemporaryFolder m_folder;
    std::filesystem::path m_modulePath;
    void* m_module = nullptr;
    EPIEntryPoint m_entry = nullptr;
};
