// SPDX-License-Identifier: BSD-3-Clause
// User panes: a draw event for each paint, and what it drew put on the screen.
#include "platform/ui/controls/UserPane.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include "platform/ui/controls/ColorValues.h"
#include "platform/ui/controls/Control.h"

namespace platform {
namespace {

constexpr ControlPartCode kPanePart = 1;

// Makes the world the current one until its end, whatever way out is taken.
class ScopedPort {
public:
    explicit ScopedPort(GWorldPtr world) {
        GetGWorld(&m_port, &m_device);
        SetGWorld(world, nullptr);
    }
    ScopedPort(const ScopedPort&) = delete;
    ScopedPort& operator=(const ScopedPort&) = delete;
    ~ScopedPort() { SetGWorld(m_port, m_device); }

private:
    CGrafPtr m_port = nullptr;
    GDHandle m_device = nullptr;
};

// Bytes unused, red, green, blue of one pixel, as the word 0xffRRGGBB.
QRgb ToScreen(const std::uint8_t* pixel) {
    std::uint32_t word = 0;
    std::memcpy(&word, pixel, sizeof word);
    if constexpr (std::endian::native == std::endian::little)
        word = __builtin_bswap32(word);
    return word | 0xFF000000U;
}

} // namespace

UserPane::UserPane(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

bool UserPane::FitWorld() {
    if (m_world && m_worldSize == size())
        return true;
    m_world.reset();
    if (width() > kMaxWorldSide || height() > kMaxWorldSide)
        return false;
    GWorldPtr made = nullptr;
    const Rect bounds { 0, 0, static_cast<std::int16_t>(height()),
                        static_cast<std::int16_t>(width()) };
    if (NewGWorld(&made, 32, bounds))
        return false;
    m_world.reset(made);
    m_worldSize = size();
    return true;
}

void UserPane::DrawWorld() {
    const ScopedPort port(m_world.get());
    // What the handlers leave undrawn looks like the window around it, in light and dark palettes.
    RGBBackColor(ToRGBColor(palette().color(QPalette::Window)));
    RGBForeColor(ToRGBColor(palette().color(QPalette::WindowText)));
    // In two halves: a world that is erased as a whole gives its memory back, and a pane of a screen's
    // size would ask for new pages with every picture.
    const auto right = static_cast<std::int16_t>(width());
    const auto bottom = static_cast<std::int16_t>(height());
    const auto middle = static_cast<std::int16_t>(height() / 2);
    EraseRect({ 0, 0, middle, right });
    EraseRect({ middle, 0, bottom, right });
    if (!onDraw)
        return;
    const WhileSet drawing(*this, m_drawing, true);
    onDraw();
}

bool UserPane::TakePicture(const QRect& part) {
    if (m_picture.size() != m_worldSize)
        m_picture = QImage(m_worldSize, QImage::Format_RGB32);
    const PixMapHandle pixels = GetGWorldPixMap(m_world.get());
    if (m_picture.isNull() || !LockPixels(pixels))
        return false;
    const std::uint8_t* const base = GetPixBaseAddr(pixels);
    const std::ptrdiff_t rowBytes = GetPixRowBytes(pixels);
    for (int y = part.top(); base && y <= part.bottom(); ++y) {
        const std::uint8_t* const from = base + y * rowBytes;
        auto* const to = reinterpret_cast<QRgb*>(m_picture.scanLine(y));
        for (int x = part.left(); x <= part.right(); ++x)
            to[x] = ToScreen(from + std::ptrdiff_t { 4 } * x);
    }
    UnlockPixels(pixels);
    return base;
}

void UserPane::paintEvent(QPaintEvent* event) {
    const bool drawn = !m_drawing && FitWorld();
    if (drawn)
        DrawWorld();
    const QRect part = event->rect() & rect();
    QPainter painter(this);
    const double scale = devicePixelRatioF();
    // Whole factors keep pixels sharp; between them, sharp ones would differ in width.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, scale != std::floor(scale));
    if (drawn && TakePicture(part))
        painter.drawImage(part, m_picture, part);
    else
        painter.fillRect(part, palette().color(QPalette::Window));
    if (!isEnabled()) {
        QColor veil = palette().color(QPalette::Window);
        veil.setAlphaF(0.5F);
        painter.fillRect(part, veil);
    }
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        QStyleOptionFocusRect ring;
        ring.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
    }
}

void UserPane::DrawNow() {
    if (m_drawing)
        update(); // a paint cannot run within a paint
    else
        repaint();
}

void UserPane::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    m_pressed = true;
    const Alive alive(*this);
    const bool done = onPress && onPress(event->position().toPoint());
    if (alive && done)
        m_pressed = false;
}

void UserPane::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_pressed)
        return;
    m_pressed = false;
    if (onClick && rect().contains(event->position().toPoint()))
        onClick();
}

// The control ------------------------------------------------------------------------------------

namespace {

class UserPaneControl : public WidgetControl {
public:
    UserPaneControl(UserPane& pane, Window& owner) : WidgetControl(pane, owner), m_pane(&pane) {
        const QPointer<UserPaneControl> self(this);
        pane.onDraw = [self] {
            if (self)
                self->SendDraw();
        };
        pane.onPress = [self](QPoint place) { return self && self->Track(place); };
        pane.onClick = [self] {
            if (self)
                self->SendHit(kPanePart);
        };
    }
    ControlPartCode FocusPart() const override { return kPanePart; }
    void Draw() override { m_pane->DrawNow(); }
    bool IsDrawnByHandlers() const override { return true; }

private:
    void SendDraw() {
        SendObjectEvent(*this, kEventClassControl, kEventControlDraw, kTypeControlRef,
                        [](EventRef) {});
    }
    // The part that a handler of the hit test says lies there; the pane's only one without any.
    ControlPartCode PartAt(const HIPoint& place) {
        ControlPartCode part = kPanePart;
        EventRef test = nullptr;
        SendObjectEvent(*this, kEventClassControl, kEventControlHitTest, kTypeControlRef,
                        [&](EventRef event) {
                            SetEventParameter(event, kEventParamMouseLocation, kTypeHIPoint,
                                              sizeof place, &place);
                            test = RetainEvent(event);
                        });
        GetEventParameter(test, kEventParamControlPart, kTypeControlPartCode, nullptr, sizeof part,
                          nullptr, &part);
        ReleaseEvent(test);
        return part;
    }
    bool Track(QPoint where) {
        const QPointer<UserPaneControl> alive(this);
        const HIPoint place { static_cast<float>(where.x()), static_cast<float>(where.y()) };
        const ControlPartCode part = PartAt(place);
        if (!alive || part == kControlNoPart)
            return true;
        const OSStatus status = SendObjectEvent(
            *this, kEventClassControl, kEventControlTrack, kTypeControlRef, [&](EventRef event) {
                SetEventParameter(event, kEventParamMouseLocation, kTypeHIPoint, sizeof place,
                                  &place);
                SetEventParameter(event, kEventParamControlPart, kTypeControlPartCode, sizeof part,
                                  &part);
            });
        return status != kEventNotHandledErr;
    }

    UserPane* m_pane;
};

} // namespace

Control* MakeUserPaneControl(QWidget& widget, Window& owner) {
    auto* const pane = dynamic_cast<UserPane*>(&widget);
    return pane ? new UserPaneControl(*pane, owner) : nullptr;
}

} // namespace platform
