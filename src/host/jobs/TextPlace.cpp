// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/TextPlace.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include "host/text/TextField.h"

namespace host {

namespace {

constexpr std::int32_t kLongest = 32767; // side of a text's picture

// What stays of a text when only the room that it takes is asked for: an opaque white box in the corner.
ResolvedText Probe(ResolvedText text) {
    text.params.ptPos = { 0, 0 };
    text.params.crText = text.params.crBack = 0xFFFFFF;
    text.params.nOpacity = 100;
    text.params.dwFlags |= TEXT_BOX;
    return text;
}

// How many pixels of a picture of one row, or of one column, the probe fills from its start.
bool Fill(const Effect& effect, const ResolvedText& probe, std::int32_t width, std::int32_t height,
          std::int32_t& filled, std::string& why) {
    const auto image = Image::Make(width, height, kRgb24);
    if (!image) {
        why = "there is no memory to measure the text";
        return false;
    }
    if (!effect.RenderWith(probe.params, *image, FrameInfoOf(probe), why))
        return false;
    const auto pixels = image->Bytes();
    filled = static_cast<std::int32_t>(std::ranges::find(pixels, 0) - pixels.begin()) / 3;
    return true;
}

// Of a side: the part that the area takes, from and to.
struct Stretch {
    std::int64_t from, to;
};
Stretch AreaOf(AnchorArea area, std::int32_t side) {
    const std::int64_t perCent = area == AnchorArea::kAction93 ? 93
                                 : area == AnchorArea::kTitle90 || area == AnchorArea::kAction90
                                     ? 90
                                 : area == AnchorArea::kTitle80 ? 80
                                                                : 100;
    // Half of what is left, to the nearest pixel.
    const std::int64_t inset = ((100 - perCent) * side + 100) / 200;
    return { inset, side - inset };
}

std::int64_t Pixels(const Margin& margin, std::int32_t side, double scale) {
    return std::llround(margin.perCent ? margin.value * side / 100 : margin.value * scale);
}

// where: -1 at the start of the area, 0 in its middle, 1 at its end.
std::int32_t Corner(int where, Stretch area, std::int64_t margin, std::int32_t extent) {
    const auto corner = where < 0   ? area.from + margin
                        : where > 0 ? area.to - margin - extent
                                    : area.from + (area.to - area.from - extent) / 2 + margin;
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int32_t>::max() / 2;
    return static_cast<std::int32_t>(std::clamp(corner, -kFarthest, kFarthest));
}

// The margin after such a move, to a hundredth. where: as of Corner.
Margin Moved(Margin margin, int where, std::int32_t by, std::int32_t side, double scale) {
    const double inwards = where > 0 ? -by : by;
    const auto value = margin.value + (margin.perCent ? inwards * 100 / side : inwards / scale);
    margin.value =
        std::clamp(std::round(value * 100) / 100, -Margin::kMarginMax, Margin::kMarginMax);
    return margin;
}

// -1, 0 or 1 on each axis.
struct Where {
    int x, y;
};
Where WhereOf(AnchorPlace place) {
    // The places stand in rows of three.
    const int number = static_cast<int>(place) - static_cast<int>(AnchorPlace::kTopLeft);
    return { number % 3 - 1, number / 3 - 1 };
}

std::int32_t Saturated(long long value) {
    return static_cast<std::int32_t>(std::clamp<long long>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

std::int32_t InProportion(std::int64_t value, std::int32_t from, std::int32_t to) {
    return Saturated(std::llround(static_cast<double>(value) * to / from));
}

} // namespace

bool TextMeter::Known::Matches(const ResolvedText& other) const {
    return std::memcmp(&text, &other, sizeof text) == 0;
}

bool TextMeter::Measure(const ResolvedText& text, Extent& extent, std::string& why) const {
    const auto probe = Probe(text);
    const auto hash =
        platform::HashBytes(0, { reinterpret_cast<const char*>(&probe), sizeof probe });
    if (const auto known = m_known.Find(hash, probe)) {
        extent = known->extent;
        return true;
    }
    if (!Fill(m_effect, probe, kLongest, 1, extent.width, why) ||
        !Fill(m_effect, probe, 1, kLongest, extent.height, why))
        return false;
    m_known.Insert(hash, std::make_shared<Known>(Known { probe, extent }));
    return true;
}

void ScaleToFrame(_TEXTPARAM& params, std::int32_t referenceHeight, std::int32_t frameHeight) {
    const auto scale = [&](std::int32_t value) {
        return InProportion(value, referenceHeight, frameHeight);
    };
    params.nFontSize = std::max(scale(params.nFontSize), 1);
    params.ptPos = { scale(params.ptPos.x), scale(params.ptPos.y) };
}

tagPOINT CornerAt(const Anchor& anchor, Extent text, Extent frame, double scale) {
    const auto where = WhereOf(anchor.place);
    return { Corner(where.x, AreaOf(anchor.area, frame.width), Pixels(anchor.x, frame.width, scale),
                    text.width),
             Corner(where.y, AreaOf(anchor.area, frame.height),
                    Pixels(anchor.y, frame.height, scale), text.height) };
}

PixelRect AreaRect(AnchorArea area, Extent frame) {
    const auto x = AreaOf(area, frame.width);
    const auto y = AreaOf(area, frame.height);
    return { static_cast<std::int32_t>(x.from), static_cast<std::int32_t>(y.from),
             static_cast<std::int32_t>(x.to), static_cast<std::int32_t>(y.to) };
}

void MoveBy(Track& track, tagPOINT by, Extent frame) {
    const auto reference = track.referenceHeight > 0 ? track.referenceHeight : frame.height;
    if (track.anchor.place == AnchorPlace::kNone) {
        const auto moved = [&](std::int32_t from, std::int32_t way) {
            return Saturated(std::int64_t { from } + InProportion(way, frame.height, reference));
        };
        auto& corner = track.settings.ptPos;
        corner = { moved(corner.x, by.x), moved(corner.y, by.y) };
        return;
    }
    const auto where = WhereOf(track.anchor.place);
    const auto scale = static_cast<double>(frame.height) / reference;
    track.anchor.x = Moved(track.anchor.x, where.x, by.x, frame.width, scale);
    track.anchor.y = Moved(track.anchor.y, where.y, by.y, frame.height, scale);
}

} // namespace host
