// SPDX-License-Identifier: BSD-3-Clause
// Titles and the "&" by which Qt marks the key that reaches a widget. Forms have such marks; titles
// that a program sets or asks for mean what they say.
#pragma once

#include "platform/ui/QtStrings.h"

namespace platform {

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

} // namespace platform
