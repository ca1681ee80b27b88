// SPDX-License-Identifier: BSD-3-Clause
#include "effect/UIModule.h"

#include <filesystem>
#include <string>
#include <system_error>

#include <dlfcn.h>

#include "platform/TextContext.h"

namespace fs = std::filesystem;

namespace {

fs::path FolderOfThisModule() {
    Dl_info module {};
    if (!dladdr(reinterpret_cast<const void*>(&OpenUIModule), &module) || !module.dli_fname)
        return {};
    std::error_code error;
    return fs::canonical(module.dli_fname, error).parent_path();
}

// Found while this module is being loaded: a host may name it from a folder that it leaves later.
const fs::path s_folder = FolderOfThisModule();

const UIModuleTable* Refuse(const fs::path& path, const char* reason) {
    platform::TextContext::Current().Tell({ platform::ReportKind::kBundleBroken, path.string(),
                                            "no dialogs",
                                            reason ? reason : "it cannot be opened" });
    return nullptr;
}

const UIModuleTable* Open(const fs::path& path) {
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module)
        return Refuse(path, dlerror());
    const auto* table = static_cast<const UIModuleTable*>(dlsym(module, kUIModuleTableName));
    if (!table)
        return Refuse(path, "it has no table of dialog functions");
    if (table->nSize < sizeof *table)
        return Refuse(path, "its table of dialog functions is from an older version");
    return table;
}

const UIModuleTable* FindAndOpen() {
    const fs::path path = s_folder / kUIModuleFileName;
    std::error_code error;
    return path.has_parent_path() && fs::exists(path, error) ? Open(path) : nullptr;
}

} // namespace

const UIModuleTable* OpenUIModule() {
    static const UIModuleTable* const table = FindAndOpen();
    return table;
}
