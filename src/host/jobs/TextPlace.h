// SPDX-License-Identifier: BSD-3-Clause
// Where a track's text stands in a frame, and how large it is there.
#pragma once

#include <cstdint>
#include <string>

#include "host/Effect.h"
#include "host/document/Track.h"
#include "host/frames/Frame.h"
#include "host/jobs/FrameText.h"
#include "platform/LruCache.h"

namespace host {

struct Extent {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// Asks the effect how large a text is, and remembers what it was told. Of one text context.
class TextMeter {
public:
    // The effect must outlive it.
    explicit TextMeter(const Effect& effect) : m_effect(effect) {}

    // The pixels that the effect fills where the text stands on a box, which is the room that it takes
    // in any case. Empty for a text that draws nothing. False with the reason when it cannot be drawn.
    // Any thread.
    bool Measure(const ResolvedText& text, Extent& extent, std::string& why) const;

private:
    struct Known {
        ResolvedText text;
        Extent extent;

        bool Matches(const ResolvedText& other) const;
        std::int64_t Bytes() const { return sizeof *this; }
    };
    static constexpr std::int64_t kCacheBytes = std::int64_t { 1 } << 18;

    const Effect& m_effect;
    mutable platform::LruCache<Known> m_known { kCacheBytes, 1 };
};

// Size, x and y as they are in a frame of this height; a size is at least 1.
void ScaleToFrame(_TEXTPARAM& params, std::int32_t referenceHeight, std::int32_t frameHeight);

// The top left corner that puts a text of this extent to its anchor. Margins in pixels are multiplied by
// scale. A text that is larger than the area sticks out on the side that it is not anchored to, and of
// a middle on both.
tagPOINT CornerAt(const Anchor& anchor, Extent text, Extent frame, double scale);

// The area in a frame.
PixelRect AreaRect(AnchorArea area, Extent frame);

// Moves the track's text by so many pixels of such a frame: its x and y, or its margins. Of what is kept
// in other units the nearest value.
void MoveBy(Track& track, tagPOINT by, Extent frame);

} // namespace host
