// SPDX-License-Identifier: BSD-3-Clause
// The frame with its text, zoomed and scrolled into the buffer, and where the view stands.
#include "preview/CTextEditDlg.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include "effect/PIHandle.h"
#include "effect/VamRect.h"
#include "huxCommon/huxUtility/VamWindowItem.h"
#include "platform/StateSavers.h"
#include "preview/GridLines.h"
#include "preview/HostImage.h"
#include "preview/PreviewControl.h"
#include "preview/ScaledCopy.h"
#include "render/CTextRenderer.h"
#include "render/ColorRef.h"
#include "render/Rounding.h"
#include "render/TextFields.h"

namespace {

constexpr COLORREF kAreaColor = 0xA0A0A0;
constexpr COLORREF kGridColor = 0x606060;
constexpr COLORREF kTextFrameColor = 0x0000FF; // red lies in the low byte
constexpr COLORREF kBorderColor = 0x000000;
constexpr long kWholeScale = 100;
constexpr long kMinScale = 10;
constexpr long kMaxScale = 200;
constexpr long kScaleStep = 10;

// Far outside every area, and still a place of the platform's.
tagRECT WithinPlaces(const tagRECT& rect) {
    const auto place = [](std::int32_t side) {
        return std::clamp<std::int32_t>(side, std::numeric_limits<std::int16_t>::min(),
                                        std::numeric_limits<std::int16_t>::max());
    };
    return { place(rect.left), place(rect.top), place(rect.right), place(rect.bottom) };
}

tagRECT ToRect(const PIRect& rect) {
    return { SaturateToInt32(rect.left), SaturateToInt32(rect.top), SaturateToInt32(rect.right),
             SaturateToInt32(rect.bottom) };
}

std::int32_t Width(const tagRECT& rect) {
    return rect.right - rect.left;
}
std::int32_t Height(const tagRECT& rect) {
    return rect.bottom - rect.top;
}

// Every pixel white, with nothing in its alpha.
void FillWhite(PIOffscreen& image) {
    const render::LockedPixels pixels(image);
    if (!pixels)
        return;
    std::vector<std::uint8_t> row(static_cast<std::size_t>(pixels.UsedBytes()), 0xFF);
    if (pixels.order.alpha >= 0)
        for (auto at = static_cast<std::size_t>(pixels.order.alpha); at < row.size(); at += 4)
            row[at] = 0;
    for (std::int32_t y = 0; y < pixels.height; ++y)
        std::memcpy(pixels.Row(y), row.data(), row.size());
}

} // namespace

CTextEditDlg::CTextEditDlg(long previewItem)
    : m_nPreviewItem(static_cast<std::int32_t>(previewItem)) {}

CTextEditDlg::~CTextEditDlg() {
    TerminateTextDlg();
}

long CTextEditDlg::InitializeTextDlg(_EPIRECORD* record, platform::WindowRef window, long mode,
                                     long option) {
    m_record = *record;
    m_hWindow = window;
    m_nImageWidth = record->nFrameWidth;
    m_nImageHeight = record->nFrameHeight;
    m_nViewScale = kWholeScale;
    m_nPreviewMode = static_cast<std::int32_t>(mode);
    m_nPreviewOption = static_cast<std::int32_t>(option);
    platform::Rect bounds {};
    vamGetWindowItemAsRect(m_hWindow, m_nPreviewItem, &bounds);
    const bool hasBuffer = MakeBuffer(bounds.right - bounds.left, bounds.bottom - bounds.top);
    m_pWorkImage = MakeHostImage(m_record, m_nImageWidth, m_nImageHeight);
    m_nScrollX = m_nImageWidth / 2 - Width(m_rcArea) / 2;
    m_nScrollY = m_nImageHeight / 2 - Height(m_rcArea) / 2;
    return hasBuffer && m_pWorkImage ? 1 : 0;
}

void CTextEditDlg::TerminateTextDlg() {
    DestroyOffscreen(m_offscreen);
    m_offscreen = nullptr;
    m_pWorkImage.reset();
    m_pBkImage = nullptr;
    m_ownedBkImage.reset();
}

