// SPDX-License-Identifier: BSD-3-Clause
// Which lines of the placement grid are shown: those that lie far enough from the last one shown.
#pragma once

#include <optional>

// Image pixels between two lines in a preview mode other than 0.
inline long GridStep(long previewMode) {
    return previewMode == 1 ? 40 : 20;
}

// Walks the lines of one axis from the frame's edge. toView turns a line's place in the image into
// its place in the view; visit gets the latter of each shown line and says whether to go on.
template <class ToView, class Visit>
void WalkGridLines(long step, long imageSize, ToView toView, Visit visit) {
    std::optional<long> last;
    for (long place = 0; place < imageSize; place += step) {
        const long view = toView(place);
        // Zoomed out, lines would crowd; these distances keep half a step between them.
        if (last && view < *last + step / 2)
            continue;
        if (!visit(view))
            return;
        last = view;
    }
}
