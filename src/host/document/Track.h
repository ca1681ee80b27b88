// SPDX-License-Identifier: BSD-3-Clause
// One of the texts of a shot: how it looks, where it stands, on which frames it is on, and what it says.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <epi/epi.h>

#include "host/frames/FrameRanges.h"

namespace host {

// What a track says from one frame to another, in the place of its one text.
struct Cue {
    std::int64_t first = 0; // both belong to it; first is not above last
    std::int64_t last = 0;
    std::string text;      // UTF-8 with tokens; LF ends a line
    std::string character; // who says it; the same

    bool Contains(std::int64_t frame) const { return first <= frame && frame <= last; }
    bool operator==(const Cue&) const = default;
};

// Where in an area a text stands. The first one: where the settings' own x and y say.
enum class AnchorPlace : std::uint8_t {
    kNone,
    kTopLeft,
    kTop,
    kTopRight,
    kLeft,
    kCentre,
    kRight,
    kBottomLeft,
    kBottom,
    kBottomRight
};

// The frame, or the part of it in its middle that such a share of its sides leaves: those of SMPTE
// ST 2046-1 for action and title, and those of older receivers.
enum class AnchorArea : std::uint8_t { kFrame, kAction93, kTitle90, kAction90, kTitle80 };

struct Margin {
    double value = 0;     // -kMarginMax to kMarginMax; inwards, and right or down of the middle
    bool perCent = false; // of the frame's width or height; else pixels

    static constexpr double kMarginMax = 1e6;
    bool operator==(const Margin&) const = default;
};

struct Anchor {
    AnchorPlace place = AnchorPlace::kNone;
    AnchorArea area = AnchorArea::kFrame;
    Margin x, y;

    bool operator==(const Anchor&) const = default;
};

struct Track {
    std::string name; // UTF-8, for people
    // The look, x and y, and the text where there are no cues, all as the effect has them but for
    // tokens, which a text may have.
    _TEXTPARAM settings {};
    Anchor anchor;
    // Sizes, x and y and margins in pixels are those of a frame of this height, and other frames get
    // them in proportion. 0: of every frame.
    std::int32_t referenceHeight = 0;
    FrameRanges on = FrameRanges::All();
    bool isShown = true;   // false: on no frame
    bool isLocked = false; // not to be changed by hand
    // In the order of their first frames. Where there are any, frames without one get no text.
    std::vector<Cue> cues;

    // The one of that frame; of several the one that begins last. Null: none.
    const Cue* CueAt(std::int64_t frame) const;
    // After changes by hand.
    void SortCues();
    // Every byte of the settings counts.
    bool operator==(const Track& other) const;

    static constexpr std::int32_t kReferenceHeightMax = 32767;
};

inline constexpr std::size_t kMaxTracks = 1000; // of a document

// The text of settings that is drawn, as the effect chooses it.
enum class TextKind : std::uint8_t { kScore, kInfo, kCharacter, kDialogue, kNone };
TextKind KindOf(const _TEXTPARAM& settings);
// What the cue puts in its place; the score line has none.
const std::string& CueText(const Cue& cue, TextKind kind);

// "bottom-left", "none", ...; nothing for an unknown name. Areas: "frame", "action", "title",
// "action90", "title80".
std::string_view NameOf(AnchorPlace place);
std::string_view NameOf(AnchorArea area);
bool PlaceNamed(std::string_view name, AnchorPlace& place);
bool AreaNamed(std::string_view name, AnchorArea& area);
// "10", "2.5%". False when it is neither, or outside the bounds.
std::string MarginText(const Margin& margin);
bool MarginFrom(std::string_view text, Margin& margin);

} // namespace host