bool CTextEditDlg::MakeBuffer(long width, long height) {
    DestroyOffscreen(m_offscreen);
    m_offscreen = nullptr;
    m_rcArea = { 0, 0, SaturateToInt32(width), SaturateToInt32(height) };
    platform::OSStatus error = platform::kNoErr;
    CreateOffscreen(m_hWindow, &m_offscreen, width, height, &error);
    return m_offscreen != nullptr;
}

void CTextEditDlg::RefreshRecord(const _EPIRECORD& record) {
    m_record = record;
    if (record.nFrameWidth == m_nImageWidth && record.nFrameHeight == m_nImageHeight)
        return;
    m_nImageWidth = record.nFrameWidth;
    m_nImageHeight = record.nFrameHeight;
    m_pWorkImage = MakeHostImage(m_record, m_nImageWidth, m_nImageHeight);
    WholeSizeView(0);
}

void CTextEditDlg::FitArea(long width, long height) {
    if (width == Width(m_rcArea) && height == Height(m_rcArea))
        return;
    const PIPoint center = ViewToImage(PIPoint { Width(m_rcArea) / 2, Height(m_rcArea) / 2 });
    MakeBuffer(width, height);
    if (m_isWholeView)
        WholeSizeView(0);
    else
        ScrollTo(center);
    DrawOffscreen();
}

void CTextEditDlg::SetBkImage(PIOffscreen* image, long own) {
    std::unique_ptr<PIOffscreen> owned(own != 0 ? image : nullptr);
    m_pBkImage = image;
    // The work image is filled from it for every redraw, so a frame of another depth is converted
    // once, here.
    if (image && m_pWorkImage && image->Depth() != m_pWorkImage->Depth()) {
        auto converted = MakeHostImage(m_record, image->Width(), image->Height());
        if (converted)
            CopyHostImage(*converted, *image);
        owned = std::move(converted);
        m_pBkImage = owned.get();
    }
    m_ownedBkImage = std::move(owned);
}

void CTextEditDlg::UpdatePreview(long invalidate) {
    if (!m_pWorkImage)
        return;
    PIHandle handle(m_record.pObjectProcs, m_record.pHandleProcs, m_record.hFixedParam);
    if (auto* param = static_cast<_TEXTPARAM*>(handle.Lock())) {
        CopyBackground();
        RenderText(param);
    }
    DrawOffscreen();
    if (invalidate != 0)
        InvalPreviewArea();
}

void CTextEditDlg::CopyBackground() {
    if (!m_pBkImage || m_pBkImage->Width() < m_nImageWidth || m_pBkImage->Height() < m_nImageHeight)
        FillWhite(*m_pWorkImage);
    if (m_pBkImage)
        CopyHostImage(*m_pWorkImage, *m_pBkImage);
}

void CTextEditDlg::RenderText(_TEXTPARAM* param) {
    _TEXTPARAM text = render::TerminatedCopy(*param);
    const render::InfoStrings infos(m_record);
    tagRECT covered {};
    tagPOINT origin { 0, 0 };
    CTextRenderer::DoText(m_pWorkImage.get(), &text, &covered, infos.Present(0), infos.Present(1),
                          infos.Present(2), infos.Present(3), 1.0, &origin);
    m_rcText = { covered.left, covered.top, covered.right, covered.bottom };
}

void CTextEditDlg::DrawOffscreen() {
    if (!m_offscreen)
        return;
    const PIRect visible = VisiblePart();
    const tagRECT place = ToRect(ImageToView(visible));
    if (DrawWorkImage(ToRect(visible), place))
        PaintAround(place);
    else
        PaintRect(m_offscreen, &m_rcArea, kAreaColor);
    DrawGrid();
    if (m_rcText.left < m_rcText.right && m_rcText.top < m_rcText.bottom) {
        const tagRECT frame = ToRect(ImageToView(m_rcText));
        FrameRect(m_offscreen, &frame, kTextFrameColor);
    }
    FrameRect(m_offscreen, &m_rcArea, kBorderColor);
}

PIRect CTextEditDlg::VisiblePart() const {
    const PIRect part = ViewToImage(PIRect { 0, 0, Width(m_rcArea), Height(m_rcArea) });
    const auto withinX = [this](long x) { return std::clamp<long>(x, 0, m_nImageWidth); };
    const auto withinY = [this](long y) { return std::clamp<long>(y, 0, m_nImageHeight); };
    return { withinX(part.left), withinY(part.top), withinX(part.right), withinY(part.bottom) };
}

