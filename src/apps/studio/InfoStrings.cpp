// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/InfoStrings.h"

#include <epi/epi.h>

#include "apps/studio/Texts.h"
#include "platform/TextEncoding.h"

namespace studio {

namespace {

constexpr std::size_t kRoom = sizeof(_EPIRECORD::szInfo1) - 1; // bytes

} // namespace

QString TroubleWith(const std::string& text, const host::TokenValues& values) {
    std::string why;
    auto const parsed = host::TokenText::Parse(text, why);
    if (!parsed)
        return T("Unknown token. Use {frame}, {frame+1}, {frame:04} or {file}; {{ stands for a "
                 "brace.");
    auto const encoded = platform::EncodeText(parsed->Resolve(values));
    if (!encoded.complete)
        return T("The text encoding %1 lacks a character of this text.")
            .arg(QString::fromStdString(platform::ApplicationTextEncoding()));
    if (encoded.bytes.size() > kRoom)
        return T("Too long: %1 bytes, and %2 fit.").arg(encoded.bytes.size()).arg(kRoom);
    if (encoded.bytes.find_first_of(std::string("\r\n\0", 3)) != std::string::npos)
        return T("The text must be one line.");
    return {};
}

std::array<std::string, 4> Resolve(const InfoStrings& strings, const host::TokenValues& values) {
    std::array<std::string, 4> resolved;
    for (std::size_t i = 0; strings.present && i < resolved.size(); ++i) {
        std::string why;
        if (TroubleWith(strings.texts[i], values).isEmpty())
            resolved[i] =
                platform::EncodeText(host::TokenText::Parse(strings.texts[i], why)->Resolve(values))
                    .bytes;
    }
    return resolved;
}

} // namespace studio
