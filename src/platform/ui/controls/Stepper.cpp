// SPDX-License-Identifier: BSD-3-Clause
// Steppers: drawing with the style's own pieces, holding an arrow, wheel and keys.
#include "platform/ui/controls/Stepper.h"

#include <algorithm>
#include <cmath>

#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QWheelEvent>

#include "platform/ui/controls/Control.h"

namespace platform {
namespace {

constexpr int kAnglePerNotch = 120; // eighths of a degree
constexpr double kMinRepeatInterval = 0.001, kMaxRepeatInterval = 3600;

} // namespace

Stepper::Stepper(QWidget* parent)
    : QWidget(parent),
      m_repeatInterval(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatRate) / 1000.0) {
    setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the field that is stepped
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

// Values -----------------------------------------------------------------------------------------

void Stepper::SetValue(std::int32_t value) {
    m_value = std::clamp(value, m_minimum, m_maximum);
}

void Stepper::SetMinimum(std::int32_t minimum) {
    m_minimum = minimum;
    m_maximum = std::max(m_maximum, minimum);
    SetValue(m_value);
}

void Stepper::SetMaximum(std::int32_t maximum) {
    m_maximum = maximum;
    m_minimum = std::min(m_minimum, maximum);
    SetValue(m_value);
}

void Stepper::SetRepeatInterval(double seconds) {
    m_repeatInterval = std::clamp(seconds, kMinRepeatInterval, kMaxRepeatInterval);
}

// Looks ------------------------------------------------------------------------------------------

QSize Stepper::sizeHint() const {
    const int line = fontMetrics().height();
    return { line + 2, line + line / 2 + 2 }; // about as high as a field beside it
}

QRect Stepper::RectOf(Arrow arrow) const {
    const int half = height() / 2;
    return arrow == Arrow::kUp ? QRect(0, 0, width(), half)
                               : QRect(0, half, width(), height() - half);
}

Stepper::Arrow Stepper::ArrowAt(QPoint place) const {
    if (!rect().contains(place))
        return Arrow::kNone;
    return RectOf(Arrow::kUp).contains(place) ? Arrow::kUp : Arrow::kDown;
}

void Stepper::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    DrawArrow(painter, Arrow::kUp);
    DrawArrow(painter, Arrow::kDown);
}

void Stepper::DrawArrow(QPainter& painter, Arrow arrow) const {
    QStyleOptionButton option;
    option.initFrom(this);
    option.rect = RectOf(arrow);
    const bool sunken = m_held == arrow && m_over;
    option.state |= sunken ? QStyle::State_Sunken : QStyle::State_Raised;
    option.state.setFlag(QStyle::State_MouseOver, isEnabled() && m_hovered == arrow);
    style()->drawPrimitive(QStyle::PE_PanelButtonCommand, &option, &painter, this);

    const int side = std::max(6, std::min(option.rect.width(), option.rect.height()) - 3);
    QRect place(0, 0, side, side);
    place.moveCenter(option.rect.center());
    option.rect = place;
    style()->drawPrimitive(arrow == Arrow::kUp ? QStyle::PE_IndicatorArrowUp
                                               : QStyle::PE_IndicatorArrowDown,
                           &option, &painter, this);
}

bool Stepper::event(QEvent* event) {
    if (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter ||
        event->type() == QEvent::HoverLeave) {
        m_hovered = event->type() == QEvent::HoverLeave
                        ? Arrow::kNone
                        : ArrowAt(static_cast<QHoverEvent*>(event)->position().toPoint());
        update();
    }
    return QWidget::event(event);
}

// Stepping ---------------------------------------------------------------------------------------

void Stepper::Step(Arrow arrow) {
    if (m_stepping || !onStep)
        return;
    const WhileSet stepping(*this, m_stepping, true);
    onStep(arrow);
}

void Stepper::StepTowards(std::int32_t value) {
    if (value != m_value)
        Step(value > m_value ? Arrow::kUp : Arrow::kDown);
}

void Stepper::Release() {
    m_timer.stop();
    m_held = Arrow::kNone;
    update();
}

