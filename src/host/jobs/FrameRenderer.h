// SPDX-License-Identifier: BSD-3-Clause
// Draws a shot's texts into one frame through the plug-in.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/Effect.h"
#include "host/frames/Frame.h"
#include "host/jobs/ShotText.h"
#include "host/jobs/TextPlace.h"
#include "platform/TextContext.h"

namespace host {

// The part of a frame that a picture shows, and its scale.
struct View {
    double scale = 1;         // pixels of the picture for each one of the frame
    tagPOINT origin { 0, 0 }; // the picture's top left in the scaled frame
};

enum class FontPolicy {
    kWarn,   // others stand in for what is not installed
    kStrict, // a font or a character that is not there or is cut off is a violation
};
bool IsFontViolation(const platform::Report& report);

enum class RenderResult {
    kDone,
    kFailed,       // this frame, the next may do well
    kFontViolated, // under strict fonts: the frame must not be written
};

// The room that a track's text takes in a frame: what a box fills. It may reach out of the frame.
struct TextRect {
    std::size_t track = 0; // its index in the document
    PixelRect rect;
};

class FrameRenderer {
public:
    // run: of the texts' encoding; it is told what any frame meets. view holds for texts that stand at x
    // and y; those with an anchor stand in the picture as it is. The references must outlive the
    // renderer.
    FrameRenderer(const Effect& effect, const ShotText& text, platform::TextContext& run,
                  View view = {}, FontPolicy fonts = FontPolicy::kWarn);

    // touched: the pixels that may have changed. Any thread, each with a frame of its own. Of a frame
    // that failed some texts may be drawn.
    RenderResult Render(Frame& frame, const TokenValues& values, PixelRect& touched,
                        std::string& why) const;

    // One track's text alone, in the thread's own context. False with the reason.
    bool Draw(const TrackText& track, const FrameText& text, Image& image,
              const TokenValues& values, std::string& why) const;

    // Of the texts that Render draws into a frame of this size, in the same order; without those that
    // draw nothing or cannot be drawn. Any thread.
    std::vector<TextRect> Places(Extent frame, const TokenValues& values) const;

private:
    // A text, ready for a frame.
    struct Placed {
        ResolvedText text;
        View view;
        Extent extent; // of one with an anchor, or when it is asked for
    };
    enum class Measured { kWhereNeeded, kAlways };
    bool Place(const TrackText& track, const FrameText& text, Extent frame,
               const TokenValues& values, Measured measured, Placed& placed,
               std::string& why) const;

    const Effect& m_effect;
    const ShotText& m_text;
    platform::TextContext& m_run;
    View m_view;
    FontPolicy m_fonts;
    TextMeter m_meter;
};

} // namespace host
