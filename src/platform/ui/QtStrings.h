// SPDX-License-Identifier: BSD-3-Clause
// Strings of this layer to and from those of the widgets.
#pragma once

#include <string>
#include <string_view>

#include <QString>

#include "platform/CoreFoundation.h"

namespace platform {

// Null gives an empty string.
inline QString QStringFrom(CFStringRef string) {
    if (!string)
        return {};
    const std::string_view utf8 = CFStringGetUTF8(string);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// The count is the caller's.
inline CFStringRef CFStringCreateWithQString(const QString& string) {
    const QByteArray utf8 = string.toUtf8();
    return CFStringCreateWithUTF8({ utf8.constData(), static_cast<std::size_t>(utf8.size()) });
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

} // namespace platform
