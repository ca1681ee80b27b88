// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/TextGrip.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <utility>

namespace studio {

void TextGrip::SetTexts(std::vector<Text> texts, QSize frame) {
    m_texts = std::move(texts);
    m_frame = frame;
}

const TextGrip::Text* TextGrip::At(QPointF point) const {
    const QPoint pixel(static_cast<int>(std::floor(point.x())),
                       static_cast<int>(std::floor(point.y())));
    const Text* found = nullptr;
    for (const auto& text : m_texts | std::views::reverse)
        if (text.rect.contains(pixel) && (!found || (found->isLocked && !text.isLocked)))
            found = &text;
    return found;
}

const TextGrip::Text* TextGrip::Taken() const {
    const auto found =
        std::ranges::find_if(m_texts, [this](const Text& text) { return text.track == m_taken; });
    return found == m_texts.end() ? nullptr : &*found;
}

bool TextGrip::Hold(QPointF point) {
    const auto* const text = Taken();
    if (!text || text->isLocked)
        return false;
    m_drag = Drag { point, text->rect, text->area, {}, false, {} };
    for (const auto& other : m_texts)
        if (&other != text)
            m_drag->others.push_back(other.rect);
    return true;
}

QPoint TextGrip::MoveTo(QPointF point, const Way& way) {
    auto& drag = *m_drag;
    auto by = (point - drag.from).toPoint();
    drag.moves = drag.moves || by.manhattanLength() > way.slack;
    if (!drag.moves)
        return {};
    const bool isAcross = std::abs(by.x()) >= std::abs(by.y());
    if (way.isOneAxis)
        (isAcross ? by.ry() : by.rx()) = 0;
    drag.rest = { by, {}, {} };
    if (way.reach > 0)
        drag.rest = Snap(drag.start, by, way.reach, m_frame, drag.area, drag.others);
    if (way.isOneAxis) {
        (isAcross ? drag.rest.by.ry() : drag.rest.by.rx()) = 0;
        (isAcross ? drag.rest.y : drag.rest.x).reset();
    }
    return drag.rest.by;
}

QPoint TextGrip::LetGo() {
    const auto drag = std::exchange(m_drag, std::nullopt);
    return drag ? drag->rest.by : QPoint();
}

} // namespace studio
