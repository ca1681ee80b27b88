// SPDX-License-Identifier: BSD-3-Clause
// The placement view under the mouse and the arrow keys: panning the view and moving the text.
#include <algorithm>

#include "effect/PIHandle.h"
#include "preview/CTextEditDlg.h"
#include "preview/GridLines.h"
#include "preview/PreviewControl.h"
#include "render/Rounding.h"

namespace {

bool operator==(const PIPoint& a, const PIPoint& b) {
    return a.x == b.x && a.y == b.y;
}

} // namespace

bool CTextEditDlg::IsInText(PIPoint view) const {
    const PIRect frame = ImageToView(m_rcText);
    return view.x >= frame.left && view.y >= frame.top && view.x < frame.right &&
           view.y < frame.bottom;
}

void CTextEditDlg::ChangePreviewCursor(tagPOINT viewPoint) {
    if (IsInText({ viewPoint.x, viewPoint.y }))
        SetPreviewCursor(kArrowCursor);
    else
        SetPreviewCursor(platform::Button() ? kDragCursor : kHandCursor);
}

void CTextEditDlg::ClickPreviewArea(tagPOINT globalPoint) {
    const PIPoint start = PosScreenToView({ globalPoint.x, globalPoint.y });
    if (IsInText(start))
        Drag(start);
    else
        Pan(start);
}

// The image follows the hand.
void CTextEditDlg::Pan(PIPoint from) {
    const platform::Alive alive(m_life);
    ChangePreviewCursor({ SaturateToInt32(from.x), SaturateToInt32(from.y) });
    PIPoint last = from;
    while (alive && IsDragButton() && alive) {
        const PIPoint now = PosScreenToView(GetMousePos());
        if (now == last)
            continue;
        // Showing what was dragged draws the buffer, once for both.
        const long scrolledX = ScrollHorz(last.x - now.x, 0);
        const long scrolledY = ScrollVert(last.y - now.y, 0);
        last = now;
        if (scrolledX != 0 || scrolledY != 0)
            ShowDragged();
    }
    if (alive)
        ChangePreviewCursor({ SaturateToInt32(last.x), SaturateToInt32(last.y) });
}

void CTextEditDlg::Drag(PIPoint from) {
    PIHandle handle(m_record.pObjectProcs, m_record.pHandleProcs, m_record.hFixedParam);
    auto* param = static_cast<_TEXTPARAM*>(handle.Lock());
    if (!param)
        return;
    const platform::Alive alive(m_life);
    const PIPoint start = ImageToView(PIPoint { param->ptPos.x, param->ptPos.y });
    PIPoint last = from;
    while (alive && IsDragButton() && alive) {
        const PIPoint now = PosScreenToView(GetMousePos());
        if (now == last)
            continue;
        last = now;
        PIPoint target { start.x + now.x - from.x, start.y + now.y - from.y };
        if (m_nPreviewMode != 0 && m_nPreviewOption != 0)
            target = Snapped(target);
        if (PlaceText(param, ViewToImage(target)))
            ShowDragged();
    }
}

void CTextEditDlg::MoveText(long dx, long dy) {
    PIHandle handle(m_record.pObjectProcs, m_record.pHandleProcs, m_record.hFixedParam);
    auto* param = static_cast<_TEXTPARAM*>(handle.Lock());
    if (param && PlaceText(param, { param->ptPos.x + dx, param->ptPos.y + dy }))
        ShowDragged();
}

// To the line at or before the point, as far as there is a line behind it.
PIPoint CTextEditDlg::Snapped(PIPoint view) const {
    const auto snap = [this](long place, long size, long scroll) {
        long last = place;
        long snapped = place;
        WalkGridLines(GridStep(m_nPreviewMode), size, m_nViewScale, scroll, [&](long line) {
            if (place > last && place < line)
                snapped = last;
            last = line;
        });
        return snapped;
    };
    return { snap(view.x, m_nImageWidth, m_nScrollX), snap(view.y, m_nImageHeight, m_nScrollY) };
}

// False when it is there already.
bool CTextEditDlg::PlaceText(_TEXTPARAM* param, PIPoint position) {
    const tagPOINT place { SaturateToInt32(std::max(position.x, 0L)),
                           SaturateToInt32(std::max(position.y, 0L)) };
    if (param->ptPos.x == place.x && param->ptPos.y == place.y)
        return false;
    param->ptPos = place;
    return true;
}

void CTextEditDlg::ShowDragged() {
    UpdatePreview(1);
    if (platform::Window* const window = platform::Window::Find(m_hWindow))
        window->Invalidate(nullptr);
    DragUpdate();
}
