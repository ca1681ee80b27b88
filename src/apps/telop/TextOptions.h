// SPDX-License-Identifier: BSD-3-Clause
// The options that say what a text is, how it looks, where it stands and when, and the track that they
// make of another.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/document/Document.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

// The options as they were typed; what is not given keeps what the track has.
struct TextOptions {
    // At most one of these four.
    std::optional<std::string> info = {}, character = {}, dialogue = {};
    std::optional<int> score = {};
    bool off = false;
    bool monologue = false;
    std::optional<std::string> font = {}, color = {}, box = {}, position = {};
    std::optional<int> size = {}, opacity = {};
    std::optional<std::string> anchor = {}, margin = {}, apply = {};
    std::optional<int> referenceHeight = {};

    bool operator==(const TextOptions&) const = default;
};

// Declares them on a command, with the help that they have.
void AddTextOptions(CLI::App& command, TextOptions& text);

// Takes the texts that end with "--then" out of a command's arguments: the options that say what they
// are. What else stands among them stays, for the last text is that of the command itself.
std::vector<TextOptions> TakeEarlierTexts(std::vector<std::string>& arguments);

// Throws a usage error that names the option when one does not fit the others, its limit or the track.
host::Track MakeTrack(const TextOptions& options, host::Track track,
                      const host::Defines& defines = {});

// "A,B,C,D" for the parts of the document's score lines.
void SetStrings(host::Document& document, const std::string& strings);

} // namespace telop
