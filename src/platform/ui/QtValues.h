// SPDX-License-Identifier: BSD-3-Clause
// Values of this layer to and from those of the widgets: strings, titles, colours, places and rectangles.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>

#include "platform/ui/Windows.h"

namespace platform {

// Strings ----------------------------------------------------------------------------------------

// Null gives an empty string.
inline QString QStringFrom(CFStringRef string) {
    if (!string)
        return {};
    const std::string_view utf8 = CFStringGetUTF8(string);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Texts of controls: lines end with CR on this layer's side and with LF within widgets; CR LF counts as
// one end.
inline QString FromUtf8(std::string_view text) {
    QString lines = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return lines.replace(QChar::CarriageReturn, QChar::LineFeed);
}
inline std::string ToUtf8(QString text) {
    return text.replace(QChar::LineFeed, QChar::CarriageReturn).toStdString();
}

// Titles, where Qt marks the key that reaches a widget by "&". Forms have such marks; titles that a
// program sets or asks for mean what they say.

// "&Size" -> "Size", "A && B" -> "A & B".
inline QString WithoutMnemonics(const QString& text) {
    QString plain;
    plain.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('&') && i + 1 < text.size())
            ++i;
        plain += text[i];
    }
    return plain;
}

// "A & B" -> "A && B".
inline QString WithoutMeaning(std::string_view title) {
    return FromUtf8(title).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

// Colours, which keep all 16 bits of a channel ---------------------------------------------------

inline QColor ToQColor(const RGBColor& color) {
    return QColor::fromRgba64(color.red, color.green, color.blue);
}
inline RGBColor ToRGBColor(const QColor& color) {
    const QRgba64 wide = color.rgba64();
    return { wide.red(), wide.green(), wide.blue() };
}

// Places, which have 16 bits on this layer's side ------------------------------------------------

inline std::int16_t ToCoordinate(int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}
inline Point ToPoint(QPoint point) {
    return { ToCoordinate(point.y()), ToCoordinate(point.x()) };
}
inline QPoint ToQPoint(const Point& point) {
    return { point.h, point.v };
}
inline Rect ToRect(const QRect& rect) {
    return { ToCoordinate(rect.top()), ToCoordinate(rect.left()),
             ToCoordinate(rect.top() + rect.height()), ToCoordinate(rect.left() + rect.width()) };
}
inline QRect ToQRect(const Rect& rect) {
    return { rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top };
}

} // namespace platform
