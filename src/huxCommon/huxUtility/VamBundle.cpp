// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/VamBundle.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kPictHeaderBytes = 512;
// A picture that is larger is a mistake.
constexpr std::uintmax_t kMaxPictBytes = std::uintmax_t { 64 } << 20;

std::string TextOf(platform::CFStringRef string) {
    return string ? std::string(platform::CFStringGetUTF8(string)) : std::string();
}

platform::CFBundleRef BundleOrMain(platform::CFBundleRef bundle) {
    return bundle ? bundle : platform::CFBundleGetMainBundle();
}

// Empty when there is none.
fs::path ResourceFile(platform::CFBundleRef bundle, platform::CFStringRef name,
                      const std::string& type, platform::CFStringRef subDir) {
    const std::string stem = TextOf(name);
    if (stem.empty())
        return {};
    return platform::CFBundleCopyResourceURL(BundleOrMain(bundle), stem, type, TextOf(subDir));
}

} // namespace

platform::CFBundleRef vamCreateBundleCommonResource(platform::CFStringRef name) {
    const std::string stem = TextOf(name);
    if (stem.empty())
        return nullptr;
    const fs::path program = platform::CFBundleGetPath(platform::CFBundleGetMainBundle());
    const fs::path bundle = program / "Contents" / "Frameworks" / (stem + ".bundle");
    std::error_code error;
    return fs::is_directory(bundle, error) ? platform::CFBundleCreate(bundle) : nullptr;
}

platform::CFStringRef vamLoadStringFromBundle(platform::CFBundleRef bundle,
                                              platform::CFStringRef key) {
    const std::string text = TextOf(key);
    return platform::CFBundleCopyLocalizedString(BundleOrMain(bundle), text, text.c_str(), nullptr);
}

platform::PicHandle vamLoadPictFromBundle(platform::CFBundleRef bundle, platform::CFStringRef name,
                                          platform::CFStringRef subDir) {
    const fs::path path = ResourceFile(bundle, name, "pct", subDir);
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size <= kPictHeaderBytes || size > kMaxPictBytes)
        return nullptr;
    std::vector<std::uint8_t> data(static_cast<std::size_t>(size - kPictHeaderBytes));
    const auto length = static_cast<std::streamsize>(data.size());
    std::ifstream file(path, std::ios::binary);
    file.seekg(kPictHeaderBytes);
    if (!file.read(reinterpret_cast<char*>(data.data()), length))
        return nullptr;
    return platform::NewPicture(data);
}

bool vamGetResourceFSRefFromBundle(FSRef* out, platform::CFBundleRef bundle,
                                   platform::CFStringRef name, platform::CFStringRef type,
                                   platform::CFStringRef subDir) {
    const std::string path = ResourceFile(bundle, name, TextOf(type), subDir).string();
    if (path.empty() || path.size() >= sizeof out->path)
        return false;
    *out = {};
    path.copy(out->path, path.size());
    return true;
}
