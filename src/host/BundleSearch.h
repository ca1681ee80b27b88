// SPDX-License-Identifier: BSD-3-Clause
// Where plug-in bundles lie on this machine.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// The folder in a bundle's Contents that holds the module for this program: "Linux-x86_64".
std::string ModuleFolder();

struct BundleSearch {
    struct Place {
        std::filesystem::path path; // of the bundle that was looked for
        std::string origin;         // why there: "TELOP_PLUGIN_PATH", "user's data directory", ...
    };
    std::filesystem::path found; // the first place that is a folder; empty when there is none
    std::vector<Place> looked;   // all that were looked at, in order; found is the last one

    // For an error text: each place on a line of its own.
    std::string Describe() const;
};

// Looks for <name>.bundle in the folders of TELOP_PLUGIN_PATH (a colon list; an entry may also be
// such a bundle itself), in $XDG_DATA_HOME/telop, in the library directory of the installation that
// the program belongs to and of the configured one, and in the build tree around the program.
BundleSearch FindBundle(std::string_view name = "TextOverlay");

} // namespace host