bool CTextEditDlg::DrawWorkImage(const tagRECT& visible, const tagRECT& place) const {
    return m_pWorkImage &&
           CopyScaled({ m_offscreen, Width(m_rcArea), Height(m_rcArea) },
                      { place.left, place.top, place.right, place.bottom }, *m_pWorkImage,
                      { visible.left, visible.top, visible.right, visible.bottom });
}

// The area beside the place. A picture mostly covers all of it, and painting what lies below would
// take as long as the picture.
void CTextEditDlg::PaintAround(const tagRECT& place) const {
    const tagRECT& area = m_rcArea;
    for (const tagRECT& side : { tagRECT { area.left, area.top, area.right, place.top },
                                 tagRECT { area.left, place.top, place.left, place.bottom },
                                 tagRECT { place.right, place.top, area.right, place.bottom },
                                 tagRECT { area.left, place.bottom, area.right, area.bottom } })
        PaintRect(m_offscreen, &side, kAreaColor);
}

void CTextEditDlg::DrawGrid() const {
    if (m_nPreviewMode == 0)
        return;
    const long step = GridStep(m_nPreviewMode);
    const PIRect frame = ImageToView(PIRect { 0, 0, m_nImageWidth, m_nImageHeight });
    WalkGridLines(step, m_nImageWidth, m_nViewScale, m_nScrollX, [&](long x) {
        DrawLine(m_offscreen, x, frame.top, x, frame.bottom, 1, kGridColor);
    });
    WalkGridLines(step, m_nImageHeight, m_nViewScale, m_nScrollY, [&](long y) {
        DrawLine(m_offscreen, frame.left, y, frame.right, y, 1, kGridColor);
    });
}

void CTextEditDlg::InvalPreviewArea() {
    platform::Rect bounds {};
    vamGetWindowItemAsRect(m_hWindow, m_nPreviewItem, &bounds);
    if (platform::Window* const window = platform::Window::Find(m_hWindow))
        window->Invalidate(&bounds);
}

void CTextEditDlg::SetViewScale(long scale, long redraw) {
    const long wanted = std::clamp(scale, kMinScale, kMaxScale);
    if (wanted == m_nViewScale)
        return;
    const PIRect area = ViewToImage(PIRect { 0, 0, Width(m_rcArea), Height(m_rcArea) });
    m_isWholeView = false;
    m_nViewScale = static_cast<std::int32_t>(wanted);
    ScrollTo({ (area.left + area.right) / 2, (area.top + area.bottom) / 2 });
    if (redraw != 0)
        Redraw();
}

void CTextEditDlg::ScrollTo(PIPoint center) {
    m_nScrollX = ScrollFor(piMulDiv(center.x, m_nViewScale, 100), Width(m_rcArea), GetViewWidth());
    m_nScrollY =
        ScrollFor(piMulDiv(center.y, m_nViewScale, 100), Height(m_rcArea), GetViewHeight());
}

long CTextEditDlg::Scroll(std::int32_t& position, long delta, long area, long view, long redraw) {
    const long scrolled = area < view ? std::clamp(position + delta, 0L, view - area) : position;
    if (scrolled == position)
        return 0;
    position = static_cast<std::int32_t>(scrolled);
    if (redraw != 0)
        Redraw();
    return 1;
}

long CTextEditDlg::ScrollHorz(long delta, long redraw) {
    return Scroll(m_nScrollX, delta, Width(m_rcArea), GetViewWidth(), redraw);
}

long CTextEditDlg::ScrollVert(long delta, long redraw) {
    return Scroll(m_nScrollY, delta, Height(m_rcArea), GetViewHeight(), redraw);
}

// The narrow side fills the area and the other one may lie over its edges; the limit of
// SetViewScale does not hold here, so that small frames fill the area as well.
void CTextEditDlg::WholeSizeView(long redraw) {
    const bool isNarrow = m_nImageWidth < m_nImageHeight;
    const long side = isNarrow ? m_nImageWidth : m_nImageHeight;
    const long area = isNarrow ? Width(m_rcArea) : Height(m_rcArea);
    long scale = kScaleStep;
    while (side > 0 && piMulDiv(side, scale + kScaleStep, 100) <= area)
        scale += kScaleStep;
    m_isWholeView = true;
    m_nViewScale = SaturateToInt32(scale);
    m_nScrollX = SaturateToInt32(piMulDiv(m_nImageWidth / 2, scale, 100) - Width(m_rcArea) / 2);
    m_nScrollY = SaturateToInt32(piMulDiv(m_nImageHeight / 2, scale, 100) - Height(m_rcArea) / 2);
    if (redraw != 0)
        Redraw();
}

