// SPDX-License-Identifier: BSD-3-Clause
// Where the dialogs find their forms, cursors and texts.
#pragma once

#include <string_view>

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "platform/CoreFoundation.h"

// Lent; null when this code is no part of a bundle, and then the program's own bundle is asked.
platform::CFBundleRef PluginBundle();
// The text for the key in the user's language.
HuxString PluginText(std::string_view key);
