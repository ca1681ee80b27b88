// SPDX-License-Identifier: BSD-3-Clause
// Pictures of what the renderers draw, for the eye: a measurement says little if they do not draw
// the same.
#pragma once

#include <string>

namespace bench {

// Writes one PNG for each case into the folder (made when missing), with a strip for each renderer.
// False, with the reason on standard error, when one cannot be written or drawn.
bool WriteSheets(const std::string& folder);

} // namespace bench
