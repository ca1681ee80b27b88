// SPDX-License-Identifier: BSD-3-Clause
// Draws the run's text into one frame through the plug-in.
#pragma once

#include <string>

#include "host/Effect.h"
#include "host/frames/Frame.h"
#include "host/frames/FrameRanges.h"
#include "host/jobs/FontWatch.h"
#include "host/jobs/FrameText.h"

namespace host {

struct Placement {
    double scale = 1;
    tagPOINT origin { 0, 0 };
};

enum class RenderResult {
    kDone,
    kFailed,       // this frame, the next may do well
    kFontViolated, // under strict fonts: the frame must not be written
};

class FrameRenderer {
public:
    // apply: the frames that get the text; the others stay as they are. fonts, which may be null, and
    // the references must outlive the renderer.
    FrameRenderer(const Effect& effect, const FrameText& text, FrameRanges apply,
                  Placement placement = {}, const FontWatch* fonts = nullptr);

    // touched: the pixels that may have changed. Any thread, each with a frame of its own.
    RenderResult Render(Frame& frame, const TokenValues& values, PixelRect& touched,
                        std::string& why) const;

private:
    const Effect& m_effect;
    const FrameText& m_text;
    FrameRanges m_apply;
    Placement m_placement;
    const FontWatch* m_fonts;
};

} // namespace host
