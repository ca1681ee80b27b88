// SPDX-License-Identifier: BSD-3-Clause
// User panes: a draw event for each paint, and what it drew put on the screen.
#include "platform/ui/controls/UserPane.h"

#include <cmath>

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include "platform/StateSavers.h"
#include "platform/ui/QtValues.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/cursors/PortImage.h"

namespace platform {
namespace {

constexpr ControlPartCode kPanePart = 1;

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
    const XSaveGWorld saved;
    SetGWorld(m_world.get(), nullptr);
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
    return CopyToImage(m_world.get(), part, m_picture);
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
        const Alive alive(*this); // the pane may outlive it by some calls
        pane.onDraw = [this, alive] {
            if (alive)
                SendDraw();
        };
        pane.onPress = [this, alive](QPoint place) { return alive && Track(place); };
        pane.onClick = [this, alive] {
            if (alive)
                SendHit(kPanePart);
        };
    }
    ControlPartCode FocusPart() const override { return kPanePart; }
    void Draw() override { m_pane->DrawNow(); }
    bool IsDrawnByHandlers() const override { return true; }

private:
    void SendDraw() {
        SendObjectEvent(*this, kEventClassControl, kEventControlDraw, kTypeControlRef);
    }
    // The part that a handler of the hit test says lies there; the pane's only one without any.
    ControlPartCode PartAt(const HIPoint& place) {
        ControlPartCode part = kPanePart;
        EventRef test = nullptr;
        SendObjectEvent(*this, kEventClassControl, kEventControlHitTest, kTypeControlRef,
                        [&](const MadeEvent& event) {
                            event.Set(kEventParamMouseLocation, kTypeHIPoint, place);
                            test = RetainEvent(event.Get());
                        });
        GetEventParameter(test, kEventParamControlPart, kTypeControlPartCode, nullptr, sizeof part,
                          nullptr, &part);
        ReleaseEvent(test);
        return part;
    }
    bool Track(QPoint where) {
        const Alive alive(*this);
        const HIPoint place { static_cast<float>(where.x()), static_cast<float>(where.y()) };
        const ControlPartCode part = PartAt(place);
        if (!alive || part == kControlNoPart)
            return true;
        const OSStatus status =
            SendObjectEvent(*this, kEventClassControl, kEventControlTrack, kTypeControlRef,
                            [&](const MadeEvent& event) {
                                event.Set(kEventParamMouseLocation, kTypeHIPoint, place);
                                event.Set(kEventParamControlPart, kTypeControlPartCode, part);
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
