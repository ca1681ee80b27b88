// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Style.h"

#include <QApplication>
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

QPalette MakePalette(const Colors& colors) {
    QPalette palette(colors.button, colors.window);
    for (auto const role : { QPalette::WindowText, QPalette::Text, QPalette::ButtonText })
        palette.setColor(role, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternate);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.faint);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors.highlight);
    for (auto const role :
         { QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText })
        palette.setColor(QPalette::Disabled, role, colors.faint);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.button);
    return palette;
}

QPalette LightPalette() {
    return MakePalette({ QColor(240, 240, 242), QColor(255, 255, 255), QColor(246, 246, 248),
                         QColor(236, 236, 239), QColor(28, 28, 32), QColor(128, 128, 134),
                         QColor(36, 110, 196) });
}

QPalette DarkPalette() {
    return MakePalette({ QColor(45, 46, 49), QColor(32, 33, 36), QColor(38, 39, 42),
                         QColor(60, 62, 66), QColor(228, 228, 230), QColor(138, 140, 146),
                         QColor(56, 128, 214) });
}

// Roles, not colours: they follow the palette when it changes.
QPalette WithAlarm(QPalette palette) {
    bool const dark = palette.color(QPalette::Window).lightness() < 128;
    palette.setColor(QPalette::BrightText, dark ? QColor(255, 128, 118) : QColor(184, 32, 32));
    return palette;
}

} // namespace

void PrepareStyle() {
    // The same everywhere, follows palettes, and scales.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    s_systemPalette = QApplication::palette();
}

void SetTheme(Theme theme) {
    QApplication::setPalette(WithAlarm(theme == Theme::kDark    ? DarkPalette()
                                       : theme == Theme::kLight ? LightPalette()
                                                                : s_systemPalette));
}

void SetFaint(QWidget& widget) {
    widget.setForegroundRole(QPalette::PlaceholderText);
}

void SetAlarming(QWidget& widget) {
    widget.setForegroundRole(QPalette::BrightText);
}

} // namespace studio
