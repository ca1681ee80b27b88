// SPDX-License-Identifier: BSD-3-Clause
// Counted strings: UTF-8 inside, the application's text encoding at the plug-in's buffers. Bundles:
// folders with a program's modules and resources, known by their identifier, and the string tables in
// them. A table is read at the first look into it.
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include <dlfcn.h>
#include <nlohmann/json.hpp>

#include "platform/CoreFoundation.h"
#include "platform/StringTable.h"
#include "platform/TextContext.h"

namespace fs = std::filesystem;

namespace platform {

// Strings ----------------------------------------------------------------------------------------

struct CFString {
    std::string utf8;
    mutable std::atomic<long> count { 1 };
};

void CFRetain(CFStringRef string) {
    string->count.fetch_add(1, std::memory_order_relaxed);
}

void CFRelease(CFStringRef string) {
    if (string->count.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete string;
}

CFStringRef CFStringCreateWithUTF8(std::string_view utf8) {
    return new CFString { std::string(utf8) };
}

std::string_view CFStringGetUTF8(CFStringRef string) {
    return string->utf8;
}

bool CFStringGetCString(CFStringRef string, char* buffer, std::size_t size) {
    if (size == 0)
        return false;
    const EncodedText text = EncodeText(string->utf8);
    const std::string_view part = CutToWholeCharacters(text.bytes, size - 1);
    *std::copy(part.begin(), part.end(), buffer) = '\0';
    return text.complete && part.size() == text.bytes.size();
}

// Bundles ----------------------------------------------------------------------------------------

namespace {

// What a bundle says about itself in its Info.json.
struct BundleInfo {
    std::string identifier; // as "org.example.effect.name"
    std::string version;
};

} // namespace

struct CFBundle {
    fs::path path;
    fs::path resources;
    BundleInfo info;
    std::atomic<long> count { 1 };
    std::mutex mutex; // of tables, which only grow: what was found stays where it is
    std::map<fs::path, StringTable> tables;
};

namespace {

// A table or an Info.json that is larger is a mistake.
constexpr std::uintmax_t kMaxFileBytes = std::uintmax_t { 1 } << 20;

// Nothing, and the reason in why, for anything but an object with these strings; others may stand
// beside them.
std::optional<BundleInfo> ParseBundleInfo(std::string_view json, std::string& why) {
    const auto info = nlohmann::json::parse(json, nullptr, /*allow_exceptions=*/false);
    if (!info.is_object()) {
        why = info.is_discarded() ? "it is no JSON" : "it is no JSON object";
        return std::nullopt;
    }
    BundleInfo result;
    std::string name; // for people, who may look into the file
    for (const auto& [key, text] :
         { std::pair { "identifier", &result.identifier }, std::pair { "name", &name },
           std::pair { "version", &result.version } }) {
        const auto value = info.find(key);
        if (value == info.end() || !value->is_string()) {
            why = std::string("its \"") + key + "\" is no string";
            return std::nullopt;
        }
        *text = value->get<std::string>();
    }
    return result;
}

struct Registration {
    const void* code;
    BundleHolder bundle;
};

struct Registry {
    std::mutex mutex;
    std::vector<Registration> registrations;
};

// Never destroyed: modules leave it while a process ends.
Registry& TheRegistry() {
    static auto* registry = new Registry;
    return *registry;
}

void ReportFile(const std::string& asked, std::string reason) {
    TextContext::Current().Tell({ ReportKind::kBundleBroken, asked, "", std::move(reason) });
}

std::optional<std::string> ReadFile(const fs::path& path, std::string& why) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) {
        why = error.message();
        return std::nullopt;
    }
    if (size > kMaxFileBytes) {
        why = "it is larger than 1 MiB";
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (!file.is_open() || file.bad()) {
        why = "it cannot be read";
        return std::nullopt;
    }
    return bytes;
}

// ".../Name.bundle" from ".../Name.bundle/Contents/<machine>/Module.so" of the code; empty, reported,
// when the code lies elsewhere.
fs::path BundlePathOf(const void* code) {
    Dl_info module {};
    if (!dladdr(code, &module) || !module.dli_fname) {
        ReportFile("module", "its code lies in no file");
        return {};
    }
    std::error_code error;
    const fs::path file = fs::canonical(module.dli_fname, error);
    const fs::path contents = file.parent_path().parent_path();
    if (error || contents.filename() != "Contents") {
        ReportFile(module.dli_fname, "the module lies in no bundle");
        return {};
    }
    return contents.parent_path();
}

CFBundleRef MakeMainBundle() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    auto* bundle = new CFBundle;
    bundle->path = program.parent_path();
    bundle->resources = bundle->path / "Resources";
    return bundle;
}

StringTable LoadTable(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error))
        return {};
    std::string why;
    const std::optional<std::string> text = ReadFile(path, why);
    if (!text) {
        ReportFile(path.string(), why);
        return {};
    }
    return ParseStringTable(*text, [&](std::size_t line, std::string_view reason) {
        ReportFile(path.string() + ":" + std::to_string(line), std::string(reason));
    });
}

