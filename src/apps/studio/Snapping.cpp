// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Snapping.h"

#include <cstdlib>

#include "host/jobs/TextPlace.h"

namespace studio {

namespace {

// A rectangle's part of one axis.
struct Side {
    int from, length;
    int Line(int which) const { return from + which * length / 2; } // 0 start, 1 middle, 2 end
};
Side Across(const QRect& rect) {
    return { rect.left(), rect.width() };
}
Side Down(const QRect& rect) {
    return { rect.top(), rect.height() };
}

// The nearest rest of one axis.
class Rest {
public:
    Rest(Side moved, int reach) : m_moved(moved), m_reach(reach) {}

    // line: one of the moved rectangle that comes to lie on the other.
    void Try(int line, int target) {
        const int by = target - m_moved.Line(line);
        if (std::abs(by) <= m_reach && (!m_line || std::abs(by) < std::abs(m_by))) {
            m_by = by;
            m_line = target;
        }
    }
    void TryArea(Side area) {
        Try(0, area.Line(0));
        Try(2, area.Line(2));
    }
    void TryText(Side text) {
        for (const int own : { 0, 2 })
            for (const int other : { 0, 2 })
                Try(own, text.Line(other));
        Try(1, text.Line(1));
    }

    int By() const { return m_by; }
    std::optional<int> Line() const { return m_line; }

private:
    Side m_moved;
    int m_reach;
    int m_by = 0;
    std::optional<int> m_line;
};

} // namespace

QRect AreaIn(QSize frame, host::AnchorArea area) {
    const auto rect = host::AreaRect(area, { frame.width(), frame.height() });
    return { rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top };
}

Snapped Snap(const QRect& start, QPoint by, int reach, QSize frame, host::AnchorArea area,
             std::span<const QRect> others) {
    const auto moved = start.translated(by);
    Rest x(Across(moved), reach);
    Rest y(Down(moved), reach);
    x.Try(1, frame.width() / 2);
    y.Try(1, frame.height() / 2);
    for (const auto each : { host::AnchorArea::kFrame, host::AnchorArea::kTitle90,
                             host::AnchorArea::kAction93, area }) {
        x.TryArea(Across(AreaIn(frame, each)));
        y.TryArea(Down(AreaIn(frame, each)));
    }
    for (const auto& other : others) {
        x.TryText(Across(other));
        y.TryText(Down(other));
    }
    return { by + QPoint(x.By(), y.By()), x.Line(), y.Line() };
}

} // namespace studio
