// SPDX-License-Identifier: BSD-3-Clause
// The plug-in's texts in the user's language.
#pragma once

#include <cstddef>

// The identifier of the plug-in's bundle, in which its texts lie.
inline constexpr char kPluginBundleIdentifier[] = "org.telop.effect.text-overlay";

// Puts the text for key into buffer, in the application's text encoding, ended by a NUL and cut to
// whole characters within size bytes. A key that the tables lack is its own text. False, and buffer
// untouched, when no text came back at all. Looks into the plug-in's bundle, or into the program's
// own when the code is no part of a bundle. Any thread.
bool CopyLocalizedString(const char* key, char* buffer, std::size_t size);
