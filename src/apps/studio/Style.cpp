// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Style.h"

#include <utility>

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

namespace studio {

namespace {

QPalette s_systemPalette;

struct Colors {
    QColor window, base, alternate, button, text, faint, highlight;
};
constexpr Colors kLight { QColor(240, 240, 242), QColor(255, 255, 255), QColor(246, 246, 248),
                          QColor(236, 236, 239), QColor(28, 28, 32),    QColor(128, 128, 134),
                          QColor(36, 110, 196) };
constexpr Colors kDark { QColor(45, 46, 49),  QColor(32, 33, 36),    QColor(38, 39, 42),
                         QColor(60, 62, 66),  QColor(228, 228, 230), QColor(138, 140, 146),
                         QColor(56, 128, 214) };

QPalette MakePalette(const Colors& colors) {
    QPalette palette(colors.button, colors.window);
    for (const auto role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
        palette.setColor(role, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternate);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.faint);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors.highlight);
    for (const auto role :
         { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText })
        palette.setColor(QPalette::Disabled, role, colors.faint);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.button);
    return palette;
}

// Roles, not colours: they follow the palette when it changes.
QPalette WithAlarm(QPalette palette) {
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    palette.setColor(QPalette::BrightText, dark ? QColor(255, 128, 118) : QColor(184, 32, 32));
    return palette;
}

// Coloured whenever it is drawn, so that it follows the palette.
class Mask : public QIconEngine {
public:
    explicit Mask(QImage mask) : m_mask(std::move(mask)) {}

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        auto picture = m_mask.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                           .convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        const auto role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        painter.fillRect(picture.rect(), QApplication::palette().color(group, role));
        painter.end();
        return QPixmap::fromImage(picture);
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const auto size = QSizeF(rect.size()) * painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap(size.toSize(), mode, state));
    }

    QIconEngine* clone() const override { return new Mask(m_mask); }

private:
    QImage m_mask;
};

} // namespace

void PrepareStyle() {
    // The same everywhere, follows palettes, and scales.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    s_systemPalette = QApplication::palette();
}

void SetTheme(Theme theme) {
    QApplication::setPalette(WithAlarm(theme == Theme::kDark    ? MakePalette(kDark)
                                       : theme == Theme::kLight ? MakePalette(kLight)
                                                                : s_systemPalette));
}

void SetFaint(QWidget& widget) {
    widget.setForegroundRole(QPalette::PlaceholderText);
}

void SetAlarming(QWidget& widget) {
    widget.setForegroundRole(QPalette::BrightText);
}

QIcon MakeIcon(const QString& name) {
    QImage mask(QStringLiteral(":/studio/icons/%1.png").arg(name));
    return mask.isNull() ? QIcon() : QIcon(new Mask(std::move(mask)));
}

} // namespace studio
