// SPDX-License-Identifier: BSD-3-Clause
// The options that say what text a run draws, and the text that they make of settings.
#pragma once

#include <optional>
#include <string>

#include <epi/epi.h>

#include "host/document/Document.h"
#include "host/jobs/FrameText.h"

namespace telop {

// The options as they were typed; what is not given keeps the settings' value.
struct TextOptions {
    // At most one of these four.
    std::optional<std::string> info = {}, character = {}, dialogue = {};
    std::optional<int> score = {};
    std::optional<std::string> strings = {};
    bool off = false;
    bool monologue = false;
    std::optional<std::string> font = {}, color = {}, box = {}, position = {};
    std::optional<int> size = {}, opacity = {};
};

// document, which may be null, is where the settings are from: its strings stand in for those that are
// not given. Throws a usage error that names the option when one does not fit the others, its limit or
// the settings.
host::FrameText MakeFrameText(const TextOptions& options, const _TEXTPARAM& settings,
                              const host::Document* document = nullptr);

} // namespace telop
