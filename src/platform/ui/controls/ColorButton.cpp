// SPDX-License-Identifier: BSD-3-Clause
// Colour buttons: the style's button with a swatch.
#include <QAccessible>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "platform/ui/QtValues.h"
#include "platform/ui/controls/Control.h"

namespace platform {
namespace {

// A push button that shows a colour in place of a text.
class ColorButton : public QPushButton {
public:
    explicit ColorButton(QWidget* parent);

    QColor Color() const { return m_color; }
    void SetColor(const QColor& color);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_color { Qt::black };
};

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
    SetColor(Qt::black);
}

void ColorButton::SetColor(const QColor& color) {
    m_color = color;
    setAccessibleDescription(color.name()); // a value that can be said: #rrggbb
    update();
}

QSize ColorButton::sizeHint() const {
    const int line = fontMetrics().height();
    QStyleOptionButton option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, QSize(2 * line, line), this);
}

void ColorButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);

    constexpr int kMargin = 5;
    const QRect swatch = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    painter.setOpacity(isEnabled() ? 1.0 : 0.35);
    // A line between, in the text's colour, tells a swatch of the button's own colour from it.
    painter.setPen(option.palette.color(QPalette::ButtonText));
    painter.setBrush(m_color);
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
}

class ColorControl : public WidgetControl {
public:
    ColorControl(ColorButton& button, Window& owner)
        : WidgetControl(button, owner), m_button(&button) {
        connect(&button, &QAbstractButton::clicked, this, [this] { SendHit(kControlButtonPart); });
        button.setFocusPolicy(Qt::TabFocus); // as every button
        button.setAutoDefault(false);
    }
    // Not shown, but a picker needs a prompt: what screen readers say when there is none.
    std::string Title() const override {
        if (!m_button->text().isEmpty())
            return ToUtf8(WithoutMnemonics(m_button->text()));
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(m_button);
        return spoken ? ToUtf8(spoken->text(QAccessible::Name)) : std::string();
    }
    void SetTitle(std::string_view title) override { m_button->setText(WithoutMeaning(title)); }
    ControlPartCode FocusPart() const override { return kControlButtonPart; }
    std::optional<RGBColor> Color() const override { return ToRGBColor(m_button->Color()); }
    OSStatus SetColor(const RGBColor& color) override {
        m_button->SetColor(ToQColor(color));
        return kNoErr;
    }

private:
    ColorButton* m_button;
};

} // namespace

QWidget* NewColorButton(QWidget* parent) {
    return new ColorButton(parent);
}

Control* MakeColorControl(QWidget& widget, Window& owner) {
    auto* const button = dynamic_cast<ColorButton*>(&widget);
    return button ? new ColorControl(*button, owner) : nullptr;
}

} // namespace platform