void Stepper::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    m_held = ArrowAt(event->position().toPoint());
    if (m_held == Arrow::kNone)
        return;
    m_over = true;
    update();
    // The wait before the first repeat tells a click from holding.
    m_timer.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatThreshold), this);
    Step(m_held);
}

void Stepper::mouseMoveEvent(QMouseEvent* event) {
    const bool over = ArrowAt(event->position().toPoint()) == m_held;
    if (over != m_over)
        update();
    m_over = over;
}

void Stepper::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        Release();
}

void Stepper::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId())
        return QWidget::timerEvent(event);
    // A step that runs a loop, for an alert say, may keep the release of the mouse from us.
    if (m_stepping)
        return Release();
    m_timer.start(std::max(1, static_cast<int>(std::lround(m_repeatInterval * 1000))), this);
    if (m_over)
        Step(m_held);
}

void Stepper::wheelEvent(QWheelEvent* event) {
    const Alive alive(*this);
    m_wheelAngle += event->angleDelta().y();
    int notches = m_wheelAngle / kAnglePerNotch;
    m_wheelAngle %= kAnglePerNotch;
    event->accept();
    const Arrow arrow = notches > 0 ? Arrow::kUp : Arrow::kDown;
    for (notches = std::abs(notches); notches > 0 && alive && isEnabled(); --notches)
        Step(arrow);
}

void Stepper::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up)
        Step(Arrow::kUp);
    else if (event->key() == Qt::Key_Down)
        Step(Arrow::kDown);
    else
        QWidget::keyPressEvent(event);
}

void Stepper::changeEvent(QEvent* event) {
    if (!isEnabled() || (event->type() == QEvent::ActivationChange && !isActiveWindow()))
        Release();
    QWidget::changeEvent(event);
}

void Stepper::hideEvent(QHideEvent* event) {
    Release();
    QWidget::hideEvent(event);
}

// The control ------------------------------------------------------------------------------------

namespace {

class StepperControl : public WidgetControl {
public:
    StepperControl(Stepper& stepper, Window& owner)
        : WidgetControl(stepper, owner), m_stepper(&stepper) {
        TakeFromForm("minimum", &Stepper::SetMinimum);
        TakeFromForm("maximum", &Stepper::SetMaximum);
        TakeFromForm("value", &Stepper::SetValue);
        stepper.onStep = [this, alive = Alive(*this)](Stepper::Arrow arrow) {
            if (alive)
                SendHit(arrow == Stepper::Arrow::kUp ? kControlUpButtonPart
                                                     : kControlDownButtonPart);
        };
    }
    std::int32_t Value() const override { return m_stepper->Value(); }
    std::int32_t Minimum() const override { return m_stepper->Minimum(); }
    void SetMinimum(std::int32_t minimum) override { m_stepper->SetMinimum(minimum); }
    std::int32_t Maximum() const override { return m_stepper->Maximum(); }
    void SetMaximum(std::int32_t maximum) override { m_stepper->SetMaximum(maximum); }
    ControlPartCode FocusPart() const override { return kControlUpButtonPart; }
    OSStatus SetRepeatInterval(double seconds) override {
        if (!(seconds > 0)) // nor any number at all
            return kParamErr;
        m_stepper->SetRepeatInterval(seconds);
        return kNoErr;
    }

protected:
    void ApplyValue(std::int32_t value) override { m_stepper->SetValue(value); }
    void ApplyHit(ControlPartCode part) override {
        const std::int32_t value = Value();
        if (part == kControlUpButtonPart && value < Maximum())
            SetValue(value + 1);
        else if (part == kControlDownButtonPart && value > Minimum())
            SetValue(value - 1);
    }

private:
    // A form leaves what the class has no property for as a dynamic one.
    void TakeFromForm(const char* property, void (Stepper::*set)(std::int32_t)) {
        bool isNumber = false;
        const std::int32_t number = m_stepper->property(property).toInt(&isNumber);
        if (isNumber)
            (m_stepper->*set)(number);
    }
    Stepper* m_stepper;
};

} // namespace

Control* MakeStepperControl(QWidget& widget, Window& owner) {
    auto* const stepper = dynamic_cast<Stepper*>(&widget);
    return stepper ? new StepperControl(*stepper, owner) : nullptr;
}

} // namespace platform
