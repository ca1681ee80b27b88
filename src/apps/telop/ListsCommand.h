// SPDX-License-Identifier: BSD-3-Clause
// "telop lists": shows files of reusable texts, takes them into the lists of a host's settings, and
// makes them from other files.
#pragma once

#include <optional>
#include <string>

#include "apps/telop/CommandError.h"
#include "apps/telop/ListsFile.h"
#include "host/document/ListsJson.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

struct ListsOptions {
    enum class Action { kShow, kLoad, kSave };
    Action action = Action::kShow;
    std::string file;                            // "-": standard input or output
    std::optional<std::string> encoding, plugin; // encoding: of the file's texts
    host::ListOf list = host::ListOf::kInfo;
    bool asJson = false; // show
    // load
    std::optional<std::string> into; // JSON of lists to start from; else the plug-in's defaults
    std::optional<std::string> output;
    // save; all but `json` read lines
    std::optional<std::string> from, fromEncoding, json;
    LineEnds lineEnds = LineEnds::kCr;
    bool cut = false;

    bool overwrite = false;
};

void AddListsOptions(CLI::App& command, ListsOptions& options);
ExitCode RunLists(const ListsOptions& options);

} // namespace telop
