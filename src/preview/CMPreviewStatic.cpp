// SPDX-License-Identifier: BSD-3-Clause
#include "preview/CMPreviewStatic.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "effect/VamRect.h"
#include "platform/StateSavers.h"
#include "preview/HostImage.h"
#include "preview/ScaledCopy.h"
#include "render/ImageOperations.h"
#include "render/Rounding.h"

namespace {

constexpr std::array<double, 6> kScales { 100.0, 66.6, 50.0, 33.3, 25.0, 12.5 };
constexpr platform::RGBColor kGrey { 0xA0A0, 0xA0A0, 0xA0A0 };
constexpr platform::RGBColor kBlack { 0, 0, 0 };
constexpr platform::EventTime kTrackTimeout = 0.1; // seconds

// The watch while it lives, then the arrow.
class WatchCursor {
public:
    WatchCursor() { SetPreviewCursor(kWatchCursor); }
    WatchCursor(const WatchCursor&) = delete;
    WatchCursor& operator=(const WatchCursor&) = delete;
    ~WatchCursor() { SetPreviewCursor(kArrowCursor); }
};

// The part of a preview that a control shows, on one axis: from and behind.
struct Seen {
    std::int32_t start, end;
};
Seen SeenOn(std::int32_t offset, long control, long preview) {
    const Seen seen = offset <= 0 ? Seen { -offset, SaturateToInt32(control - offset) }
                                  : Seen { 0, SaturateToInt32(preview) };
    const auto within = [preview](std::int32_t place) {
        return std::clamp(place, 0, SaturateToInt32(preview));
    };
    return { within(seen.start), within(seen.end) };
}

// The offset of an axis whose preview is larger than the control after a move of the mouse; any other
// keeps the one that it has.
std::int32_t MovedBy(int by, std::int32_t from, std::int32_t offset, long control, long preview) {
    if (control >= preview)
        return offset;
    return SaturateToInt32(std::clamp<long>(long { from } + by, control - preview, 0));
}

} // namespace

CMPreviewStatic::~CMPreviewStatic() {
    LeaveMouse();
    platform::DisposeGWorld(m_gworld);
}

void CMPreviewStatic::Init(_EPIRECORD* record, platform::CFBundleRef bundle) {
    m_pRecord = record;
    m_pShowFlag = record->pPreviewSwitch;
    m_nShow = m_pShowFlag ? *m_pShowFlag : 1;
    FollowMouse(bundle);
    UpdatePreview();
}

// Makes one of the control's present size.
bool CMPreviewStatic::HasBuffer() {
    const Size size = ControlSize();
    if (m_gworld && size == m_bufferSize)
        return true;
    platform::DisposeGWorld(m_gworld);
    m_bufferSize = size;
    const platform::Rect bounds =
        vamRECTToRect({ 0, 0, SaturateToInt32(size.width), SaturateToInt32(size.height) });
    return platform::NewGWorld(&m_gworld, 32, bounds) == platform::kNoErr;
}

void CMPreviewStatic::SetImage(PIOffscreen& image) {
    if (!m_pRecord)
        return;
    const WatchCursor watch;
    const bool isFirst = !m_pSource;
    m_pSource.reset();
    m_pPreview.reset();
    m_pScaled.reset();
    m_pSource = MakeHostImage(*m_pRecord, image.Width(), image.Height());
    if (m_pSource) {
        CopyHostImage(*m_pSource, image);
        if (isFirst)
            FitFirstImage();
        else
            KeepOffsets();
        MakePreviewImages();
    }
    UpdatePreview();
}

// The first step that is smaller than what would fill the control. One that fills it exactly is not
// smaller, so an image as large as the control opens at the second step.
void CMPreviewStatic::FitFirstImage() {
    const Size control = ControlSize();
    const double fit = std::min(static_cast<double>(control.width) / m_pSource->Width(),
                                static_cast<double>(control.height) / m_pSource->Height());
    const auto* step = std::find_if(kScales.begin(), kScales.end(),
                                    [fit](double scale) { return scale < fit * 100; });
    m_nScaleIndex = static_cast<std::int32_t>(
        step == kScales.end() ? kScales.size() - 1
                              : static_cast<std::size_t>(step - kScales.begin()));
    m_dScale = kScales[static_cast<std::size_t>(m_nScaleIndex)];
    m_nOffsetX = SaturateToInt32((control.width - GetPreviewWidth()) / 2);
    m_nOffsetY = SaturateToInt32((control.height - GetPreviewHeight()) / 2);
}

