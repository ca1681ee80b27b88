// SPDX-License-Identifier: BSD-3-Clause
// Counted strings to and from those of the widgets.
#pragma once

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

// Lines end with CR on this layer's side and with LF within widgets; CR LF counts as one end.
inline QString WithLineFeeds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text.replace(QChar::CarriageReturn, QChar::LineFeed);
}
inline QString WithCarriageReturns(QString text) {
    return text.replace(QChar::LineFeed, QChar::CarriageReturn);
}

} // namespace platform
