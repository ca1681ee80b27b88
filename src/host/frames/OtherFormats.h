// SPDX-License-Identifier: BSD-3-Clause
// What people try to give in the place of PNG pictures, and how they come to what they want.
#pragma once

#include <filesystem>
#include <string>

namespace host {

// By the name's ending, one clause: what an input of that name needs before it can be read, or what
// makes an output of it. Empty where nothing is known of the ending.
std::string WayFrom(const std::filesystem::path& input);
std::string WayTo(const std::filesystem::path& output);

} // namespace host
