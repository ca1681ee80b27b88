// SPDX-License-Identifier: BSD-3-Clause
#include "host/BundleSearch.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "host/Message.h"

namespace host {

namespace fs = std::filesystem;

namespace {

std::string Environment(const char* name) {
    const auto* value = std::getenv(name);
    return value ? value : "";
}

fs::path ProgramFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

// The tree that made the program, while the program still lies in it. An installed one takes nothing
// from a build that happens to be above it.
fs::path BuildTree(const fs::path& program) {
    std::error_code error;
    const fs::path tree = fs::weakly_canonical(TELOP_BUILD_TREE, error);
    const fs::path within = program.lexically_relative(tree);
    return within.empty() || *within.begin() == ".." ? fs::path() : tree;
}

// $XDG_DATA_HOME counts only when it is absolute.
fs::path UserDataFolder() {
    fs::path data = Environment("XDG_DATA_HOME");
    if (data.is_absolute())
        return data;
    const auto home = Environment("HOME");
    return home.empty() ? fs::path() : fs::path(home) / ".local/share";
}

using Places = std::vector<BundleSearch::Place>;

// An installed program finds its library directory in two ways, but it is looked at once.
void Add(Places& places, const fs::path& path, const char* origin) {
    const auto place = path.lexically_normal();
    if (std::ranges::find(places, place, &BundleSearch::Place::path) == places.end())
        places.push_back({ place, origin });
}

void AddPluginPath(Places& places, const std::string& bundle) {
    const auto list = Environment("TELOP_PLUGIN_PATH");
    for (std::size_t start = 0; start < list.size();) {
        const auto end = std::min(list.find(':', start), list.size());
        fs::path entry = list.substr(start, end - start);
        if (!entry.empty() && !entry.has_filename())
            entry = entry.parent_path(); // "x.bundle/" means the bundle as well
        if (!entry.empty())
            Add(places, entry.filename() == bundle ? entry : entry / bundle, "TELOP_PLUGIN_PATH");
        start = end + 1;
    }
}

Places PlacesOf(const std::string& bundle) {
    Places places;
    AddPluginPath(places, bundle);
    const auto installed = fs::path("telop") / bundle;
    const auto program = ProgramFolder();
    if (const auto data = UserDataFolder(); !data.empty())
        Add(places, data / installed, "the user's data directory");
    if (!program.empty())
        Add(places, program / TELOP_BINDIR_TO_LIBDIR / installed, "the program's installation");
    Add(places, TELOP_LIBDIR / installed, "the library directory");
    if (const auto tree = BuildTree(program); !tree.empty())
        Add(places, tree / bundle, "the build tree");
    return places;
}

} // namespace

std::string ModuleFolder() {
    return "Linux-" TELOP_MACHINE;
}

std::string BundleSearch::Describe() const {
    std::string text;
    for (const auto& place : looked)
        text += "  " + Printable(place.path.native()) + " (" + place.origin + ")\n";
    return text;
}

BundleSearch FindBundle(std::string_view name) {
    BundleSearch search;
    for (auto& place : PlacesOf(std::string(name) + ".bundle")) {
        std::error_code error;
        search.looked.push_back(std::move(place));
        if (!fs::is_directory(search.looked.back().path, error))
            continue;
        search.found = search.looked.back().path;
        break;
    }
    return search;
}

} // namespace host
