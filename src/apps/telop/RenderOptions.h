// SPDX-License-Identifier: BSD-3-Clause
// The options of "telop render", as they were typed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/telop/ShotOptions.h"
#include "apps/telop/TextOptions.h"
#include "host/jobs/FrameRenderer.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

struct RenderOptions {
    std::string input, output; // both empty: only settings are saved
    std::optional<std::string> document;

    std::vector<std::string> tracks; // of the document; none: all

    std::vector<TextOptions> earlier; // before each "--then"
    TextOptions text;
    bool then = false; // stands for the help's line
    std::optional<std::string> strings;
    host::View view;
    std::optional<std::string> origin;

    std::optional<std::string> frames;
    std::optional<std::int64_t> start; // number of a stream's first frame

    ShotOptions shot;

    std::optional<std::string> settings, saveSettings, saveDocument;
    std::optional<std::string> encoding, language, fallback, plugin;
    bool strictFonts = false;

    int jobs = 0;             // 0: one for each core
    std::uint64_t memory = 0; // bytes; 0: most of what is free
    int compression;
    bool overwrite = false;
    bool skipExisting = false;
    std::optional<std::string> progress;
    bool quiet = false;

    RenderOptions();
};

// Declares them on the command, with the help that they have.
void AddRenderOptions(CLI::App& command, RenderOptions& options);

} // namespace telop
