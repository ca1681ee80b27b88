// SPDX-License-Identifier: BSD-3-Clause
// The plug-in, its effect, documents and other files, as every command finds, loads and saves them.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/Effect.h"
#include "host/Plugin.h"
#include "host/document/Document.h"

namespace telop {

// The name of the plug-in's bundle, without ".bundle".
inline constexpr const char* kBundleName = "TextOverlay";

// The bundle at the path, or the one that is found where bundles lie. Throws when it cannot be used.
std::shared_ptr<host::Plugin> LoadPlugin(const std::optional<std::string>& bundle);

// Its effect with the plug-in's defaults, or with those of a settings file. Throws.
std::unique_ptr<host::Effect> LoadEffect(const std::optional<std::string>& bundle,
                                         const std::optional<std::string>& settings);

// The bytes of a file, "-" is standard input. Throws when they cannot be read or are more.
std::string ReadText(const std::string& file, std::size_t maxSize);

// Throws when it is no document, and says what it is instead where that can be seen.
host::Document LoadDocument(const std::string& file);
// For messages: 'Dialogue', 'Names'.
std::string TrackNames(const host::Document& document);

// Throws when the file is there and overwrite is not asked for.
void RefuseExisting(const std::string& file, bool overwrite);
// Writes the effect's settings. Throws when the file is there and overwrite is not asked for.
void SaveSettings(const host::Effect& effect, const std::string& file, bool overwrite);

// Sets the application's text encoding where one is given. Throws a usage error for an unknown one.
void SetEncoding(const std::optional<std::string>& name);

} // namespace telop
