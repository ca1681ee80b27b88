// SPDX-License-Identifier: BSD-3-Clause
// Draws the run's text into one frame through the plug-in.
#pragma once

#include <memory>
#include <string>

#include "apps/telop/FontWatch.h"
#include "apps/telop/FrameText.h"
#include "host/Effect.h"
#include "host/frames/Frame.h"
#include "host/frames/FrameRanges.h"

namespace telop {

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
    // apply: the frames that get the text; the others stay as they are. The references must outlive
    // the renderer.
    FrameRenderer(const host::Effect& effect, const FrameText& text, host::FrameRanges apply,
                  Placement placement, const FontWatch& fonts);

    // touched: the pixels that may have changed. Any thread, each with a frame of its own.
    RenderResult Render(host::Frame& frame, const host::TokenValues& values,
                        host::PixelRect& touched, std::string& why) const;

private:
    const host::Effect& m_effect;
    const FrameText& m_text;
    host::FrameRanges m_apply;
    Placement m_placement;
    const FontWatch& m_fonts;
};

} // namespace telop
