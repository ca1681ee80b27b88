// SPDX-License-Identifier: BSD-3-Clause
// Whether controls react, show, and where they lie: enabling, activation, visibility, bounds,
// embedding, drawing.
#include <algorithm>

#include <QLayout>

#include "platform/ui/QtValues.h"
#include "platform/ui/Windows.h"
#include "platform/ui/controls/Control.h"

namespace platform {
namespace {

// A place that is asked for by a call counts from then on, not the layout's of the form.
void TakeOutOfLayout(QLayout* layout, QWidget& widget) {
    if (!layout)
        return;
    layout->removeWidget(&widget);
    for (int i = 0; i < layout->count(); ++i)
        TakeOutOfLayout(layout->itemAt(i)->layout(), widget);
}

// From the outside inwards: a layout needs the place that the one around it has given.
void Activate(QWidget& widget) {
    if (QLayout* const layout = widget.layout()) {
        layout->invalidate();
        layout->activate();
    }
    for (QObject* const child : widget.children())
        if (child->isWidgetType())
            Activate(*static_cast<QWidget*>(child));
}

QRect BoundsOf(const Control& control) {
    const QWidget& widget = control.Widget();
    return { widget.mapTo(&control.Owner().Widget(), QPoint()), widget.size() };
}

// The controls nearest below the widget, in the order of its children.
void GatherSubs(const QWidget& widget, std::vector<Control*>* subs) {
    for (QObject* child : widget.children()) {
        if (!child->isWidgetType())
            continue;
        const auto& childWidget = static_cast<const QWidget&>(*child);
        if (Control* control = Control::At(&childWidget))
            subs->push_back(control);
        else
            GatherSubs(childWidget, subs);
    }
}

} // namespace

void Control::SetValue(std::int32_t value) {
    const std::int32_t minimum = Minimum();
    ApplyValue(std::clamp(value, minimum, std::max(minimum, Maximum())));
}

// Reacting and showing ---------------------------------------------------------------------------

void Control::SetEnabled(bool enabled) {
    m_enabled = enabled;
    m_widget->setEnabled(m_enabled && m_active);
}

void Control::SetActive(bool active) {
    m_active = active;
    m_widget->setEnabled(m_enabled && m_active);
}

// Whether the flag is set for the control and for everything that it lies in. A widget without a
// control has only Qt's own flag, which stands for both.
bool Control::IsSetUpToWindow(bool Control::*flag) const {
    for (const QWidget* widget = m_widget; widget; widget = widget->parentWidget()) {
        const Control* const at = At(widget);
        if (at ? !(at->*flag) : widget->testAttribute(Qt::WA_ForceDisabled))
            return false;
        if (widget == &m_owner->Widget())
            break;
    }
    return true;
}

bool Control::IsEnabled() const {
    return IsSetUpToWindow(&Control::m_enabled);
}

bool Control::IsActive() const {
    return IsSetUpToWindow(&Control::m_active);
}

void Control::SetVisible(bool visible) {
    m_widget->setVisible(visible);
}

bool Control::IsVisible() const {
    return m_widget->isVisibleTo(&m_owner->Widget());
}

void Control::Draw() {
    m_widget->repaint();
}

void Control::Invalidate() {
    m_widget->update();
}

// Bounds -----------------------------------------------------------------------------------------

void SettleLayouts(QWidget& window) {
    if (window.isVisible())
        return;
    window.ensurePolished();
    if (window.layout())
        window.resize(window.size().expandedTo(window.layout()->totalMinimumSize()));
    Activate(window);
}

Rect Control::Bounds() const {
    SettleLayouts(m_owner->Widget());
    return ToRect(BoundsOf(*this));
}

void Control::SetBounds(int left, int top, int width, int height) {
    QWidget* const parent = m_widget->parentWidget();
    if (!parent || QRect(left, top, width, height) == BoundsOf(*this))
        return;
    TakeOutOfLayout(parent->layout(), *m_widget);
    m_widget->setGeometry({ parent->mapFrom(&m_owner->Widget(), QPoint(left, top)),
                            QSize(width, height).expandedTo({ 0, 0 }) });
}

void Control::Move(std::int16_t left, std::int16_t top) {
    SetBounds(left, top, m_widget->width(), m_widget->height());
}

void Control::Resize(std::int16_t width, std::int16_t height) {
    const QPoint place = BoundsOf(*this).topLeft();
    SetBounds(place.x(), place.y(), width, height);
}

// Embedding --------------------------------------------------------------------------------------

OSStatus Control::EmbedIn(Control& container) {
    const bool inItself = &container == this || m_widget->isAncestorOf(container.m_widget);
    if (inItself || m_owner != container.m_owner)
        return kParamErr;
    container.Embed(*this);
    return kNoErr;
}

void Control::Embed(Control& sub) {
    QWidget& widget = sub.Widget();
    const bool shown = widget.isVisibleTo(widget.parentWidget());
    const QPoint place = widget.mapToGlobal(QPoint());
    widget.setParent(m_widget);
    widget.move(m_widget->mapFromGlobal(place));
    widget.setVisible(shown);
}

Control* Control::Super() const {
    return m_widget->isWindow() ? nullptr : Of(m_widget->parentWidget());
}

std::vector<Control*> Control::Subs() const {
    std::vector<Control*> subs;
    GatherSubs(*m_widget, &subs);
    return subs;
}

} // namespace platform
