// SPDX-License-Identifier: BSD-3-Clause
// Which lines of the placement grid are shown: those that lie far enough from the last one shown.
#pragma once

#include <optional>

#include "render/Rounding.h"

// Image pixels between two lines in a preview mode other than 0.
inline long GridStep(long previewMode) {
    return previewMode == 1 ? 40 : 20;
}

// Walks the lines of one axis from the frame's edge. visit gets the place in the view of each line
// that is shown.
template <class Visit>
void WalkGridLines(long step, long imageSize, long scale, long scroll, Visit visit) {
    std::optional<long> last;
    for (long place = 0; place < imageSize; place += step) {
        const long view = piMulDiv(place, scale, 100) - scroll;
        // Zoomed out, lines would crowd; these distances keep half a step between them.
        if (last && view < *last + step / 2)
            continue;
        visit(view);
        last = view;
    }
}
