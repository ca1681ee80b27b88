// SPDX-License-Identifier: BSD-3-Clause
// Colour buttons: the style's button with a swatch, and its colour as control data.
#include "platform/ui/controls/ColorButton.h"

#include <QAccessible>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "platform/ui/controls/ColorValues.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/controls/Families.h"
#include "platform/ui/controls/Mnemonics.h"

namespace platform {

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

namespace {

class ColorControl : public Control {
public:
    ColorControl(ColorButton& button, Window& owner) : Control(button, owner), m_button(&button) {
        connect(&button, &QAbstractButton::clicked, this, [this] { SendHit(kControlButtonPart); });
        button.setAutoDefault(false);
    }
    // Not shown, but a picker needs a prompt: what screen readers say when there is none.
    QString Title() const override {
        if (!m_button->text().isEmpty())
            return WithoutMnemonics(m_button->text());
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(m_button);
        return spoken ? spoken->text(QAccessible::Name) : QString();
    }
    void SetTitle(const QString& title) override { m_button->setText(WithoutMeaning(title)); }
    ControlPartCode FocusPart() const override { return kControlButtonPart; }
    OSStatus SetData(OSType tag, std::span<const std::byte> data) override {
        if (tag != kControlColor)
            return Control::SetData(tag, data);
        RGBColor color {};
        const OSStatus status = ReadData(data, &color);
        if (!status)
            m_button->SetColor(ToQColor(color));
        return status;
    }
    OSStatus GetData(OSType tag, std::span<std::byte> data, std::uint32_t* actualSize) override {
        if (tag != kControlColor)
            return Control::GetData(tag, data, actualSize);
        return WriteData(ToRGBColor(m_button->Color()), data, actualSize);
    }

private:
    ColorButton* m_button;
};

} // namespace

Control* MakeColorControl(QWidget& widget, Window& owner) {
    auto* const button = dynamic_cast<ColorButton*>(&widget);
    return button ? new ColorControl(*button, owner) : nullptr;
}

} // namespace platform