const StringTable& TableAt(CFBundleRef bundle, const fs::path& path) {
    {
        const std::lock_guard lock(bundle->mutex);
        const auto known = bundle->tables.find(path);
        if (known != bundle->tables.end())
            return known->second;
    }
    // Loading reports, which takes no lock along. Of two threads that load, the first one's stays.
    StringTable table = LoadTable(path);
    const std::lock_guard lock(bundle->mutex);
    return bundle->tables.emplace(path, std::move(table)).first->second;
}

} // namespace

void CFRetain(CFBundleRef bundle) {
    bundle->count.fetch_add(1, std::memory_order_relaxed);
}

void CFRelease(CFBundleRef bundle) {
    if (bundle->count.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete bundle;
}

CFBundleRef CFBundleCreate(const fs::path& path) {
    const fs::path file = path / "Contents" / "Info.json";
    std::string why;
    const std::optional<std::string> json = ReadFile(file, why);
    std::optional<BundleInfo> info;
    if (json)
        info = ParseBundleInfo(*json, why);
    if (!info) {
        ReportFile(file.string(), why);
        return nullptr;
    }
    auto* bundle = new CFBundle;
    bundle->path = path;
    bundle->resources = path / "Contents" / "Resources";
    bundle->info = *std::move(info);
    return bundle;
}

bool CFBundleRegister(const void* code) {
    const fs::path path = BundlePathOf(code);
    BundleHolder bundle(path.empty() ? nullptr : CFBundleCreate(path));
    if (!bundle)
        return false;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.registrations.push_back({ code, std::move(bundle) });
    return true;
}

void CFBundleUnregister(const void* code) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    std::erase_if(registry.registrations, [&](const Registration& r) { return r.code == code; });
}

CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    for (const Registration& registration : registry.registrations)
        if (registration.bundle->info.identifier == identifier)
            return registration.bundle.get();
    return nullptr;
}

CFBundleRef CFBundleGetMainBundle() {
    static const CFBundleRef bundle = MakeMainBundle();
    return bundle;
}

const fs::path& CFBundleGetPath(CFBundleRef bundle) {
    return bundle->path;
}
std::string CFBundleGetIdentifier(CFBundleRef bundle) {
    return bundle->info.identifier;
}
std::string CFBundleGetVersion(CFBundleRef bundle) {
    return bundle->info.version;
}

CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, std::string_view key, const char* value,
                                        const char* table) {
    const std::string file = std::string(table ? table : "Localizable") + ".strings";
    for (const std::string& language : TextContext::Current().Languages()) {
        const StringTable& strings =
            TableAt(bundle, bundle->resources / (language + ".lproj") / file);
        const auto found = strings.find(key);
        if (found != strings.end())
            return CFStringCreateWithUTF8(found->second);
    }
    return value ? CFStringCreateWithUTF8(value) : nullptr;
}

fs::path CFBundleCopyResourceURL(CFBundleRef bundle, std::string_view name, std::string_view type,
                                 std::string_view subDir) {
    fs::path file = name;
    if (!type.empty())
        file += "." + std::string(type);
    const fs::path folder = bundle->resources / subDir;
    std::vector<fs::path> places { folder };
    for (const std::string& language : TextContext::Current().Languages())
        places.push_back(folder / (language + ".lproj"));
    for (const fs::path& place : places) {
        std::error_code error;
        if (fs::exists(place / file, error))
            return place / file;
    }
    return {};
}

} // namespace platform
