// SPDX-License-Identifier: BSD-3-Clause
// The texts in the shown frame as a hand takes them: which one the mouse is on, the one that is taken,
// and its way while it is dragged. In pixels of the frame; knows no widget.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QPointF>
#include <QRect>

#include "apps/studio/Snapping.h"
#include "host/document/Track.h"

namespace studio {

class TextGrip {
public:
    struct Text {
        std::size_t track = 0;
        QRect rect; // the room that it takes
        bool isLocked = false;
        host::AnchorArea area = host::AnchorArea::kFrame;
    };
    // How the mouse moves a text.
    struct Way {
        int slack = 0;          // what is no movement yet
        int reach = 0;          // how far a place of rest draws; 0: not at all
        bool isOneAxis = false; // the one on which it went farther
    };

    // As they are drawn, the last one over the others.
    void SetTexts(std::vector<Text> texts, QSize frame);
    QSize Frame() const { return m_frame; }

    // The one that a hand at this point takes: the topmost that is not locked, else the topmost.
    const Text* At(QPointF point) const;
    // The taken track, if the frame shows its text; null otherwise.
    const Text* Taken() const;
    void Take(std::optional<std::size_t> track) { m_taken = track; }

    // Begins to drag the taken text. False: there is none, or it is locked.
    bool Hold(QPointF point);
    bool IsHeld() const { return m_drag.has_value(); }
    // By how much the text is moved now.
    QPoint MoveTo(QPointF point, const Way& way);
    // Ends the drag.
    QPoint LetGo();
    // Where it rests while it is dragged.
    Snapped Rest() const { return m_drag ? m_drag->rest : Snapped {}; }

private:
    struct Drag {
        QPointF from;
        QRect start;
        host::AnchorArea area;
        std::vector<QRect> others;
        bool moves = false;
        Snapped rest;
    };

    std::vector<Text> m_texts;
    QSize m_frame;
    std::optional<std::size_t> m_taken;
    std::optional<Drag> m_drag;
};

} // namespace studio
