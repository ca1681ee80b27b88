// SPDX-License-Identifier: BSD-3-Clause
// The placement view: renders the text over the current frame, shows a zoomed and scrolled part of it
// with a grid and a frame around the text, and turns drags into panning or into moving the text.
//
// Three kinds of coordinates: image pixels (the frame at scale 1), view pixels (of the preview area,
// from its top left), and global ones of the desktop. A view pixel is m_nViewScale per cent of an
// image pixel, less the scroll position. User-interface thread only.
#pragma once

#include <cstdint>
#include <memory>

#include <epi/epi.h>

#include "platform/Lifetime.h"
#include "platform/ui/Windows.h"
#include "render/PIOffscreen.h"

struct PIPoint {
    long x, y;
};
struct PIRect {
    long left, top, right, bottom; // right and bottom lie outside
};

class CTextEditDlg {
public:
    // The number of the preview's control in its window.
    explicit CTextEditDlg(long previewItem);
    virtual ~CTextEditDlg();

    // The user drags: show the preview now.
    virtual void DragUpdate() = 0;
    // Waits for the mouse to do something; true while its button is down.
    virtual bool IsDragButton() = 0;
    // One step larger (1) or smaller (-1).
    virtual void ZoomBy(long steps) = 0;

    // Starts at 100 % with the frame's centre in the middle of the area. Non-zero when there is a
    // buffer and a work image; otherwise everything below does nothing.
    long InitializeTextDlg(_EPIRECORD* record, platform::WindowRef window, long mode, long option);
    void TerminateTextDlg();
    // Another frame size, other strings: what the host's record says now.
    void RefreshRecord(const _EPIRECORD& record);
    // The preview control has this size now: a buffer of that size. A view that the user has not
    // zoomed shows the whole frame again, any other keeps its centre.
    void FitArea(long width, long height);
    platform::GWorldPtr Buffer() const { return m_offscreen; } // null when there is none

    // The frame shown behind the text; null is white. Owned from now on when own is not 0.
    void SetBkImage(PIOffscreen* image, long own);

    // Renders the text anew and draws the buffer; invalidate not 0 lets the control show it.
    void UpdatePreview(long invalidate);
    void DrawOffscreen();
    void InvalPreviewArea();

    void SetViewScale(long scale, long redraw);
    // 1 when the position changed.
    long ScrollHorz(long delta, long redraw);
    long ScrollVert(long delta, long redraw);
    void WholeSizeView(long redraw);

    void ChangePreviewCursor(tagPOINT viewPoint);
    // A button went down there; returns when it is up again.
    void ClickPreviewArea(tagPOINT globalPoint);
    // Moves the text by image pixels, not beyond the frame's left and top.
    void MoveText(long dx, long dy);

    PIPoint ImageToView(PIPoint point) const;
    PIRect ImageToView(PIRect rect) const;
    PIPoint ViewToImage(PIPoint point) const;
    PIRect ViewToImage(PIRect rect) const;
    PIPoint PosScreenToView(PIPoint global) const;
    static PIPoint GetMousePos();
    long GetViewWidth() const;
    long GetViewHeight() const;

    static void PaintRect(platform::CGrafPtr port, const tagRECT* rect, COLORREF color);
    static void FrameRect(platform::CGrafPtr port, const tagRECT* rect, COLORREF color);
    // A horizontal or vertical line, width pixels thick to the right of or below its points.
    static void DrawLine(platform::CGrafPtr port, long x1, long y1, long x2, long y2, long width,
                         COLORREF color);
    static void CreateOffscreen(platform::WindowRef window, platform::GWorldPtr* port, long width,
                                long height, platform::OSStatus* error);
    static void DestroyOffscreen(platform::GWorldPtr port);

protected:
    void Redraw() { // what is shown already, as the view stands now
        DrawOffscreen();
        InvalPreviewArea();
    }

    _EPIRECORD m_record {};
    platform::WindowRef m_hWindow = nullptr;
    platform::GWorldPtr m_offscreen = nullptr;
    std::unique_ptr<PIOffscreen> m_pWorkImage;
    PIOffscreen* m_pBkImage = nullptr;
    std::int32_t m_nImageWidth = 0, m_nImageHeight = 0;
    std::int32_t m_nViewScale = 0; // per cent
    std::int32_t m_nScrollX = 0, m_nScrollY = 0;
    PIRect m_rcText {}; // image pixels
    tagRECT m_rcArea {};
    std::int32_t m_nPreviewMode = 0;   // grid: 0 none, 1 of 40 image pixels, else of 20
    std::int32_t m_nPreviewOption = 0; // not 0: moving the text snaps to the grid
    std::int32_t m_nPreviewItem;

private:
    bool MakeBuffer(long width, long height);
    void ScrollTo(PIPoint center); // of the image
    long Scroll(std::int32_t& position, long delta, long area, long view, long redraw);
    void CopyBackground();
    void RenderText(_TEXTPARAM* param);
    PIRect VisiblePart() const; // of the frame, in image pixels
    // False when nothing could be drawn.
    bool DrawWorkImage(const tagRECT& visible, const tagRECT& place) const;
    void PaintAround(const tagRECT& place) const;
    void DrawGrid() const;
    bool IsInText(PIPoint view) const;
    void Pan(PIPoint from);
    void Drag(PIPoint from);
    PIPoint Snapped(PIPoint view) const;
    static bool PlaceText(_TEXTPARAM* param, PIPoint position);
    void ShowDragged();

    bool m_isWholeView = false; // as WholeSizeView left it
    std::unique_ptr<PIOffscreen> m_ownedBkImage;
    // Ends with this object: a host may destroy the dialog while the user drags.
    platform::Lifetime m_life;
};
