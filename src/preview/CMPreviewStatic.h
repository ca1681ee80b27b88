// SPDX-License-Identifier: BSD-3-Clause
// A zoomable preview control for any effect: shows an image of the host at one of six steps, lets the
// user pan what is larger than the control with a hand, and runs the effect's filter on the part that
// is seen. User-interface thread only.
#pragma once

#include <cstdint>
#include <memory>

#include <epi/epi.h>

#include "preview/PreviewControl.h"
#include "render/PIOffscreen.h"

class CMPreviewStatic : public PreviewControl {
public:
    ~CMPreviewStatic() override;

    // Once, after Attach. The record outlives this wrapper; the bundle has the cursors.
    virtual void Init(_EPIRECORD* record, platform::CFBundleRef bundle);
    virtual void UpdatePreview();
    // The effect's own filter on the visible part of the image; does nothing by itself.
    virtual void DoFilter(PIOffscreen* image, tagRECT visible);
    platform::OSStatus HandleControlDraw(platform::EventRef event) override;
    platform::OSStatus HandleControlTrack(platform::EventRef event) override;
    platform::OSStatus HandleDispatcherEvent(platform::EventRef event) override;
    virtual void SetToolCursor();

    // The image is copied.
    void SetImage(PIOffscreen& image);
    void ShowPreview(long show, long redraw);
    // 0: one step smaller; else one larger. As SetViewScale.
    bool ShiftViewScale(long direction);
    // 0 (100 %) to 5 (12.5 %). False when nothing changes.
    bool SetViewScale(long index);
    long GetPreviewWidth() const;
    long GetPreviewHeight() const;
    tagPOINT GetPreviewCenter() const; // of what is seen, in preview pixels

private:
    bool HasBuffer();
    void FitFirstImage();
    void KeepOffsets();
    void MakePreviewImages();
    tagRECT VisibleRect() const;
    void DrawVisible();
    void Track(platform::Point start);
    void PanTo(tagPOINT offset);

    _EPIRECORD* m_pRecord = nullptr;
    std::unique_ptr<PIOffscreen> m_pSource;  // full size
    std::unique_ptr<PIOffscreen> m_pPreview; // at preview size, what the filter runs on
    std::unique_ptr<PIOffscreen> m_pScaled;  // the source at preview size
    platform::GWorldPtr m_gworld = nullptr;  // of the size below, that of the control
    Size m_bufferSize { 0, 0 };
    std::int32_t m_nScaleIndex = 0;
    double m_dScale = 100.0; // per cent
    // Of the preview's top left within the control: 0 or less where the preview is larger.
    std::int32_t m_nOffsetX = 0, m_nOffsetY = 0;
    std::int32_t m_fTracking = 0;
    std::int32_t* m_pShowFlag = nullptr; // the host's switch; null: it has none
    std::int32_t m_nShow = 0;
};
