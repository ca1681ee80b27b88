// SPDX-License-Identifier: BSD-3-Clause
// Draws the run's text into one frame through the plug-in.
#pragma once

#include <string>

#include "host/Effect.h"
#include "host/frames/Frame.h"
#include "host/frames/FrameRanges.h"
#include "host/jobs/FrameText.h"
#include "platform/TextContext.h"

namespace host {

struct Placement {
    double scale = 1;
    tagPOINT origin { 0, 0 };
};

enum class FontPolicy {
    kWarn,   // others stand in for what is not installed
    kStrict, // a font or a character that is not there is a violation
};
bool IsFontViolation(const platform::Report& report);

enum class RenderResult {
    kDone,
    kFailed,       // this frame, the next may do well
    kFontViolated, // under strict fonts: the frame must not be written
};

class FrameRenderer {
public:
    // run: of the text's encoding; it is told what any frame meets. apply: the frames that get the
    // text; the others stay as they are. The references must outlive the renderer.
    FrameRenderer(const Effect& effect, const FrameText& text, platform::TextContext& run,
                  FrameRanges apply, Placement placement = {},
                  FontPolicy fonts = FontPolicy::kWarn);

    // touched: the pixels that may have changed. Any thread, each with a frame of its own.
    RenderResult Render(Frame& frame, const TokenValues& values, PixelRect& touched,
                        std::string& why) const;

private:
    const Effect& m_effect;
    const FrameText& m_text;
    platform::TextContext& m_run;
    FrameRanges m_apply;
    Placement m_placement;
    FontPolicy m_fonts;
};

} // namespace host
