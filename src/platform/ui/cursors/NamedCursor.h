// SPDX-License-Identifier: BSD-3-Clause
// A cursor made from pixels: its drawings for screens of several densities, and what the display
// gets of them.
#pragma once

#include <utility>
#include <vector>

#include <QCursor>
#include <QImage>
#include <QPoint>

#include "platform/Status.h"

namespace platform {

// Makes the surrounding white transparent, and the shape's outermost pixels by their share of white.
// The image is ARGB32 and opaque.
void ClearSurround(QImage& image);

class NamedCursor {
public:
    // The base drawing has one pixel for each unit of the user's scaling.
    NamedCursor(QImage base, QPoint hotSpot);

    // kParamErr unless larger than the base and of its proportions.
    OSStatus AddDensity(QImage image);
    // Lent until the next call.
    const QCursor& At(double devicePixelRatio);

private:
    QCursor Make(double devicePixelRatio) const;
    const QImage& DrawingFor(double devicePixelRatio) const;

    std::vector<QImage> m_images; // narrowest first; the first is the base
    QPoint m_hotSpot;             // in pixels of the base
    std::vector<std::pair<double, QCursor>> m_made;
};

} // namespace platform