// The zoom stays, and so do the offsets unless the new image is too small for them.
void CMPreviewStatic::KeepOffsets() {
    const Size control = ControlSize();
    const auto keep = [](std::int32_t offset, long size, long preview) {
        return size < preview ? std::max(offset, SaturateToInt32(size - preview))
                              : SaturateToInt32((size - preview) / 2);
    };
    m_nOffsetX = keep(m_nOffsetX, control.width, GetPreviewWidth());
    m_nOffsetY = keep(m_nOffsetY, control.height, GetPreviewHeight());
}

// Without memory for them there is no preview, and the control shows its grey.
void CMPreviewStatic::MakePreviewImages() {
    const auto width = SaturateToInt32(GetPreviewWidth());
    const auto height = SaturateToInt32(GetPreviewHeight());
    m_pScaled = MakeHostImage(*m_pRecord, width, height);
    m_pPreview = MakeHostImage(*m_pRecord, width, height);
    if (m_pScaled && m_pPreview)
        StretchCopy(*m_pScaled, *m_pSource);
}

void CMPreviewStatic::ShowPreview(long show, long redraw) {
    if (show == m_nShow)
        return;
    m_nShow = SaturateToInt32(show);
    if (m_pShowFlag)
        *m_pShowFlag = m_nShow;
    if (redraw != 0)
        UpdatePreview();
}

bool CMPreviewStatic::ShiftViewScale(long direction) {
    return SetViewScale(direction == 0 ? m_nScaleIndex + 1L : m_nScaleIndex - 1L);
}

// The point of the image in the middle of what is seen stays there.
bool CMPreviewStatic::SetViewScale(long index) {
    if (!m_pSource || index < 0 || index >= static_cast<long>(kScales.size()) ||
        index == m_nScaleIndex)
        return false;
    const WatchCursor watch;
    const tagPOINT center = GetPreviewCenter();
    const double scale = kScales[static_cast<std::size_t>(index)];
    const auto moved = [&](std::int32_t place) {
        const long inImage = Double2Int(place * 100.0 / m_dScale);
        return Double2Int(static_cast<double>(inImage) * scale / 100.0);
    };
    const long centerX = moved(center.x);
    const long centerY = moved(center.y);
    m_nScaleIndex = static_cast<std::int32_t>(index);
    m_dScale = scale;
    const Size control = ControlSize();
    m_nOffsetX = -ScrollFor(centerX, control.width, GetPreviewWidth());
    m_nOffsetY = -ScrollFor(centerY, control.height, GetPreviewHeight());
    MakePreviewImages();
    UpdatePreview();
    return true;
}

long CMPreviewStatic::GetPreviewWidth() const {
    return m_pSource ? Double2Int(m_pSource->Width() * m_dScale / 100.0) : 0;
}

long CMPreviewStatic::GetPreviewHeight() const {
    return m_pSource ? Double2Int(m_pSource->Height() * m_dScale / 100.0) : 0;
}

tagPOINT CMPreviewStatic::GetPreviewCenter() const {
    const Size control = ControlSize();
    const auto center = [](std::int32_t offset, long size, long preview) {
        return SaturateToInt32(size < preview ? std::labs(offset) + size / 2 : preview / 2);
    };
    return { center(m_nOffsetX, control.width, GetPreviewWidth()),
             center(m_nOffsetY, control.height, GetPreviewHeight()) };
}

tagRECT CMPreviewStatic::VisibleRect() const {
    const Size control = ControlSize();
    const Seen x = SeenOn(m_nOffsetX, control.width, GetPreviewWidth());
    const Seen y = SeenOn(m_nOffsetY, control.height, GetPreviewHeight());
    return { x.start, y.start, x.end, y.end };
}

