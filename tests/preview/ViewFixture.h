// SPDX-License-Identifier: BSD-3-Clause
// A placement view over a real pane, as the text edit dialog makes one.
#pragma once

#include "preview/CMTextPreviewStatic.h"
#include "preview/CTextEditDlg.h"
#include "preview/PreviewFixture.h"

namespace test {

class View : public CTextEditDlg {
public:
    View() : CTextEditDlg(kPreviewItem) {}

    void DragUpdate() override {
        ++shown;
        if (const auto act = onShown) // it may end this view
            act();
    }
    bool IsDragButton() override {
        platform::Point where {};
        platform::Window* const window = platform::Window::Find(m_hWindow);
        const platform::MouseTracking result =
            window ? window->TrackMouse(-1, &where) : platform::MouseTracking::kUserCancelled;
        return result != platform::MouseTracking::kMouseUp &&
               result != platform::MouseTracking::kUserCancelled;
    }
    void ZoomBy(long steps) override { SetViewScale(m_nViewScale + steps * 10, 1); }

    PIPoint Scroll() const { return { m_nScrollX, m_nScrollY }; }
    void SetScroll(std::int32_t x, std::int32_t y) {
        m_nScrollX = x;
        m_nScrollY = y;
    }
    long Scale() const { return m_nViewScale; }
    PIRect TextFrame() const { return m_rcText; }
    void SetGrid(std::int32_t mode, bool snaps) {
        m_nPreviewMode = mode;
        m_nPreviewOption = snaps ? 1 : 0;
    }

    int shown = 0;
    std::function<void()> onShown;
};

class ViewFixture : public PreviewFixture {
protected:
    // The text is a word on a box, so that its frame is plain to hit.
    void SetUp() override {
        PreviewFixture::SetUp();
        const host::Pinned<_TEXTPARAM> param(params);
        std::strcpy(param->szDialogue, "Telop\rpreview");
        param->nFontSize = 24;
        param->crText = 0x20C0F0;
        param->crBack = 0x602010;
        param->nOpacity = 50;
        param->dwFlags = TEXT_DIALOGUE | TEXT_BOX;
    }
    void TearDown() override {
        control.TermPreview();
        control.Detach();
        view.reset();
        PreviewFixture::TearDown();
    }

    // Gives what the view's start gives.
    long Start(int frameWidth, int frameHeight, int width, int height) {
        record.nFrameWidth = frameWidth;
        record.nFrameHeight = frameHeight;
        ShowPane(width, height);
        control.Attach(pane);
        control.InitPreview(nullptr);
        return view->InitializeTextDlg(&record, window, 0, 0);
    }
    void PutText(std::int32_t x, std::int32_t y) {
        host::Pinned<_TEXTPARAM>(params)->ptPos = { x, y };
        view->UpdatePreview(0);
    }
    PIPoint TextAt() {
        const tagPOINT at = host::Pinned<_TEXTPARAM>(params)->ptPos;
        return { at.x, at.y };
    }

    std::unique_ptr<View> view = std::make_unique<View>();
    CMTextPreviewStatic control { *view };
};

} // namespace test

inline bool operator==(const PIPoint& a, const PIPoint& b) {
    return a.x == b.x && a.y == b.y;
}
inline void PrintTo(const PIPoint& point, std::ostream* out) {
    *out << "(" << point.x << ", " << point.y << ")";
}
