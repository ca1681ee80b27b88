// SPDX-License-Identifier: BSD-3-Clause
// Whether a run's texts show anywhere: what burns nothing is most often a mistake.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/frames/FrameFiles.h"
#include "host/jobs/FrameRenderer.h"
#include "host/jobs/ShotText.h"

namespace host {

// Why no frame of a run gets a text, a sentence for each track of which that is known before; a text may
// still show on none when only drawing them all could tell. files: the frames that are made, ascending;
// none for a stream. Looks into one of them for its size, and draws the text once, beside the run's text
// context.
std::vector<std::string> WhyOnNoFrame(const FrameRenderer& renderer, const ShotText& text,
                                      std::span<const FrameFile> files,
                                      const std::shared_ptr<const RunValues>& run);

} // namespace host