void CMPreviewStatic::UpdatePreview() {
    if (!HasBuffer())
        return;
    const Size size = m_bufferSize;
    const platform::Rect whole =
        vamRECTToRect({ 0, 0, SaturateToInt32(size.width), SaturateToInt32(size.height) });
    {
        const XSaveGWorld saveWorld;
        platform::SetGWorld(m_gworld, nullptr);
        const XSaveColor saveColor;
        platform::RGBForeColor(kGrey);
        platform::PaintRect(whole);
        if (m_nShow != 0 && m_pPreview && m_pScaled)
            DrawVisible();
        platform::RGBForeColor(kBlack);
        platform::FrameRect(whole);
    }
    Update();
}

// While the user drags, the filter would only slow the hand down.
void CMPreviewStatic::DrawVisible() {
    const tagRECT visible = VisibleRect();
    CopyAllOffscreen(*m_pPreview, *m_pScaled);
    if (m_fTracking == 0)
        DoFilter(m_pPreview.get(), visible);
    SetWhiteMat(*m_pPreview, visible);
    const std::int32_t left = std::max(m_nOffsetX, 0);
    const std::int32_t top = std::max(m_nOffsetY, 0);
    CopyScaled(
        { m_gworld, SaturateToInt32(m_bufferSize.width), SaturateToInt32(m_bufferSize.height) },
        { left, top, left + visible.right - visible.left, top + visible.bottom - visible.top },
        *m_pPreview, { visible.left, visible.top, visible.right, visible.bottom });
}

void CMPreviewStatic::DoFilter(PIOffscreen* /*image*/, tagRECT /*visible*/) {}

platform::OSStatus CMPreviewStatic::HandleControlDraw(platform::EventRef /*event*/) {
    if (ControlSize() != m_bufferSize) {
        KeepOffsets();
        UpdatePreview();
    }
    DrawBuffer(m_gworld);
    return platform::kNoErr;
}

platform::OSStatus CMPreviewStatic::HandleControlTrack(platform::EventRef event) {
    const Size control = ControlSize();
    const auto start = PressedAt(event);
    if (!start || (GetPreviewWidth() <= control.width && GetPreviewHeight() <= control.height))
        return platform::kNoErr;
    // A host may end the window while the user drags.
    const platform::Alive alive(*this);
    {
        const platform::WhileSet tracking(*this, m_fTracking, 1);
        SetToolCursor();
        Track(*start);
    }
    if (!alive)
        return platform::kNoErr;
    SetToolCursor();
    UpdatePreview(); // with the filter again
    Update();
    return platform::kNoErr;
}

// Returns with the button up, or with this object gone.
void CMPreviewStatic::Track(platform::Point start) {
    const platform::Alive alive(*this);
    const tagPOINT from { m_nOffsetX, m_nOffsetY };
    while (alive) {
        platform::Window* const window = platform::Window::Find(GetOwner());
        if (!window)
            return;
        platform::Point now {};
        const platform::MouseTracking result = window->TrackMouse(kTrackTimeout, &now);
        if (!alive || result == platform::MouseTracking::kMouseUp ||
            result == platform::MouseTracking::kUserCancelled)
            return;
        // The host may set another image, or resize the control, meanwhile.
        const Size control = ControlSize();
        PanTo({ MovedBy(now.h - start.h, from.x, m_nOffsetX, control.width, GetPreviewWidth()),
                MovedBy(now.v - start.v, from.y, m_nOffsetY, control.height, GetPreviewHeight()) });
    }
}

void CMPreviewStatic::PanTo(tagPOINT offset) {
    if (offset.x == m_nOffsetX && offset.y == m_nOffsetY)
        return;
    m_nOffsetX = offset.x;
    m_nOffsetY = offset.y;
    UpdatePreview();
    Draw(true);
    FlushPortBuffer();
}

platform::OSStatus CMPreviewStatic::HandleDispatcherEvent(platform::EventRef event) {
    if (platform::GetEventKind(event) != platform::kEventMouseMoved)
        return platform::kEventNotHandledErr;
    SetToolCursor();
    return platform::kNoErr;
}

void CMPreviewStatic::SetToolCursor() {
    SetPreviewCursor(m_fTracking != 0 ? kDragCursor : kHandCursor);
}
