// SPDX-License-Identifier: BSD-3-Clause
// What the effect draws with: choosing, composing, splitting, drawing and blending one text. All
// static; no state.
#pragma once

#include <cstdint>

#include <epi/epi.h>

class PIOffscreen;

// A drawn text, as handed from drawing to blending.
struct _RTEXTIMAGE_INFO {
    std::int32_t width;         // pixels
    std::int32_t height;        // rows
    std::int32_t rowBytes;      // from one row to the next
    const std::uint8_t* pixels; // first byte of the stored first row
    std::uint16_t format;       // kTextImage...
};

// The layouts are asked for in this order, and the first one set decides. A pixel has 4 bytes
// whenever the third is set.
inline constexpr std::uint16_t kTextImageRgb24 = 0x1;     // 3 bytes: red, green, blue
inline constexpr std::uint16_t kTextImageBgr24 = 0x2;     // 3 bytes: blue, green, red
inline constexpr std::uint16_t kTextImageXrgb32 = 0x4;    // 4 bytes: unused, red, green, blue
inline constexpr std::uint16_t kTextImageTopDown = 0x100; // else the stored first row is the bottom

class CTextRenderer {
public:
    // Draws the text that param chooses into image. covered (may be null) receives the rectangle
    // written, in image coordinates, and (0, 0, 0, 0) when nothing is drawn. scale goes from frame to
    // image coordinates and origin is subtracted after it; a scale that is not above 0 leaves the
    // position as it stands. Always 0.
    static long DoText(PIOffscreen* image, _TEXTPARAM* param, tagRECT* covered, const char* info1,
                       const char* info2, const char* info3, const char* info4, double scale,
                       tagPOINT* origin);
    // The text for a summary, skipping empty ones. size bytes of out are cleared first; out has room
    // for 256 whatever size is.
    static void GetTextInfoText(_TEXTPARAM* param, char* out, long size, const char* info1,
                                const char* info2, const char* info3, const char* info4);

    // Splits a leading number from its suffix; false, and rest left alone, when there is none. A
    // number beyond 32 bits with a sign gives the largest of them.
    static bool SplitNumberAndString(const char* text, long* number, char* rest);
    // out has room for 256 bytes. Numbers are split off as above and printed with all their digits,
    // however many.
    static void GetScoreInfoText(char* out, long format, const char* info1, const char* info2,
                                 const char* info3, const char* info4);

    // Blends the drawn text into image with its top left at (x, y), clipped to the image.
    static void CopyTextStringImage(PIOffscreen* image, _RTEXTIMAGE_INFO* info, _TEXTPARAM* param,
                                    long x, long y);

    // True for any byte of a character of several bytes.
    static bool IsDoubleByte(const char* text, unsigned long offset);
    // Lines end with CR or CR LF; at least 1.
    static long GetLineCount(const char* text);
    // Line index (from 0) without its break; empty past the last. out has room for it and a NUL.
    static void GetLineText(char* out, const char* text, long index);
};