PIPoint CTextEditDlg::ImageToView(PIPoint point) const {
    return { piMulDiv(point.x, m_nViewScale, 100) - m_nScrollX,
             piMulDiv(point.y, m_nViewScale, 100) - m_nScrollY };
}

PIRect CTextEditDlg::ImageToView(PIRect rect) const {
    const PIPoint start = ImageToView(PIPoint { rect.left, rect.top });
    const PIPoint end = ImageToView(PIPoint { rect.right, rect.bottom });
    return { start.x, start.y, end.x, end.y };
}

PIPoint CTextEditDlg::ViewToImage(PIPoint point) const {
    return { piMulDiv(point.x + m_nScrollX, 100, m_nViewScale),
             piMulDiv(point.y + m_nScrollY, 100, m_nViewScale) };
}

PIRect CTextEditDlg::ViewToImage(PIRect rect) const {
    const PIPoint start = ViewToImage(PIPoint { rect.left, rect.top });
    const PIPoint end = ViewToImage(PIPoint { rect.right, rect.bottom });
    return { start.x, start.y, end.x, end.y };
}

PIPoint CTextEditDlg::PosScreenToView(PIPoint global) const {
    const tagRECT place = WithinPlaces(ToRect({ global.x, global.y, 0, 0 }));
    platform::Point point { static_cast<std::int16_t>(place.top),
                            static_cast<std::int16_t>(place.left) };
    if (const platform::Window* const window = platform::Window::Find(m_hWindow))
        point = window->ToLocal(point);
    platform::Rect bounds {};
    vamGetWindowItemAsRect(m_hWindow, m_nPreviewItem, &bounds);
    return { point.h - bounds.left, point.v - bounds.top };
}

PIPoint CTextEditDlg::GetMousePos() {
    const platform::Point point = platform::GetGlobalMouse();
    return { point.h, point.v };
}

long CTextEditDlg::GetViewWidth() const {
    return piMulDiv(m_nImageWidth, m_nViewScale, 100);
}

long CTextEditDlg::GetViewHeight() const {
    return piMulDiv(m_nImageHeight, m_nViewScale, 100);
}

namespace {

void DrawIn(platform::CGrafPtr port, const tagRECT& rect, COLORREF color,
            void (*draw)(const platform::Rect&)) {
    const XSaveGrafPort savePort;
    platform::SetPort(port);
    const XSaveColor saveColor;
    platform::RGBColor rgb;
    COLORREFtoRGB(rgb, color);
    platform::RGBForeColor(rgb);
    draw(vamRECTToRect(WithinPlaces(rect)));
}

} // namespace

void CTextEditDlg::PaintRect(platform::CGrafPtr port, const tagRECT* rect, COLORREF color) {
    DrawIn(port, *rect, color, platform::PaintRect);
}

void CTextEditDlg::FrameRect(platform::CGrafPtr port, const tagRECT* rect, COLORREF color) {
    DrawIn(port, *rect, color, platform::FrameRect);
}

void CTextEditDlg::DrawLine(platform::CGrafPtr port, long x1, long y1, long x2, long y2, long width,
                            COLORREF color) {
    const long right = x1 == x2 ? x1 + width : std::max(x1, x2);
    const long bottom = x1 == x2 ? std::max(y1, y2) : y1 + width;
    const tagRECT rect = ToRect({ std::min(x1, x2), std::min(y1, y2), right, bottom });
    PaintRect(port, &rect, color);
}

void CTextEditDlg::CreateOffscreen(platform::WindowRef /*window*/, platform::GWorldPtr* port,
                                   long width, long height, platform::OSStatus* error) {
    const platform::Rect bounds =
        vamRECTToRect({ 0, 0, SaturateToInt32(width), SaturateToInt32(height) });
    *error = platform::NewGWorld(port, 32, bounds);
}

void CTextEditDlg::DestroyOffscreen(platform::GWorldPtr port) {
    platform::DisposeGWorld(port);
}
